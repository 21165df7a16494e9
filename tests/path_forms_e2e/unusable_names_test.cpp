// Names Windows would let us create but not use afterwards are refused by every function that
// creates or renames an item, before anything is made; items that other tools gave such names
// can still be read, renamed away and deleted.

#include <windows.h>

#include <vector>

#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

struct Unusable {
    const char16_t* name;
    const char* message;
};

const Unusable kUnusable[] = {
    {u"aux.txt", "Name is reserved by Windows for a device"},
    {u"CON", "Name is reserved by Windows for a device"},
    {u"com1.log", "Name is reserved by Windows for a device"},
    {u"Nul", "Name is reserved by Windows for a device"},
    {u"lpt9.x.y", "Name is reserved by Windows for a device"},
    {u"conout$", "Name is reserved by Windows for a device"},
    {u"a.", "Name cannot end with a dot or a space"},
    {u"b ", "Name cannot end with a dot or a space"},
    {u"a.txt:x", "Name cannot contain a colon"},
    {u"a<b", "Name contains a character Windows does not allow"},
    {u"q?", "Name contains a character Windows does not allow"},
    {u"x|y", "Name contains a character Windows does not allow"},
    {u"t*", "Name contains a character Windows does not allow"},
    {u"quo\"te", "Name contains a character Windows does not allow"},
    {u"aux\\inner.txt", "Name is reserved by Windows for a device"},
};

class UnusableNames : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        writeFile(u"source.txt", "source");
        makeFolder(u"dest");
        ASSERT_EQ(call(u"VFile_Compress( \"source.txt\" ; \"source.zip\" )"), Succeeded());
    }

    // Every creating or renaming call with `target` as the new item.
    std::vector<std::u16string> creatingCalls(const std::u16string& target) {
        const std::u16string t = Quoted(target);
        return {
            u"VFile_New( " + t + u" )",
            u"VFile_New( " + t + u" ; \"file\" )",
            u"VFile_Write( " + t + u" ; \"x\" )",
            u"VFile_Write( " + t + u" ; \"x\" ; 0 )",
            u"VFile_Copy( \"source.txt\" ; " + t + u" )",
            u"VFile_Move( \"source.txt\" ; " + t + u" )",
            u"VFile_Set( \"modified\" ; " + t + u" ; Timestamp ( Date ( 1 ; 2 ; 2020 ) ; 0 ) )",
            u"VFile_Set( \"created\" ; " + t + u" ; Timestamp ( Date ( 1 ; 2 ; 2020 ) ; 0 ) )",
            u"VFile_Compress( \"source.txt\" ; " + t + u" )",
            u"VFile_DeCompress( \"source.zip\" ; " + t + u" )",
            u"VFile_Convert( \"source.txt\" ; " + t + u" )",
            u"VFile_Set( \"convert\" ; \"\" ; 10 ; 10 ) & VFile_Copy( \"source.txt\" ; " + t +
                u" )",
        };
    }
};

TEST_F(UnusableNames, EveryCreatingFunctionRefusesBeforeMakingAnything) {
    const auto before = snapshot();
    for (const Unusable& name : kUnusable) {
        for (const std::u16string& calculation : creatingCalls(name.name)) {
            EXPECT_EQ(call(calculation), Failed(-50, name.message)) << Narrow(calculation);
            EXPECT_EQ(snapshot(), before) << Narrow(calculation);
        }
    }
}

// A copy into a folder takes the source's own name: a source named so by another tool cannot
// be copied under that name, but can be copied under another.
TEST_F(UnusableNames, CopyIntoAFolderChecksTheNameItWouldMake) {
    writeFile(u"aux.txt", "device name");
    EXPECT_EQ(call(u"VFile_Copy( \"aux.txt\" ; \"dest\" )"),
              Failed(-50, "Name is reserved by Windows for a device"));
    EXPECT_FALSE(exists(u"dest\\aux.txt"));
    EXPECT_EQ(call(u"VFile_Copy( \"aux.txt\" ; \"dest\\usable.txt\" )"), Succeeded());
    EXPECT_EQ(readFile(u"dest\\usable.txt"), "device name");
}

TEST_F(UnusableNames, ExistingItemsCanBeReadRenamedAwayAndDeleted) {
    for (const std::u16string name : {u"aux.txt", u"CON", u"com1.log", u"nul.txt", u"a.", u"b "}) {
        writeFile(name, "made elsewhere");
        EXPECT_EQ(call(u"VFile_Get( \"kind\" ; " + Quoted(name) + u" )"),
                  "file | No Error Message | No Error Message")
            << Narrow(name);
        EXPECT_EQ(call(u"VFile_Read( " + Quoted(name) + u" )"),
                  "made elsewhere | No Error Message | No Error Message")
            << Narrow(name);
        EXPECT_EQ(call(u"VFile_Move( " + Quoted(name) + u" ; \"renamed.txt\" )"), Succeeded())
            << Narrow(name);
        EXPECT_FALSE(exists(name)) << Narrow(name);
        EXPECT_EQ(readFile(u"renamed.txt"), "made elsewhere") << Narrow(name);
        ASSERT_EQ(call(u"VFile_Delete( \"renamed.txt\" )"), Succeeded());

        writeFile(name, "made elsewhere");
        EXPECT_EQ(call(u"VFile_Delete( " + Quoted(name) + u" )"), Succeeded()) << Narrow(name);
        EXPECT_FALSE(exists(name)) << Narrow(name);
    }
}

}  // namespace
}  // namespace items_test
