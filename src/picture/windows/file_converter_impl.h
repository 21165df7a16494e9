#pragma once
// slib::FileConverterImpl: picture conversion through GDI+.

#include "picture/file_converter.h"

namespace slib {

class FileConverterImpl : public FileConverter {
  public:
    // Loads the source (-43 "Source item does not exist", -50 "This is not a picture.", -50
    // "Picture data is damaged"), scales it with high-quality bicubic filtering, turns it
    // upright when exif-rotate is on, encodes it and only then writes the target, so a failure
    // leaves no target file.
    void convert(const String& source, uint32_t sourceType, const String& target,
                 uint32_t targetType) override;
};

}  // namespace slib
