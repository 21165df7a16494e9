// A tree holding a link to a folder outside it, and one looping back to the tree itself, on our
// own walks (paths past the shell's limit): copy, move, delete, size and zip leave the outside
// folder as it was, never enter the link and end.
#include <windows.h>

#include "safety_fixture.h"

namespace safety_test {
namespace {

class Links : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"outside");
        writeFile(u"outside\\keep.txt", "outside file");
        makeFolder(deepFolder());
        makeFolder(deepFolder() + u"\\" + std::u16string(120, u'e'));
        makeFolder(tree());
        writeFile(tree() + u"\\real.txt", "real");
        if (!MakeFolderLink(path(tree() + u"\\out"), path(u"outside")) ||
            !MakeFolderLink(path(tree() + u"\\self"), path(tree()))) {
            GTEST_SKIP() << "no folder links can be made here";
        }
        outside_ = Listing(path(u"outside"));
    }

    static std::u16string deepFolder() { return std::u16string(120, u'd'); }
    // Past the shell's limit with anything inside it: our walk handles it.
    static std::u16string tree() {
        return deepFolder() + u"\\" + std::u16string(120, u'e') + u"\\tree";
    }

    void expectOutsideUntouched() {
        EXPECT_EQ(readFile(u"outside\\keep.txt"), "outside file");
        EXPECT_EQ(Listing(path(u"outside")), outside_);
    }

    std::string outside_;
};

TEST_F(Links, CopyLeavesLinksOutAndTheOutsideAsItWas) {
    const std::u16string copy = deepFolder() + u"\\" + std::u16string(120, u'e') + u"\\copy";
    EXPECT_EQ(call(u"VFile_Copy( " + Quoted(path(tree())) + u" ; " + Quoted(path(copy)) + u" )"),
              Succeeded());
    EXPECT_EQ(snapshot(copy), (Tree{{u"real.txt", "real"}}));
    expectOutsideUntouched();
}

TEST_F(Links, MoveTakesTheLinkItselfAndDeleteRemovesOnlyTheLink) {
    const std::u16string moved = deepFolder() + u"\\" + std::u16string(120, u'e') + u"\\moved";
    EXPECT_EQ(call(u"VFile_Move( " + Quoted(path(tree())) + u" ; " + Quoted(path(moved)) + u" )"),
              Succeeded());
    const DWORD link = GetFileAttributesW(Wide(u"\\\\?\\" + path(moved + u"\\out")));
    EXPECT_NE(link, INVALID_FILE_ATTRIBUTES);
    EXPECT_NE(link & FILE_ATTRIBUTE_REPARSE_POINT, 0u) << "moved as the link it is";
    expectOutsideUntouched();
    // "self" points at the tree's old place now: a dangling link no listing shows under Wine.
    RemoveFolderLink(path(moved + u"\\self"));
    std::string why;
    if (!SystemRemovesFolderLinks(root_, why)) {
        // Removing the link fails, and says so; what it points at is still not entered.
        EXPECT_NE(codeOf(u"VFile_Delete( " + Quoted(path(moved)) + u" )"), "0");
        expectOutsideUntouched();
        GTEST_SKIP() << "this system cannot remove a folder link: " << why;
    }
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(path(moved)) + u" )"), Succeeded());
    EXPECT_FALSE(exists(moved));
    expectOutsideUntouched();
}

