// The refusal every creating function applies: which path is refused, with which message.

#include "foundation/usable_item_path.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {
namespace {

struct PathCase {
    std::u16string path;
    const char* message;  // null: accepted
};

const PathCase kPaths[] = {
    {u"C:\\Data\\a.txt", nullptr},
    {u"\\\\srv\\share\\a.txt", nullptr},
    {u"\\\\aux\\con\\a.txt", nullptr},  // server and share are the network's names, not ours
    {u"C:\\Data\\auxiliary\\com10.txt", nullptr},
    {u"C:\\Data\\aux.txt", "Name is reserved by Windows for a device"},
    {u"C:\\Data\\CON\\a.txt", "Name is reserved by Windows for a device"},
    {u"\\\\srv\\share\\lpt1", "Name is reserved by Windows for a device"},
    {u"C:\\Data\\a.", "Name cannot end with a dot or a space"},
    {u"C:\\Data\\b \\c.txt", "Name cannot end with a dot or a space"},
    {u"C:\\Data\\a.txt:x", "Name cannot contain a colon"},
    {u"C:\\Data\\a<b", "Name contains a character Windows does not allow"},
    {u"C:\\Data\\a\x01"
     u"b",
     "Name contains a character Windows does not allow"},
    {u"C:\\Data\\q?", "Name contains a character Windows does not allow"},
};

TEST(UsableItemPath, RefusesEachUnusableComponentWithItsMessage) {
    for (const PathCase& c : kPaths) {
        try {
            RequireUsableItemPath(c.path);
            EXPECT_EQ(c.message, nullptr) << ::testing::PrintToString(c.path) << " accepted";
        } catch (const Exception& caught) {
            ASSERT_NE(c.message, nullptr) << ::testing::PrintToString(c.path) << " refused";
            EXPECT_STREQ(caught.what(), c.message) << ::testing::PrintToString(c.path);
            EXPECT_EQ(caught.error()->code(), kBadParameter);
        }
    }
}

}  // namespace
}  // namespace slib
