// The one textual form paths take before a system call, and the prefixed form the calls get.

#include <gtest/gtest.h>

#include <string>

#include "foundation/path_normal_form.h"

namespace slib {
namespace {

struct NormalCase {
    const char16_t* path;
    const char16_t* normal;
    const char16_t* prefixed;  // what a system call is handed
};

const NormalCase kNormalCases[] = {
    // drive paths: separators, ".", "..", doubled and trailing separators
    {u"C:\\a\\b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:/a/b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:\\a\\.\\b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:\\a\\sub\\..\\b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:\\a\\\\/b.txt", u"C:\\a\\b.txt", u"\\\\?\\C:\\a\\b.txt"},
    {u"C:\\a\\", u"C:\\a", u"\\\\?\\C:\\a"},
    {u"C:\\", u"C:\\", u"\\\\?\\C:\\"},
    {u"C:", u"C:", u"C:"},  // drive-relative: the current folder of C:
    {u"c:\\..\\..\\x", u"c:\\x", u"\\\\?\\c:\\x"},
    {u"C:\\a\\..", u"C:\\", u"\\\\?\\C:\\"},
    // names are kept exactly: trailing dots and spaces, device names, "..." are names
    {u"C:\\a.\\b ", u"C:\\a.\\b ", u"\\\\?\\C:\\a.\\b "},
    {u"C:\\aux.txt", u"C:\\aux.txt", u"\\\\?\\C:\\aux.txt"},
    {u"C:\\...\\x", u"C:\\...\\x", u"\\\\?\\C:\\...\\x"},
    // UNC both ways; ".." stops at the share
    {u"\\\\srv\\share\\a", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    {u"//srv/share/a/", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    {u"\\\\srv\\share\\..\\..\\a", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    {u"\\\\srv\\share", u"\\\\srv\\share\\", u"\\\\?\\UNC\\srv\\share\\"},
    {u"\\\\srv//share\\\\a", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    // already prefixed input
    {u"\\\\?\\C:\\a\\..\\b", u"C:\\b", u"\\\\?\\C:\\b"},
    {u"\\\\.\\C:\\a", u"C:\\a", u"\\\\?\\C:\\a"},
    {u"\\\\?\\UNC\\srv\\share\\a", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    {u"\\\\?\\unc\\srv\\share\\.\\a", u"\\\\srv\\share\\a", u"\\\\?\\UNC\\srv\\share\\a"},
    {u"\\\\?\\Volume{1}\\a\\..\\b", u"\\\\?\\Volume{1}\\b", u"\\\\?\\Volume{1}\\b"},
    // not absolute: normalised, but left to the system unprefixed
    {u"a\\..\\..\\b\\.\\c\\", u"b\\c", u"b\\c"},
    {u"\\a\\\\b", u"\\a\\b", u"\\a\\b"},
    {u"C:a\\..\\b", u"C:b", u"C:b"},
    {u".", u"", u""},
    {u"", u"", u""}};

class PathNormalForm : public ::testing::TestWithParam<NormalCase> {};

TEST_P(PathNormalForm, GivesOneFormAndItsPrefixedForm) {
    const NormalCase& c = GetParam();
    EXPECT_EQ(NormalizePath(c.path), c.normal) << ::testing::PrintToString(std::u16string(c.path));
    EXPECT_EQ(WithLongPathPrefix(c.path), c.prefixed);
    // Applying it again changes nothing, also to the prefixed form.
    EXPECT_EQ(NormalizePath(c.normal), c.normal);
    EXPECT_EQ(WithLongPathPrefix(c.prefixed), c.prefixed);
}
INSTANTIATE_TEST_SUITE_P(EveryForm, PathNormalForm, ::testing::ValuesIn(kNormalCases));

TEST(PathNormalForm, RootsAreFoundInTheNormalForm) {
    const std::pair<const char16_t*, PathRoot> roots[] = {
        {u"C:\\a", {PathRootKind::kDrive, 3}},
        {u"\\\\srv\\share\\a", {PathRootKind::kUnc, 12}},
        {u"\\\\srv\\share\\", {PathRootKind::kUnc, 12}},
        {u"\\\\srv", {PathRootKind::kUnc, 5}},
        {u"\\\\?\\Volume{1}\\a", {PathRootKind::kDevice, 14}},
        {u"\\a", {PathRootKind::kRooted, 1}},
        {u"C:a", {PathRootKind::kDriveRelative, 2}},
        {u"a", {PathRootKind::kRelative, 0}}};
    for (const auto& [path, root] : roots) {
        EXPECT_EQ(PathRootOf(path).kind, root.kind)
            << ::testing::PrintToString(std::u16string(path));
        EXPECT_EQ(PathRootOf(path).length, root.length)
            << ::testing::PrintToString(std::u16string(path));
    }
}

// Past MAX_PATH the prefixed form is the only one that works: lengths around it and far beyond
// come out whole, ".." resolved.
TEST(PathNormalForm, LengthsAroundAndBeyondTheClassicLimit) {
    for (size_t length : {259u, 260u, 261u, 400u, 32000u}) {
        const std::u16string path = u"C:\\" + std::u16string(length - 3, u'n');
        EXPECT_EQ(WithLongPathPrefix(path + u"\\sub\\..\\"), u"\\\\?\\" + path) << length;
        EXPECT_EQ(WithLongPathPrefix(u"\\\\srv\\share\\" + path.substr(3)),
                  u"\\\\?\\UNC\\srv\\share\\" + path.substr(3));
    }
}

}  // namespace
}  // namespace slib
