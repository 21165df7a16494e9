#include "contents_fixture.h"

#include <optional>

#include "foundation/utf_conversion.h"

namespace contents_test {

std::u16string Utf16(const std::string& utf8) {
    return slib::Utf8ToUtf16(utf8);
}

std::string PngBytes(uint32_t width, uint32_t height) {
    std::string png = "\x89PNG\r\n\x1A\n" + std::string("\0\0\0\x0DIHDR", 8);
    for (const uint32_t value : {width, height}) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            png += static_cast<char>(value >> shift & 0xFF);
        }
    }
    return png + std::string("\x08\x02\0\0\0\x90\x77\x53\xDE\0\0\0\0IEND\xAE\x42\x60\x82", 21);
}

std::string ContentsTest::read(const std::u16string& name, const std::u16string& arguments) {
    return evaluate(u"VFile_Read( " + Quoted(name) + (arguments.empty() ? u"" : u" ; ") +
                    arguments + u" )");
}

std::string ContentsTest::write(const std::u16string& name, const std::u16string& data,
                                const std::u16string& arguments) {
    return call(u"VFile_Write( " + Quoted(name) + u" ; " + data +
                (arguments.empty() ? u"" : u" ; ") + arguments + u" )");
}

std::string ContentsTest::bytesOf(const std::u16string& name) const {
    const std::optional<std::string> content = readFile(name);
    return content ? *content : "<missing>";
}

}  // namespace contents_test
