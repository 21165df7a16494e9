// What a delete or move never takes, under every name it may be given: the root, the root of a
// mounted file system, the database's own folder and every folder holding it.
#include <sys/stat.h>

#include "foundation/file_name_bytes.h"
#include "safety/posix/safety_scratch.h"

namespace safety_test {
namespace {

class KeptItems : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"data");
        makeFolder(u"data\\inner");
        writeFile(u"data\\inner\\keep.txt", "keep");
        makeFolder(u"other");
        ASSERT_TRUE(
            host_.SetFile(kFmhostFileLocal, items_test::HostText(path(u"data\\Solution.fmp12"))));
        makeLink(u"to data", bytes(u"data"));
        before_ = snapshot();
    }
    Tree before_;
};

TEST_F(KeptItems, NeitherTheRootNorAMountNorTheDatabasesFolderGoes) {
    const std::string root = "Cannot delete a volume root";
    const std::string moveRoot = "Cannot move a volume root";
    const std::string database = "Cannot delete the folder of the database or a folder holding it";
    const std::string moveDatabase =
        "Cannot move the folder of the database or a folder holding it";
    const std::u16string elsewhere = Quoted(path(u"other\\moved"));
    const struct {
        std::u16string calculation;
        const std::string& message;
    } cases[] = {
        // The database's folder by every name: relative, absolute, through "..", and every
        // folder holding it up to "/".
        {uR"(VFile_Delete( "." ))", database},
        {uR"(VFile_Delete( "inner/.." ))", database},
        {u"VFile_Delete( " + Quoted(path(u"data")) + u" )", database},
        {u"VFile_Delete( " + Quoted(root_) + u" )", database},
        {uR"(VFile_Delete( "/" ))", database},
        {uR"(VFile_Move( "." ; "elsewhere" ))", moveDatabase},
        {u"VFile_Move( " + Quoted(root_) + u" ; " + elsewhere + u" )", moveDatabase},
        // Mounted file systems' roots, however they are spelt.
        {uR"(VFile_Delete( "/proc" ))", root},
        {uR"(VFile_Delete( "/proc/" ))", root},
        {uR"(VFile_Delete( "/proc/self/.." ))", root},
        {uR"(VFile_Delete( "/sys" ))", root},
        {u"VFile_Move( \"/proc\" ; " + elsewhere + u" )", moveRoot},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), Failed(-50, c.message)) << Narrow(c.calculation);
        EXPECT_EQ(snapshot(), before_);
    }
    // A link to the database's folder is not that folder: it goes, the folder stays.
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(path(u"to data")) + u" )"), Succeeded());
    EXPECT_TRUE(exists(u"data\\inner\\keep.txt"));
    EXPECT_FALSE(exists(u"to data"));
}

TEST_F(KeptItems, TheSmallVolumesRootIsKeptAndWhatIsInItGoes) {
    std::string why;
    const std::optional<std::u16string> small = smallVolume(why);
    if (!small) {
        GTEST_SKIP() << why;
    }
    std::string mountPoint = slib::TextToFileNameBytes(*small).value();
    struct stat folder {
    }, parent{};
    ASSERT_EQ(::stat(mountPoint.c_str(), &folder), 0);
    ASSERT_EQ(::stat((mountPoint + "/..").c_str(), &parent), 0);
    if (folder.st_dev == parent.st_dev) {
        // The folder given is inside the volume: its parent is the volume's root.
        mountPoint += "/..";
    }
    const std::u16string root = slib::FileNameBytesToText(mountPoint);
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(root) + u" )"),
              Failed(-50, "Cannot delete a volume root"));
    EXPECT_EQ(call(u"VFile_Move( " + Quoted(root) + u" ; " + Quoted(path(u"other\\moved")) + u" )"),
              Failed(-50, "Cannot move a volume root"));
    struct stat after {};
    EXPECT_EQ(::stat(mountPoint.c_str(), &after), 0);
    ASSERT_EQ(call(u"VFile_New( " + Quoted(*small + u"/made") + u" )"), Succeeded());
    EXPECT_EQ(call(u"VFile_Delete( " + Quoted(*small + u"/made") + u" )"), Succeeded());
}

}  // namespace
}  // namespace safety_test
