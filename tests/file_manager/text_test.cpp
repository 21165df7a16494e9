// The file manager's text conversions: pure functions, no file system needed, the same on every
// system.

#include <gtest/gtest.h>

#include "foundation/file_manager.h"

namespace slib {
namespace test {
namespace {

std::u16string Escaped(const std::u16string& text) {
    return FileManager().escapeForCommandLine(String(text))->units();
}

std::u16string Unc(const std::u16string& url) {
    return FileManager().smbUrlToUncPath(String(url))->units();
}

TEST(EscapeForCommandLine, StartsWithASpaceAndEscapesTheSpecialCharacters) {
    EXPECT_EQ(Escaped(u""), u" ");
    EXPECT_EQ(Escaped(u"plain-text_09.txt"), u" plain-text_09.txt");
    EXPECT_EQ(Escaped(u"a b"), u" a\\ b");
    EXPECT_EQ(Escaped(u"say \"hi\""), u" say\\ \\\"hi\\\"");
    EXPECT_EQ(Escaped(u"C:\\dir\\f"), u" C:\\\\dir\\\\f");
    EXPECT_EQ(Escaped(u"\a\b\t\n\v\f\r"), u" \\a\\b\\t\\n\\v\\f\\r");
    // Other control characters, single quotes and non-ASCII text pass as they are.
    EXPECT_EQ(Escaped(std::u16string(u"\x01'\x1b\u00e9\u6587")), u" \x01'\x1b\u00e9\u6587");
    // Neighbours of the escaped characters are not mistaken for them.
    EXPECT_EQ(Escaped(std::u16string(u"\x06\x0e\x1f!#[]")), u" \x06\x0e\x1f!#[]");
}

TEST(SmbUrlToUncPath, ConvertsOnlyTheLowerCaseSmbScheme) {
    EXPECT_EQ(Unc(u"smb://host/share"), u"\\\\host\\share");
    EXPECT_EQ(Unc(u"smb://server/share/dir/sub"), u"\\\\server\\share\\dir\\sub");
    EXPECT_EQ(Unc(u"smb:"), u"");
    EXPECT_EQ(Unc(u"SMB://host/share"), u"SMB://host/share");
    EXPECT_EQ(Unc(u"Smb://host/share"), u"Smb://host/share");
    EXPECT_EQ(Unc(u"\\\\host\\share"), u"\\\\host\\share");
    EXPECT_EQ(Unc(u"afp://host/share"), u"afp://host/share");
    EXPECT_EQ(Unc(u"smb"), u"smb");
    EXPECT_EQ(Unc(u"x smb://host"), u"x smb://host");
}

}  // namespace
}  // namespace test
}  // namespace slib
