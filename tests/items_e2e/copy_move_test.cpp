// VFile_Copy and VFile_Move on disk: what lands where, and that refusals change nothing.
#include <map>

#include "items_fixture.h"

namespace items_test {
namespace {

using Tree = std::map<std::u16string, std::string>;

class CopyMove : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        writeFile(u"a.txt", "alpha");
        makeFolder(u"folder");
        writeFile(u"folder\\inside.txt", "inside");
    }
};

TEST_F(CopyMove, CopyMakesFilesAndTreesUnderTheNewName) {
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; \"b.txt\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_Copy( \"folder\" ; \"copy of folder\" )"), Succeeded());
    EXPECT_EQ(snapshot(), (Tree{{u"a.txt", "alpha"},
                                {u"b.txt", "alpha"},
                                {u"folder", "<dir>"},
                                {u"folder\\inside.txt", "inside"},
                                {u"copy of folder", "<dir>"},
                                {u"copy of folder\\inside.txt", "inside"}}));
}

TEST_F(CopyMove, CopyIntoAnExistingFolderKeepsTheSourceName) {
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; \"folder\" )"), Succeeded());
    EXPECT_EQ(readFile(u"folder\\a.txt"), "alpha");
    EXPECT_EQ(readFile(u"a.txt"), "alpha");
}

TEST_F(CopyMove, CopyRefusalsLeaveEverythingAsItWas) {
    writeFile(u"other.txt", "other");
    const Tree before = snapshot();
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; \"a.txt\" )"),
              Failed(-48, "Destination item already exists"));
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; \"other.txt\" )"),
              Failed(-48, "Destination item already exists"));
    // The source is checked first, whatever the destination.
    EXPECT_EQ(call(u"VFile_Copy( \"missing\" ; \"Q:\\\\nowhere\\\\x\" )"),
              Failed(-43, "Source item does not exist"));
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" )"), Failed(-50, "Not enough parameters"));
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; 2 )"), Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(call(u"VFile_Copy( \"a.txt\" ; \"\" )"),
              Failed(-43, "Empty string is not valid path"));
    EXPECT_EQ(snapshot(), before);
}

TEST_F(CopyMove, MoveRenamesAndMovesIntoFolders) {
    EXPECT_EQ(call(u"VFile_Move( \"a.txt\" ; \"renamed.txt\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_Move( \"renamed.txt\" ; \"folder\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_Move( \"folder\" ; \"moved folder\" )"), Succeeded());
    EXPECT_EQ(snapshot(), (Tree{{u"moved folder", "<dir>"},
                                {u"moved folder\\inside.txt", "inside"},
                                {u"moved folder\\renamed.txt", "alpha"}}));
}

TEST_F(CopyMove, MoveRefusalsLeaveEverythingAsItWas) {
    writeFile(u"folder\\a.txt", "older");
    const Tree before = snapshot();
    // The folder already holds a file of the source's name.
    EXPECT_EQ(call(u"VFile_Move( \"a.txt\" ; \"folder\" )"),
              Failed(-48, "Destination item already exists"));
    EXPECT_EQ(call(u"VFile_Move( \"a.txt\" ; \"folder/inside.txt\" )"),
              Failed(-48, "Destination item already exists"));
    EXPECT_EQ(call(u"VFile_Move( \"missing\" ; \"elsewhere\" )"),
              Failed(-43, "Source item does not exist"));
    EXPECT_EQ(call(u"VFile_Move( 1 ; \"b\" )"), Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(snapshot(), before);
}

}  // namespace
}  // namespace items_test
