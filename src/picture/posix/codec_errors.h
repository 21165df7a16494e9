#pragma once
// The answers every decoder and encoder gives, so each format fails with the same codes and
// messages the Windows engine uses.

namespace slib {

[[noreturn]] void ThrowNotAPicture();
[[noreturn]] void ThrowPictureDamaged();
[[noreturn]] void ThrowPictureTooLarge();
[[noreturn]] void ThrowPictureNotSaved();
// The signatures Windows decodes and Linux has no decoder for (icons, metafiles): -4 naming the
// format, so a script can tell the format apart from a damaged file.
[[noreturn]] void ThrowFormatUnavailable(const char* formatName);

}  // namespace slib
