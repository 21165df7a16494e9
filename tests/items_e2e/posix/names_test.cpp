// POSIX names through the item functions: "\" and the Windows prefixes are ordinary name
// characters, and a symbolic link moves and goes as itself, never taking what it names along.
#include <unistd.h>

#include "foundation/file_name_bytes.h"
#include "items_fixture.h"

namespace items_test {
namespace {

TEST_F(ItemsTest, BackslashAndWindowsPrefixesAreNameCharacters) {
    writeFile(u"a.txt", "alpha");
    for (const char16_t* calculation : {
             uR"(VFile_New( "a\\b" ))",
             uR"(VFile_Copy( "a.txt" ; "fsspec:C:\x" ))",
             uR"(VFile_Delete( "a.txt" ))",
         }) {
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
    }
    std::map<std::u16string, std::string> names;
    slib::test::CollectTree(root_, names);
    EXPECT_EQ(names, (Tree{{u"a\\b", "<dir>"}, {u"fsspec:C:\\x", ""}}));
}

TEST_F(ItemsTest, LinksAreMovedAndDeletedAsLinks) {
    makeFolder(u"target");
    writeFile(u"target\\kept.txt", "kept");
    const std::string link = slib::TextToFileNameBytes(path(u"link")).value();
    ASSERT_EQ(::symlink("target", link.c_str()), 0);
    for (const char16_t* calculation : {
             uR"(VFile_Move( "link" ; "moved link" ))",
             uR"(VFile_Delete( "moved link" ))",
         }) {
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
    }
    EXPECT_EQ(snapshot(), (Tree{{u"target", "<dir>"}, {u"target\\kept.txt", "kept"}}));
}

}  // namespace
}  // namespace items_test
