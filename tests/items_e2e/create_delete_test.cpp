// VFile_New and VFile_Delete on disk.
#include <map>

#include "items_fixture.h"

namespace items_test {
namespace {

using Tree = std::map<std::u16string, std::string>;

class CreateDelete : public ItemsTest {};

TEST_F(CreateDelete, NewMakesAFolderUnlessAskedForAFile) {
    EXPECT_EQ(call(u"VFile_New( \"dir\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_New( \"f\" ; \"FILE\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_New( \"dir/inner\" ; \"Folder\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_New( \"dir\\\\g.txt\" ; \"new\" )"), Succeeded());
    EXPECT_EQ(snapshot(),
              (Tree{{u"dir", "<dir>"}, {u"dir\\inner", "<dir>"}, {u"dir\\g.txt", ""}, {u"f", ""}}));
}

TEST_F(CreateDelete, NewTakesEveryPathForm) {
    const std::u16string hostForm = u"file:/" + path(u"host form");
    std::u16string slashed = hostForm;
    for (char16_t& unit : slashed) {
        if (unit == u'\\') {
            unit = u'/';
        }
    }
    EXPECT_EQ(call(u"VFile_New( " + Quoted(slashed) + u" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_New( " + Quoted(path(u"native form")) + u" ; \"file\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_New( \"./dot form\" )"), Succeeded());
    EXPECT_EQ(snapshot(),
              (Tree{{u"host form", "<dir>"}, {u"native form", ""}, {u"dot form", "<dir>"}}));
}

TEST_F(CreateDelete, NewNeverMakesMissingParentsNorReplacesAnything) {
    EXPECT_EQ(call(u"VFile_New( \"a\\\\b\\\\c\" )"), Failed(-43, "Cannot create directory"));
    EXPECT_EQ(call(u"VFile_New( \"a/b.txt\" ; \"file\" )"), Failed(-43, "Cannot create file"));
    EXPECT_TRUE(snapshot().empty());

    writeFile(u"kept.txt", "content");
    makeFolder(u"kept");
    EXPECT_EQ(call(u"VFile_New( \"kept.txt\" ; \"file\" )"), Failed(-48, "Cannot create file"));
    EXPECT_EQ(call(u"VFile_New( \"kept\" )"), Failed(-48, "Cannot create directory"));
    EXPECT_EQ(snapshot(), (Tree{{u"kept", "<dir>"}, {u"kept.txt", "content"}}));
}

TEST_F(CreateDelete, NewRefusesUnknownKindsAndBadArguments) {
    EXPECT_EQ(call(u"VFile_New( \"x\" ; \"directory\" )"), Failed(-50, "Wrong parameter"));
    EXPECT_EQ(call(u"VFile_New( \"x\" ; 1 )"), Failed(-50, "Wrong parameter"));
    EXPECT_EQ(call(u"VFile_New( 1 ; \"file\" )"), Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(call(u"VFile_New( \"\" )"), Failed(-43, "Empty string is not valid path"));
    EXPECT_EQ(call(u"VFile_New( \"fmnet:/host/x\" )"),
              Failed(-50, "FileMaker network path cannot be used"));
    EXPECT_TRUE(snapshot().empty());
}

TEST_F(CreateDelete, DeleteRemovesFilesAndWholeTrees) {
    writeFile(u"a.txt", "a");
    makeFolder(u"tree");
    makeFolder(u"tree\\deeper");
    writeFile(u"tree\\deeper\\b.txt", "b");
    writeFile(u"keep.txt", "k");
    EXPECT_EQ(call(u"VFile_Delete( \"a.txt\" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_Delete( \"tree\" )"), Succeeded());
    EXPECT_EQ(snapshot(), (Tree{{u"keep.txt", "k"}}));
}

TEST_F(CreateDelete, DeleteOfAMissingItemChangesNothing) {
    writeFile(u"keep.txt", "k");
    EXPECT_EQ(call(u"VFile_Delete( \"missing.txt\" )"), Failed(-43, "Item does not exist"));
    EXPECT_EQ(call(u"VFile_Delete( 12 )"), Failed(-50, "Path parameter must be text"));
    EXPECT_EQ(call(u"VFile_Delete()"), Failed(-50, "Not enough parameters"));
    EXPECT_EQ(snapshot(), (Tree{{u"keep.txt", "k"}}));
}

TEST_F(CreateDelete, ASuccessLeavesTheLastFailureInPlace) {
    EXPECT_EQ(evaluate(u"VFile_Delete( \"missing.txt\" )"), "-43");
    EXPECT_EQ(evaluate(u"VFile_New( \"made\" )"), "0");
    EXPECT_EQ(evaluate(u"VFile_Get( \"lastError\" )"), "-43");
    EXPECT_EQ(evaluate(u"VFile_Get( \"lastErrorMessage\" )"), "Item does not exist");
    EXPECT_TRUE(exists(u"made"));
}

}  // namespace
}  // namespace items_test