TEST_F(Links, MoveToAnotherVolumeLeavesLinksOutOrFailsLeavingNothingThere) {
    std::string why;
    const std::optional<std::u16string> small = SmallVolume(why);
    if (!small) {
        GTEST_SKIP() << why;
    }
    // A short tree as well as the deep one: a folder's move is ours whatever its length.
    makeFolder(u"short");
    writeFile(u"short\\real.txt", "real");
    ASSERT_TRUE(MakeFolderLink(path(u"short\\out"), path(u"outside")));
    const bool linksGo = SystemRemovesFolderLinks(root_, why);
    for (const std::u16string& source : {tree(), std::u16string(u"short")}) {
        SCOPED_TRACE(Narrow(source));
        const std::u16string target = *small + u"\\moved tree";
        const std::string outcome =
            call(u"VFile_Move( " + Quoted(path(source)) + u" ; " + Quoted(target) + u" )");
        if (!linksGo) {
            // The link in the source cannot go: the move fails while the source is whole, and
            // nothing is left at the target.
            EXPECT_NE(outcome.substr(0, outcome.find(" | ")), "0");
            EXPECT_EQ(GetFileAttributesW(Wide(target)), INVALID_FILE_ATTRIBUTES) << outcome;
            EXPECT_EQ(readFile(source + u"\\real.txt"), "real");
        } else {
            EXPECT_EQ(outcome, Succeeded());
            EXPECT_EQ(StateOf(target + u"\\real.txt").bytes, "real");
            EXPECT_EQ(GetFileAttributesW(Wide(target + u"\\out")), INVALID_FILE_ATTRIBUTES)
                << "a link does not travel to another volume";
            EXPECT_FALSE(exists(source));
        }
        expectOutsideUntouched();
        slib::test::RemoveTree(target);
    }
    if (!linksGo) {
        GTEST_SKIP() << "this system cannot remove a folder link, so the moves failed: " << why;
    }
}

TEST_F(Links, SizeCountsNoLinkAndEnds) {
    EXPECT_EQ(evaluate(u"VFile_Get( \"size\" ; " + Quoted(path(tree())) + u" )"), "4");
    // Short paths too: the size walk is ours whatever the length.
    makeFolder(u"short");
    writeFile(u"short\\a.txt", "12345");
    ASSERT_TRUE(MakeFolderLink(path(u"short\\loop"), path(u"short")));
    ASSERT_TRUE(MakeFolderLink(path(u"short\\out"), path(u"outside")));
    EXPECT_EQ(evaluate(uR"(VFile_Get( "size" ; "short" ))"), "5");
}

TEST_F(Links, ZipStoresALinkAsAnEmptyFolderAndEnds) {
    makeFolder(u"short");
    writeFile(u"short\\a.txt", "12345");
    ASSERT_TRUE(MakeFolderLink(path(u"short\\loop"), path(u"short")));
    ASSERT_TRUE(MakeFolderLink(path(u"short\\out"), path(u"outside")));
    ASSERT_EQ(call(uR"(VFile_Compress( "short" ; "short.zip" ))"), Succeeded());
    ASSERT_EQ(call(uR"(VFile_DeCompress( "short.zip" ; "unpacked" ))"), Succeeded());
    EXPECT_EQ(snapshot(u"unpacked"),
              (Tree{{u"a.txt", "12345"}, {u"loop", "<dir>"}, {u"out", "<dir>"}}));
    expectOutsideUntouched();
}

// A read and a size are taken from the file opened, never from the path: on Windows the path's
// own attributes describe a file link itself (size 0), so a read gave "" and "size" 0.
using FileLinks = SafetyTest;

TEST_F(FileLinks, AreReadAndMeasuredAsTheFileTheyPointAt) {
    writeFile(u"target.txt", "sixteen bytes!!!");
    const std::u16string link = path(u"link.txt");
    if (!MakeFileLink(link, path(u"target.txt"))) {
        GTEST_SKIP() << "no file links can be made here";
    }
    WIN32_FILE_ATTRIBUTE_DATA byPath{};
    GetFileAttributesExW(Wide(link), GetFileExInfoStandard, &byPath);
    EXPECT_EQ(evaluate(uR"(VFile_Read( "link.txt" ))"), "sixteen bytes!!!");
    EXPECT_EQ(evaluate(uR"(VFile_Read( "link.txt" ; 8 ; 5 ; "utf-8" ))"), "bytes");
    EXPECT_EQ(evaluate(uR"(VFile_Get( "size" ; "link.txt" ))"), "16");
    ASSERT_TRUE(RemoveFileLink(link));
    EXPECT_EQ(readFile(u"target.txt"), "sixteen bytes!!!");
    if ((byPath.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 &&
        byPath.nFileSizeLow == 16) {
        GTEST_SKIP() << "this system describes a file link by the file it names (Wine's Unix "
                        "links), so a size taken from the path was right here too";
    }
}

}  // namespace
}  // namespace safety_test
