// What a delete or move never takes, under every name it may be given: a volume root, the
// database's own folder and the folders holding it; and no copy or move into its own tree. A
// drive letter stands for a scratch folder (as subst makes one), so nothing real is at stake.
#include <windows.h>

#include "safety_fixture.h"

namespace safety_test {
namespace {

class KeptItems : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"volume");
        makeFolder(u"volume\\data");
        makeFolder(u"volume\\data\\inner");
        writeFile(u"volume\\data\\inner\\keep.txt", "keep");
        makeFolder(u"volume\\tree");
        writeFile(u"volume\\tree\\t.txt", "tree");
        makeFolder(u"other");
        writeFile(u"other\\o.txt", "other");
        mapped_ = std::make_unique<MappedDrive>(path(u"volume"));
        if (!mapped_->why().empty()) {
            GTEST_SKIP() << mapped_->why();
        }
        drive_ = mapped_->drive();
        // The database lies on the mapped drive, so "/" names the mapped drive's root.
        ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, Wide(drive_ + u"\\data\\Solution.fmp12")));
        before_ = Listing(root_);
    }
    void TearDown() override {
        mapped_.reset();
        SafetyTest::TearDown();
    }

    std::unique_ptr<MappedDrive> mapped_;
    std::u16string drive_;
    std::string before_;
};

TEST_F(KeptItems, AVolumeRootOrTheDatabasesFolderIsNeitherDeletedNorMoved) {
    const std::string root = "Cannot delete a volume root";
    const std::string moveRoot = "Cannot move a volume root";
    const std::string database = "Cannot delete the folder of the database or a folder holding it";
    const std::string moveDatabase =
        "Cannot move the folder of the database or a folder holding it";
    const std::u16string d = drive_;
    const std::u16string elsewhere = Quoted(path(u"other\\moved"));
    const struct {
        std::u16string calculation;
        const std::string& message;
    } cases[] = {
        // The database's folder by every name: relative, on the mapped drive, through the folder
        // the drive stands for, in the "\\?\" form, in another case.
        {uR"(VFile_Delete( "." ))", database},
        {uR"(VFile_Delete( ".." ))", database},
        {uR"(VFile_Delete( "inner/.." ))", database},
        {u"VFile_Delete( " + Quoted(d + u"\\data") + u" )", database},
        {u"VFile_Delete( " + Quoted(path(u"volume\\data")) + u" )", database},
        {u"VFile_Delete( " + Quoted(u"\\\\?\\" + d + u"\\DATA") + u" )", database},
        // A folder holding it: the one the drive stands for, named through another drive.
        {u"VFile_Delete( " + Quoted(path(u"volume")) + u" )", database},
        {u"VFile_Move( " + Quoted(path(u"volume")) + u" ; " + elsewhere + u" )", moveDatabase},
        {uR"(VFile_Move( "." ; "elsewhere" ))", moveDatabase},
        {u"VFile_Move( " + Quoted(d + u"/data") + u" ; " + elsewhere + u" )", moveDatabase},
        // "/" is the root of the database's drive, which holds the database too.
        {uR"(VFile_Delete( "/" ))", database},
        {uR"(VFile_Delete( "\\" ))", database},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), Failed(-50, c.message)) << Narrow(c.calculation);
        EXPECT_EQ(Listing(root_), before_);
    }
    // A volume root the database is not on: every spelling of it.
    host_.SetFile(kFmhostFileLocal, Wide(path(u"other\\Solution.fmp12")));
    for (const std::u16string& spelling :
         {d + u"\\", d + u"/", u"\\\\?\\" + d + u"\\", d + u"\\tree\\..", d + u"\\.", d}) {
        EXPECT_EQ(call(u"VFile_Delete( " + Quoted(spelling) + u" )"), Failed(-50, root))
            << Narrow(spelling);
        EXPECT_EQ(call(u"VFile_Move( " + Quoted(spelling) + u" ; " + elsewhere + u" )"),
                  Failed(-50, moveRoot))
            << Narrow(spelling);
        EXPECT_EQ(Listing(root_), before_);
    }
    // What is neither still goes.
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(d + u"\\tree") + u" )"), Succeeded());
    EXPECT_FALSE(exists(u"volume\\tree"));
}

TEST_F(KeptItems, NoCopyOrMoveIntoItsOwnTreeUnderAnotherName) {
    // The target lies inside the source only when the drive is seen for the folder it stands for.
    const std::u16string source = Quoted(drive_ + u"\\tree");
    const std::u16string inside = Quoted(path(u"volume\\tree\\copy"));
    EXPECT_EQ(call(u"VFile_Copy( " + source + u" ; " + inside + u" )"),
              Failed(-50, "Cannot copy item"));
    EXPECT_EQ(call(u"VFile_Move( " + source + u" ; " + inside + u" )"),
              Failed(-50, "Cannot move item"));
    // Into itself, an existing folder receiving the item under its own name.
    EXPECT_EQ(call(u"VFile_Copy( " + source + u" ; " + Quoted(path(u"volume\\tree")) + u" )"),
              Failed(-50, "Cannot copy item"));
    EXPECT_EQ(Listing(root_), before_);
    // Beside itself is fine.
    EXPECT_EQ(call(u"VFile_Copy( " + source + u" ; " + Quoted(path(u"volume\\copy")) + u" )"),
              Succeeded());
    EXPECT_EQ(readFile(u"volume\\copy\\t.txt"), "tree");
}

}  // namespace
}  // namespace safety_test
