// VFile_New, VFile_Delete, VFile_Copy and VFile_Move on disk, and every item function's refusals:
// what lands where, and that a refusal changes nothing.
#include "items_fixture.h"
#include "system_answers.h"

namespace items_test {
namespace {

class Items : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        writeFile(u"a.txt", "alpha");
        makeFolder(u"folder");
        writeFile(u"folder\\inside.txt", "inside");
    }
};

TEST_F(Items, NewMakesAFolderUnlessAskedForAFileInEveryPathForm) {
    const std::u16string hostForm = FileForm(path(u"host form"));
    for (const std::u16string& calculation : {
             std::u16string(uR"(VFile_New( "dir" ))"),
             std::u16string(uR"(VFile_New( "f" ; "FILE" ))"),
             std::u16string(uR"(VFile_New( "dir/inner" ; "Folder" ))"),
             std::u16string(uR"(VFile_New( "dir/g.txt" ; "new" ))"),
             u"VFile_New( " + Quoted(hostForm) + u" )",
             u"VFile_New( " + Quoted(path(u"native form")) + u" ; \"file\" )",
             std::u16string(uR"(VFile_New( "./dot form" ))"),
         }) {
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
    }
    EXPECT_EQ(snapshot(), (Tree{{u"a.txt", "alpha"},
                                {u"folder", "<dir>"},
                                {u"folder\\inside.txt", "inside"},
                                {u"dir", "<dir>"},
                                {u"dir\\inner", "<dir>"},
                                {u"dir\\g.txt", ""},
                                {u"f", ""},
                                {u"host form", "<dir>"},
                                {u"native form", ""},
                                {u"dot form", "<dir>"}}));
}

TEST_F(Items, CopyMoveAndDeleteFilesAndTrees) {
    makeFolder(u"tree");
    makeFolder(u"tree\\deeper");
    writeFile(u"tree\\deeper\\b.txt", "b");
    for (const char16_t* calculation : {
             uR"(VFile_Copy( "a.txt" ; "b.txt" ))",
             uR"(VFile_Copy( "folder" ; "copy of folder" ))",
             // Into an existing folder, under the source's name.
             uR"(VFile_Copy( "a.txt" ; "folder" ))",
             uR"(VFile_Move( "b.txt" ; "renamed.txt" ))",
             uR"(VFile_Move( "renamed.txt" ; "copy of folder" ))",
             uR"(VFile_Move( "folder" ; "moved folder" ))",
             uR"(VFile_Delete( "a.txt" ))",
             uR"(VFile_Delete( "tree" ))",
         }) {
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
    }
    EXPECT_EQ(snapshot(), (Tree{{u"copy of folder", "<dir>"},
                                {u"copy of folder\\inside.txt", "inside"},
                                {u"copy of folder\\renamed.txt", "alpha"},
                                {u"moved folder", "<dir>"},
                                {u"moved folder\\a.txt", "alpha"},
                                {u"moved folder\\inside.txt", "inside"}}));
}

TEST_F(Items, AMoveToAnotherSpellingOfItselfRenamesItInPlace) {
    makeFolder(u"Invoices");
    writeFile(u"Invoices\\report.txt", "report");
    for (const char16_t* calculation : {
             uR"(VFile_Move( "a.txt" ; "A.TXT" ))",
             uR"(VFile_Move( "Invoices" ; "invoices" ))",
             uR"(VFile_Move( "invoices/report.txt" ; "invoices/Report.txt" ))",
         }) {
        EXPECT_EQ(call(calculation), Succeeded()) << Narrow(calculation);
    }
    EXPECT_EQ(snapshot(), (Tree{{u"A.TXT", "alpha"},
                                {u"folder", "<dir>"},
                                {u"folder\\inside.txt", "inside"},
                                {u"invoices", "<dir>"},
                                {u"invoices\\Report.txt", "report"}}));
    // Another name of the same file (a hard link) is another item's name: not a rename.
    if (!slib::test::MakeHardLink(path(u"A.TXT"), path(u"linked.txt"))) {
        GTEST_SKIP() << "no hard link can be made here";
    }
    EXPECT_EQ(call(uR"(VFile_Move( "A.TXT" ; "linked.txt" ))"),
              Failed(-48, "Destination item already exists"));
    EXPECT_EQ(readFile(u"A.TXT"), "alpha");
}

