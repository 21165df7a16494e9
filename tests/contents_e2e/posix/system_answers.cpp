#include "system_answers.h"

namespace contents_test {

// A Linux server has no code page of its own: bytes that are no UTF-8 read as Latin-1.
std::string NativeText(const std::string& bytes) {
    std::string text;
    for (const unsigned char byte : bytes) {
        if (byte < 0x80) {
            text += static_cast<char>(byte);
        } else {
            text += static_cast<char>(0xC0 | (byte >> 6));
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

// glibc's iconv has none of these Mac code pages.
const std::set<std::string> kKeywordsWithoutConverter = {"x-mac-turkish", "x-mac-arabic",
                                                         "x-mac-greek", "x-mac-hebrew"};

const RtfReader kRtfReader = RtfReader::kPortable;

bool RtfReaderKeepsCapitals() {
    return true;
}

}  // namespace contents_test
