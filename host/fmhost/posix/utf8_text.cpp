#include "core/utf.h"
#include "value_format.h"

namespace fmhost::driver {

std::string ToUtf8(const std::u16string& text) {
    return Utf16ToUtf8(text);
}

std::u16string FromUtf8(const std::string& text) {
    return Utf8ToUtf16(text);
}

}  // namespace fmhost::driver
