#include "foundation/utf16_string.h"

#include "foundation/utf_conversion.h"

namespace slib {

std::shared_ptr<String> String::FromUtf8(std::string_view utf8) {
    return std::make_shared<String>(Utf8ToUtf16(utf8));
}

std::string String::toUtf8() const {
    return Utf16ToUtf8(units_);
}

std::shared_ptr<const String> String::description() const {
    if (std::shared_ptr<const Object> self = weak_from_this().lock()) {
        return std::static_pointer_cast<const String>(self);
    }
    return std::make_shared<String>(units_);
}

#ifdef _WIN32
std::shared_ptr<String> String::FromWide(const wchar_t* text) {
    if (text == nullptr) {
        return std::make_shared<String>();
    }
    return std::make_shared<String>(reinterpret_cast<const char16_t*>(text));
}

std::shared_ptr<String> String::FromWide(const wchar_t* text, size_t length) {
    if (text == nullptr) {
        return std::make_shared<String>();
    }
    return std::make_shared<String>(
        std::u16string(reinterpret_cast<const char16_t*>(text), length));
}
#endif

}  // namespace slib
