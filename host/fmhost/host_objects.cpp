#include "host_objects.h"

namespace fmhost::driver {

TextPtr MakeText(const std::u16string& chars) {
    TextPtr text(Checked([](FmxErr& err) { return FM_Text_Constructor1(err); }));
    Checked([&](FmxErr& err) {
        FM_Text_AssignUnicodeWithLength(text.get(), reinterpret_cast<const uint16_t*>(chars.data()),
                                        static_cast<uint32_t>(chars.size()), err);
    });
    return text;
}

std::u16string TextChars(const FmxText& text) {
    const uint32_t size = Checked([&](FmxErr& err) { return FM_Text_GetSize(&text, err); });
    std::u16string chars(size, u'\0');
    if (size != 0) {
        Checked([&](FmxErr& err) {
            FM_Text_GetUnicode(&text, reinterpret_cast<uint16_t*>(&chars[0]), 0, size, err);
        });
    }
    return chars;
}

}  // namespace fmhost::driver
