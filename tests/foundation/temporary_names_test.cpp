// The names we leave beside files: made in the target's own folder for either path style, fresh
// on every call, and recognised again by shape alone.
#include "foundation/temporary_names.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "foundation/process_number.h"
#include "foundation/utf_conversion.h"

namespace {

using slib::PathStyle;

struct BesideCase {
    const char* what;
    PathStyle style;
    std::u16string target;
    std::u16string folder;  // what the name must start with
};

TEST(TemporaryNames, LandInTheTargetsFolderForEachStyle) {
    const BesideCase cases[] = {
        {"windows drive", PathStyle::kWindows, u"\\\\?\\C:\\data\\report.txt",
         u"\\\\?\\C:\\data\\"},
        {"windows unc", PathStyle::kWindows, u"\\\\?\\UNC\\srv\\share\\a",
         u"\\\\?\\UNC\\srv\\share\\"},
        {"windows bare name", PathStyle::kWindows, u"report.txt", u""},
        {"windows ignores slash", PathStyle::kWindows, u"C:\\a/b", u"C:\\"},
        {"posix", PathStyle::kPosix, u"/srv/data/report.txt", u"/srv/data/"},
        {"posix root", PathStyle::kPosix, u"/report.txt", u"/"},
        {"posix backslash is a name", PathStyle::kPosix, u"/srv/a\\b.txt", u"/srv/"},
        {"posix bare name", PathStyle::kPosix, u"report.txt", u""},
    };
    const std::string process = std::to_string(slib::CurrentProcessNumber());
    for (const BesideCase& c : cases) {
        const std::u16string name = slib::TemporaryNameBeside(c.target, c.style);
        ASSERT_EQ(name.compare(0, c.folder.size(), c.folder), 0) << c.what;
        const std::u16string bare = name.substr(c.folder.size());
        EXPECT_TRUE(slib::IsTemporaryName(bare)) << c.what;
        EXPECT_EQ(slib::Utf16ToUtf8(bare).rfind("~vf-" + process + "-", 0), 0u) << c.what;
    }
}

TEST(TemporaryNames, AreFreshOnEveryCall) {
    std::set<std::u16string> names;
    for (int i = 0; i < 100; ++i) {
        names.insert(slib::TemporaryNameBeside(u"/srv/report.txt", PathStyle::kPosix));
    }
    EXPECT_EQ(names.size(), 100u);
}

TEST(TemporaryNames, AreRecognisedByShapeAndSuffixOnly) {
    const struct {
        std::u16string name;
        bool temporary;
        bool original;
    } cases[] = {
        {u"~vf-1234-0.partial", true, false},   {u"~vf-1-99.partial", true, false},
        {u"~vf-1-1.original", false, true},     {u"~vf-.partial", false, false},
        {u"~vf-12-.partial", false, false},     {u"~vf-a-1.partial", false, false},
        {u"~vf-1-2-3.partial", false, false},   {u"vf-1-1.partial", false, false},
        {u"~vf-1-1.part", false, false},        {u"report.partial", false, false},
        {u"~vf-1-1.partial.txt", false, false}, {u"", false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::IsTemporaryName(c.name), c.temporary) << slib::Utf16ToUtf8(c.name);
        EXPECT_EQ(slib::IsNameOfOurs(c.name, u".original"), c.original)
            << slib::Utf16ToUtf8(c.name);
    }
}

}  // namespace
