#pragma once
// The pixel size of a picture, as the system's picture engine decodes it (GDI+ on Windows, the
// codec libraries on Linux).

#include <cstdint>
#include <vector>

#include "foundation/utf16_string.h"

namespace slib {

struct PictureDimensions {
    double width;
    double height;
};

// Of picture bytes (a container's stream): -50 "This is not a picture." when they do not decode.
PictureDimensions MeasurePictureBytes(const std::vector<uint8_t>& bytes);

// Of the picture file at `path`: -43 `missingMessage` when there is no item there, -50 "This is
// not a picture." for a folder or bytes without a picture signature, -50 "Picture data is
// damaged" for a picture that does not decode.
PictureDimensions MeasurePictureFile(const String& path, const char* missingMessage);

}  // namespace slib
