#include "foundation/item_name_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using slib::NameProblem;

struct ComponentCase {
    std::u16string name;
    NameProblem problem;
    std::u16string usable;  // what MakeNameComponentUsable gives (unused for kNul)
};

const ComponentCase kComponents[] = {
    // Plain names, including ones that only look like devices.
    {u"a.txt", NameProblem::kNone, u"a.txt"},
    {u"auxiliary.txt", NameProblem::kNone, u"auxiliary.txt"},
    {u"com10", NameProblem::kNone, u"com10"},
    {u"COM0", NameProblem::kNone, u"COM0"},
    {u"xcon", NameProblem::kNone, u"xcon"},
    {u".hidden", NameProblem::kNone, u".hidden"},
    {u"\u4e2d\u6587.txt", NameProblem::kNone, u"\u4e2d\u6587.txt"},
    // Devices, any case, with or without an extension or spaces before it.
    {u"CON", NameProblem::kReservedDevice, u"CON_"},
    {u"aux.txt", NameProblem::kReservedDevice, u"aux_.txt"},
    {u"com1.log", NameProblem::kReservedDevice, u"com1_.log"},
    {u"Lpt9", NameProblem::kReservedDevice, u"Lpt9_"},
    {u"COM\u00B9", NameProblem::kReservedDevice, u"COM\u00B9_"},
    {u"nul .txt", NameProblem::kReservedDevice, u"nul_ .txt"},
    {u"conin$", NameProblem::kReservedDevice, u"conin$_"},
    {u"CONOUT$.x", NameProblem::kReservedDevice, u"CONOUT$_.x"},
    {u"prn.tar.gz", NameProblem::kReservedDevice, u"prn_.tar.gz"},
    // Trailing dots and spaces (the system strips them, so the item could not be named).
    {u"x.", NameProblem::kTrailingDotOrSpace, u"x_"},
    {u"x ", NameProblem::kTrailingDotOrSpace, u"x_"},
    {u".. ", NameProblem::kTrailingDotOrSpace, u"___"},
    {u"x. .", NameProblem::kTrailingDotOrSpace, u"x___"},
    {u"CON.", NameProblem::kTrailingDotOrSpace, u"CON_"},
    {u"..", NameProblem::kTrailingDotOrSpace, u"__"},
    // Streams and forbidden characters.
    {u"a.txt:x", NameProblem::kColon, u"a.txt_x"},
    {u"q?.txt", NameProblem::kForbiddenCharacter, u"q_.txt"},
    {u"a<b>c", NameProblem::kForbiddenCharacter, u"a_b_c"},
    {u"\"|*", NameProblem::kForbiddenCharacter, u"___"},
    {u"tab\there", NameProblem::kForbiddenCharacter, u"tab_here"},
    {u"bell\x7", NameProblem::kForbiddenCharacter, u"bell_"},
    {std::u16string(u"nul\0x", 5), NameProblem::kNul, u""},
    {u"", NameProblem::kEmpty, u""},
};

TEST(ItemNameRules, EachComponentIsJudgedAndMadeUsable) {
    for (const auto& c : kComponents) {
        const std::string shown(c.name.begin(), c.name.end());
        EXPECT_EQ(slib::CheckNameComponent(c.name), c.problem) << shown;
        if (c.problem == NameProblem::kNul || c.problem == NameProblem::kEmpty) {
            continue;
        }
        const std::u16string usable = slib::MakeNameComponentUsable(c.name);
        EXPECT_EQ(usable, c.usable) << shown;
        EXPECT_EQ(slib::CheckNameComponent(usable), NameProblem::kNone) << shown;
    }
}

TEST(ItemNameRules, PathsAreCheckedBelowTheirRootOnly) {
    struct PathCase {
        std::u16string path;
        std::u16string component;  // empty: the path is usable
        NameProblem problem;
    };
    const PathCase cases[] = {
        {u"C:\\Data\\a.txt", u"", NameProblem::kNone},
        {u"C:\\", u"", NameProblem::kNone},
        {u"\\\\?\\C:\\Data\\sub\\", u"", NameProblem::kNone},
        {u"\\\\server\\share$\\a.txt", u"", NameProblem::kNone},
        {u"\\\\?\\UNC\\server\\share\\a", u"", NameProblem::kNone},
        {u"C:\\Data\\aux.txt", u"aux.txt", NameProblem::kReservedDevice},
        {u"C:\\con\\a.txt", u"con", NameProblem::kReservedDevice},
        {u"\\\\?\\C:\\Data\\trail.\\x", u"trail.", NameProblem::kTrailingDotOrSpace},
        {u"C:\\Data\\a.txt:x", u"a.txt:x", NameProblem::kColon},
        {u"\\\\server\\share\\q?", u"q?", NameProblem::kForbiddenCharacter},
        {u"\\\\?\\UNC\\server\\share\\nul", u"nul", NameProblem::kReservedDevice},
    };
    for (const auto& c : cases) {
        const std::string shown(c.path.begin(), c.path.end());
        const auto found = slib::FindUnusableComponent(c.path);
        if (c.problem == NameProblem::kNone) {
            EXPECT_FALSE(found.has_value()) << shown;
            continue;
        }
        ASSERT_TRUE(found.has_value()) << shown;
        EXPECT_EQ(found->component, c.component) << shown;
        EXPECT_EQ(found->problem, c.problem) << shown;
    }
}

}  // namespace
