// The Linux build's path text rules, from tables: parsing against an anchor and the result forms.
#include <gtest/gtest.h>

#include <string>

#include "fake_path_system.h"
#include "foundation/error.h"
#include "foundation/exception.h"
#include "foundation/posix_path_rules.h"

namespace {

using slib::Path;
using slib::PathStyle;

const Path kAnchor(u"/srv/Data");
const Path kNoAnchor(Path::kDefaultAnchor);

std::string Narrow(const std::u16string& text) {
    return std::string(text.begin(), text.end());
}

slib::testing::FakePathSystem PosixSystem() {
    slib::testing::FakePathSystem system;
    system.profile = u"/home/ada";
    system.folders = {u"/srv/Data", u"/srv/Data/sub"};
    return system;
}

TEST(PosixPathRules, Normalizes) {
    const struct {
        const char16_t* path;
        const char16_t* normal;
    } cases[] = {
        {u"/", u"/"},        {u"//", u"/"},      {u"/a//b/", u"/a/b"}, {u"/a/./b/.", u"/a/b"},
        {u"/a/../b", u"/b"}, {u"/../..", u"/"},  {u"a/../../b", u"b"}, {u".", u"."},
        {u"", u"."},         {u"a\\b", u"a\\b"}, {u"/A/a", u"/A/a"},   {u"/a b/c.", u"/a b/c."},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::NormalizePosixPath(c.path), c.normal) << Narrow(c.path);
    }
}

TEST(PosixPathRules, ParsesAgainstTheAnchor) {
    const slib::testing::FakePathSystem system = PosixSystem();
    const struct {
        const char16_t* text;
        const char16_t* path;
    } cases[] = {
        {u"/opt/a.txt", u"/opt/a.txt"},
        {u"/opt//x/../a.txt", u"/opt/a.txt"},
        {u"a.txt", u"/srv/Data/a.txt"},
        {u"./sub/a.txt", u"/srv/Data/sub/a.txt"},
        {u".", u"/srv/Data"},
        // A relative path's ".." never climbs out of the anchor.
        {u"../../etc/passwd", u"/srv/Data/etc/passwd"},
        {u"~", u"/home/ada"},
        {u"~/notes/a.txt", u"/home/ada/notes/a.txt"},
        {u"file:///opt/a.txt", u"/opt/a.txt"},
        // Windows forms are names here, not drives or separators.
        {u"C:\\x.txt", u"/srv/Data/C:\\x.txt"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::ParsePosixPath(c.text, kAnchor, system), c.path) << Narrow(c.text);
    }
}

TEST(PosixPathRules, RelativeWithoutAnchorIsRefused) {
    const slib::testing::FakePathSystem system = PosixSystem();
    EXPECT_EQ(slib::ParsePosixPath(u"/opt/a", kNoAnchor, system), u"/opt/a");
    try {
        slib::ParsePosixPath(u"a.txt", kNoAnchor, system);
        ADD_FAILURE() << "relative path resolved without an anchor";
    } catch (const slib::Exception& failure) {
        EXPECT_EQ(failure.error()->code(), -50);
        EXPECT_EQ(failure.message(), "Relative paths are not supported in Webdirect.");
    }
}

TEST(PosixPathRules, FormatsEachStyle) {
    const slib::testing::FakePathSystem system = PosixSystem();
    const struct {
        const char16_t* path;
        int style;
        const char16_t* text;
    } cases[] = {
        {u"/srv/Data/a.txt", PathStyle::kNative, u"/srv/Data/a.txt"},
        {u"/srv/Data/a.txt", PathStyle::kUnix, u"/srv/Data/a.txt"},
        {u"/srv/Data/a.txt", PathStyle::kWindows, u"/srv/Data/a.txt"},
        {u"/srv/Data/a.txt", PathStyle::kShort, u"/srv/Data/a.txt"},
        {u"/srv/Data/a.txt", PathStyle::kUrl, u"file:///srv/Data/a.txt"},
        {u"/srv/Data/a.txt", PathStyle::kHost, u"filelinux:/srv/Data/a.txt"},
        {u"/srv/Data/sub", PathStyle::kHost, u"filelinux:/srv/Data/sub/"},
        {u"/", PathStyle::kHost, u"filelinux:/"},
        {u"/srv/Data", PathStyle::kNative | PathStyle::kRelative, u"."},
        {u"/srv/Data/sub/a", PathStyle::kNative | PathStyle::kRelative, u"sub/a"},
        {u"/srv/Data/~a", PathStyle::kNative | PathStyle::kRelative, u"./~a"},
        {u"/srv/Database", PathStyle::kNative | PathStyle::kRelative, u"/srv/Database"},
        {u"/opt/a", PathStyle::kUrl | PathStyle::kRelative, u"file:///opt/a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::FormatPosixPath(c.path, c.style, kAnchor, system), c.text)
            << Narrow(c.path) << " style " << c.style;
    }
    // Without an anchor nothing is relative.
    EXPECT_EQ(slib::FormatPosixPath(u"/srv/Data", PathStyle::kRelative, kNoAnchor, system),
              u"/srv/Data");
}

}  // namespace