TEST_F(Items, RefusalsReportCodeAndMessageAndChangeNothing) {
    writeFile(u"folder\\a.txt", "older");
    writeFile(u"doc.vfnotype", "no program for this type");
    const char* exists = "Destination item already exists";
    const char* noSource = "Source item does not exist";
    const char* notText = "Path parameter must be text";
    const char* tooFew = "Not enough parameters";
    const struct {
        const char16_t* calculation;
        int code;
        const char* message;
    } cases[] = {
        // Neither missing parents nor replacing anything.
        {uR"(VFile_New( "a/b/c" ))", -43, "Cannot create directory"},
        {uR"(VFile_New( "a.txt" ; "file" ))", -48, "Cannot create file"},
        {uR"(VFile_New( "folder" ))", -48, "Cannot create directory"},
        {uR"(VFile_New( "x" ; "directory" ))", -50, "Wrong parameter"},
        {uR"(VFile_New( "x" ; 1 ))", -50, "Wrong parameter"},
        {uR"(VFile_New( 1 ; "file" ))", -50, notText},
        {uR"(VFile_Delete( "missing.txt" ))", -43, "Item does not exist"},
        {uR"(VFile_Delete( 12 ))", -50, notText},
        {uR"(VFile_Delete())", -50, tooFew},
        {uR"(VFile_Copy( "a.txt" ; "a.txt" ))", -48, exists},
        // The source is checked first, whatever the destination.
        {uR"(VFile_Copy( "missing" ; "/nowhere/x" ))", -43, noSource},
        {uR"(VFile_Copy( "a.txt" ))", -50, tooFew},
        {uR"(VFile_Copy( "a.txt" ; 2 ))", -50, notText},
        // The folder already holds a file of the source's name.
        {uR"(VFile_Move( "a.txt" ; "folder" ))", -48, exists},
        {uR"(VFile_Move( "missing" ; "elsewhere" ))", -43, noSource},
        {uR"(VFile_Move( 1 ; "b" ))", -50, notText},
        {uR"(VFile_Run( 7 ))", -50, notText},
        // Open checks its arguments before starting anything.
        {uR"(VFile_Open( "a.txt" ; "app dir/rec order.exe" ; "c" ))", -50, "Too many parameters"},
        {uR"(VFile_Open( "a.txt" ; 5 ))", -50, notText},
        {uR"(VFile_Open( 5 ; "b" ; "c" ))", -50, notText},
        {uR"(VFile_Open())", -50, tooFew},
        {uR"(VFile_Open( "a.txt" ; "missing.exe" ))", 2400, kOpenInApplicationRefusal},
        {uR"(VFile_Open( "doc.vfnotype" ))", 2400, kOpenInDefaultRefusal},
        {uR"(VFile_Reveal( "missing/file.txt" ))", 2400, kRevealRefusal},
        {uR"(VFile_Reveal( 3 ))", -50, notText},
        {uR"(VFile_Mount())", -50, "No URL to mount"},
        {uR"(VFile_Unmount())", -50, tooFew},
    };
    const Tree before = snapshot();
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), Failed(c.code, c.message)) << Narrow(c.calculation);
        EXPECT_EQ(snapshot(), before);
    }
}

TEST_F(Items, RunRefusesAProgramThatCannotStartAndChangesNothing) {
    const std::string unseen = slib::test::WhyFailedStartsLookMade();
    if (!unseen.empty()) {
        GTEST_SKIP() << unseen;
    }
    const Tree before = snapshot();
    EXPECT_EQ(call(uR"(VFile_Run( "missing.exe" ; "a" ))"),
              Failed(2400, "Cannot run the application"));
    EXPECT_EQ(snapshot(), before);
}

// Where relative paths land when the host has a database or none, or one on a network host, the
// bridge tests show; here, that a host failing to say stops every path-taking call.
TEST_F(Items, NothingHappensWhenTheHostCannotTellTheDatabasePath) {
    host_.FailFilePath(102);
    const std::string unexpected = Failed(2400, "Unexpected FileMaker Error");
    EXPECT_EQ(call(uR"(VFile_Delete( "a.txt" ))"), unexpected);
    // The argument is checked before the host is asked.
    EXPECT_EQ(call(uR"(VFile_Delete( 12 ))"), Failed(-50, "Path parameter must be text"));
    // Absolute paths need no anchor, but the host is asked all the same.
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(path(u"a.txt")) + u" )"), unexpected);
    EXPECT_EQ(readFile(u"a.txt"), "alpha");
}

TEST_F(Items, ASuccessLeavesTheLastFailureInPlace) {
    EXPECT_EQ(evaluate(u"VFile_Delete( \"missing.txt\" )"), "-43");
    EXPECT_EQ(evaluate(u"VFile_New( \"made\" )"), "0");
    EXPECT_EQ(evaluate(u"VFile_Get( \"lastError\" )"), "-43");
    EXPECT_EQ(evaluate(u"VFile_Get( \"lastErrorMessage\" )"), "Item does not exist");
    EXPECT_TRUE(exists(u"made"));
}

}  // namespace
}  // namespace items_test
