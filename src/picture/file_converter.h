#pragma once
// slib::FileConverter: collects conversion options by key, then converts a source file into a
// target file. Each system's engine lives beside: GDI+ in windows/.

#include <cstdint>
#include <map>
#include <memory>

#include "foundation/object.h"
#include "foundation/utf16_string.h"
#include "picture/target_size.h"

namespace slib {

// convert's answer (-43) when there is no item at the source path.
constexpr char kConvertSourceMissing[] = "Source item does not exist";

// File type codes: byte 0 is 1 (picture), byte 1 is 3, byte 2 the format.
struct FileType {
    static constexpr uint32_t kUnspecified = 0;
    static constexpr uint32_t kJpeg = 0x030301;
    static constexpr uint32_t kPng = 0x040301;
};

// Option keys; each value is an slib::Number.
enum ConverterOption : int32_t {
    kOptionWidth = 0,
    kOptionHeight = 1,
    kOptionProportional = 2,  // true when non-zero
    kOptionExifRotate = 3,    // true when non-zero
};

// The options as the conversion reads them: sides when present, flags false when absent.
struct ConversionSettings {
    SizeRequest size;
    bool exifRotate = false;
    bool requireOrientation = false;
};

class FileConverter : public Object {
  public:
    // Stores `value` under `key`, replacing an earlier one: -50 "Wrong parameter" for a key that
    // is no ConverterOption.
    virtual void setOption(int32_t key, std::shared_ptr<const Object> value);
    // Source type must be 0 (the source's own format is read from the file) and the target type
    // 0, JPEG or PNG: -50 "Cannot convert these file types" otherwise. Type 0 for the target
    // keeps the source's format.
    virtual void convert(const String& source, uint32_t sourceType, const String& target,
                         uint32_t targetType) = 0;

    // With exif-rotate on, a picture that records no orientation fails with -43 "Picture has
    // no exif" instead of being converted as it stands (the staged picture copy wants that).
    void requireOrientation(bool require) { requireOrientation_ = require; }

  protected:
    ConversionSettings settings() const;

  private:
    std::map<int32_t, std::shared_ptr<const Object>> options_;
    bool requireOrientation_ = false;
};

// -50 "Cannot create a picture of that size" for a target beyond what any engine here may
// allocate: a side above 65,536 pixels or more than 2^28 pixels in all.
void RequireCreatableSize(const PixelSize& size);

// -50 "Cannot convert these file types" unless the pair is one convert accepts.
void RequireConvertibleTypes(uint32_t sourceType, uint32_t targetType);

// An option value from a host number: six decimals kept; a value that is no finite number is 0.
std::shared_ptr<const Object> MakeNumberOption(double value);

// The picture converter of this platform.
std::shared_ptr<FileConverter> MakeFileConverter();

}  // namespace slib
