#include "picture/posix/codec_errors.h"

#include <string>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/unavailable_here.h"

namespace slib {

void ThrowNotAPicture() {
    Throw(kBadParameter, "This is not a picture.");
}

void ThrowPictureDamaged() {
    Throw(kBadParameter, "Picture data is damaged");
}

void ThrowPictureTooLarge() {
    Throw(kBadParameter, "Cannot create a picture of that size");
}

void ThrowPictureNotSaved() {
    Throw(kUnclassified, "Cannot save the picture");
}

void ThrowFormatUnavailable(const char* formatName) {
    Throw(kNotAvailable, std::string(formatName) + " pictures are not available on Linux");
}

}  // namespace slib
