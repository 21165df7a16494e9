// Windows path spellings through the item functions: "\" separates like "/", and a short form
// that names nothing resolves to no path, never to the current folder.
#include "items_fixture.h"

namespace items_test {
namespace {

TEST_F(ItemsTest, BackslashSeparatesAndAnUnresolvedShortFormIsNoPath) {
    writeFile(u"a.txt", "alpha");
    EXPECT_EQ(call(uR"(VFile_New( "dir" ))"), Succeeded());
    EXPECT_EQ(call(uR"(VFile_New( "dir\\g.txt" ; "new" ))"), Succeeded());
    const Tree made = snapshot();
    EXPECT_EQ(made, (Tree{{u"a.txt", "alpha"}, {u"dir", "<dir>"}, {u"dir\\g.txt", ""}}));
    const struct {
        const char16_t* calculation;
        int code;
        const char* message;
    } cases[] = {
        {uR"(VFile_New( "a\\b\\c" ))", -43, "Cannot create directory"},
        {uR"(VFile_Copy( "missing" ; "Q:\\nowhere\\x" ))", -43, "Source item does not exist"},
        {uR"(VFile_Copy( "a.txt" ; "fsspec:C:\no\such\x" ))", -43,
         "Empty string is not valid path"},
        {uR"(VFile_Delete( "fsspec:C:\no\such\x" ))", -43, "Empty string is not valid path"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), Failed(c.code, c.message)) << Narrow(c.calculation);
        EXPECT_EQ(snapshot(), made);
    }
}

}  // namespace
}  // namespace items_test
