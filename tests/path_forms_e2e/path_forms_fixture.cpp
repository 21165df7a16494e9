#include "path_forms_fixture.h"

namespace items_test {

std::u16string Ascii(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

std::u16string Slashes(std::u16string text) {
    for (char16_t& c : text) {
        c = c == u'\\' ? u'/' : c;
    }
    return text;
}

}  // namespace items_test
