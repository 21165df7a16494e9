// Names in both directions: stored names of walked items, the store-or-deflate rule, the
// sanitiser, and the containment check that follows it.
#include <gtest/gtest.h>

#include "archive/entry_names.h"
#include "foundation/utf_conversion.h"

namespace {

using archive::ResolveInsideFolder;
using archive::SanitiseEntryName;

std::string U8(const std::u16string& text) {
    return slib::Utf16ToUtf8(text);
}

TEST(EntryNames, StoredNamesDropTheLeadingPartAndUseSlashes) {
    using slib::PathStyle;
    const struct {
        PathStyle style;
        const char16_t* relative;
        const char* stored;
    } cases[] = {
        {PathStyle::kWindows, u"\\a.txt", "a.txt"},
        {PathStyle::kWindows, u"\\sub\\deeper\\b.txt", "sub/deeper/b.txt"},
        {PathStyle::kWindows, u"plain", "plain"},
        {PathStyle::kPosix, u"/a.txt", "a.txt"},
        {PathStyle::kPosix, u"/sub/deeper/b.txt", "sub/deeper/b.txt"},
        {PathStyle::kPosix, u"/back\\slash", "back\\slash"},  // a character of a Linux name
        {PathStyle::kPosix, u"plain", "plain"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(U8(archive::StoredNameFromRelativePath(c.relative, c.style)), c.stored)
            << U8(c.relative);
    }
}

TEST(EntryNames, OnlyTheWholeLastExtensionDecidesStoring) {
    const struct {
        const char16_t* name;
        bool stored;
    } cases[] = {
        {u"photo.JPG.zip", true},
        {u"report.GZ", true},
        {u"report.gzip", false},
        {u"a.Z", true},
        {u"a.z", true},
        {u"x.tgz", true},
        {u"x.ZOO", true},
        {u"x.arc", true},
        {u"x.LZH", true},
        {u"x.arj", true},
        {u"zip", false},
        {u"archive.zip.txt", false},
        {u".gz", true},
        {u"dir.gz/file", false},
        {u"a.tar", false},
        // Only A to Z fold: a dotted capital I or a fullwidth letter is no match.
        {u"a.\u0130p", false},
        {u"a.\uFF5Aip", false},
        {u"noextension", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(archive::IsStoredWithoutCompression(c.name), c.stored) << U8(c.name);
    }
}

TEST(EntryNames, SanitiserNeutralisesDrivesRootsAndInnerParentSteps) {
    const struct {
        const char16_t* stored;
        const char* sanitised;
    } cases[] = {
        {u"C:\\x\\..\\..\\evil.txt", "evil.txt"},
        {u"/etc/x", "etc/x"},
        {u"\\\\server\\share\\f", "server\\share\\f"},
        {u"a/../b", "b"},
        {u"a\\..\\b", "b"},
        {u"a/..\\b/../c", "c"},
        {u"C:/D:/e", "e"},
        {u"//x", "x"},
        {u"../x", "../x"},  // kept by the sanitiser; refused by the containment check
        {u"..\\x", "..\\x"},
        {u"a/..", "a/.."},
        {u"x\\..\\..\\..\\y", "y"},
        {u"x:", ""},
        {u"ok/name.txt", "ok/name.txt"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(U8(SanitiseEntryName(c.stored)), c.sanitised) << U8(c.stored);
    }
}

TEST(EntryNames, ContainmentRefusesWhatWouldLeaveTheFolderAndMakesEveryPartUsable) {
    using Parts = std::vector<std::u16string>;
    EXPECT_EQ(ResolveInsideFolder(u"a/b\\c.txt"), (Parts{u"a", u"b", u"c.txt"}));
    EXPECT_EQ(ResolveInsideFolder(u"a/./b/"), (Parts{u"a", u"b"}));
    EXPECT_EQ(ResolveInsideFolder(u"a/x/../b"), (Parts{u"a", u"b"}));
    EXPECT_EQ(ResolveInsideFolder(u""), Parts{});
    // Streams and devices become plain names; the rules themselves are the shared table's.
    EXPECT_EQ(ResolveInsideFolder(u"a/b:stream"), (Parts{u"a", u"b_stream"}));
    EXPECT_EQ(ResolveInsideFolder(u"CON/aux.txt"), (Parts{u"CON_", u"aux_.txt"}));
    EXPECT_EQ(ResolveInsideFolder(u"q?.txt/trail./.. /x "),
              (Parts{u"q_.txt", u"trail_", u"___", u"x_"}));
    EXPECT_EQ(ResolveInsideFolder(u"a\u0001<b>|\"*"), (Parts{u"a__b____"}));
    for (const char16_t* refused : {u"../x", u"..\\x", u"a/../../x", u".."}) {
        EXPECT_FALSE(ResolveInsideFolder(refused).has_value()) << U8(refused);
    }
}

TEST(EntryNames, StoredNamesDecodeByFlagAndWhole) {
    const auto latin1 = [](std::string_view bytes) {
        std::u16string text;
        for (char c : bytes) {
            text.push_back(static_cast<unsigned char>(c));
        }
        return text;
    };
    EXPECT_EQ(archive::DecodeStoredName("gr\xC3\xBC\xC3\x9F"
                                        "e",
                                        true, latin1),
              u"gr\u00FC\u00DFe");
    EXPECT_EQ(archive::DecodeStoredName("gr\xC3\xBC", false, latin1), u"gr\u00C3\u00BC");
    EXPECT_EQ(archive::DecodeStoredName(std::string(400, 'n'), true, latin1).size(), 400u);
    EXPECT_EQ(archive::DecodeStoredName(std::string("a\0b", 3), true, latin1),
              std::u16string(u"a\0b", 3));
    EXPECT_TRUE(archive::IsUtf8("plain \xE2\x82\xAC \xF0\x9F\x98\x80"));
    for (const char* bad : {"\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "a\x80"}) {
        EXPECT_FALSE(archive::IsUtf8(bad)) << bad;
    }
}

}  // namespace
