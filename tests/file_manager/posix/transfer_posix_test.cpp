// Copy, move and delete on Linux: roots and mount points refused with nothing touched, links in a
// tree never followed, copies whole or absent, moves across file systems.

#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "file_manager/transfer_fixture.h"
#include "foundation/error_codes.h"
#include "foundation/file_name_bytes.h"

namespace slib {
namespace test {

bool TransferTest::MovedFoldersMerge() {
    return true;
}

namespace {

std::string LinkTarget(const std::u16string& link) {
    char target[4096] = {};
    const ssize_t length = ::readlink(Narrow(link).c_str(), target, sizeof(target) - 1);
    return length < 0 ? std::string() : std::string(target, static_cast<size_t>(length));
}

dev_t DeviceOf(const std::string& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? info.st_dev : 0;
}

// What the scratch folder holds beside the tree: no leftovers of a failed copy.
bool HasPartialName(const std::map<std::u16string, std::string>& tree) {
    for (const auto& [name, content] : tree) {
        if (name.find(u".partial") != std::u16string::npos) {
            return true;
        }
    }
    return false;
}

TEST_F(TransferTest, RootsAndMountPointsAreRefusedWithNothingTouched) {
    ASSERT_EQ(::symlink("/", Narrow(path(u"to-root")).c_str()), 0);
    const std::string deleteRoot = Failure(kBadParameter, "Cannot delete a volume root");
    const std::string moveRoot = Failure(kBadParameter, "Cannot move a volume root");
    // "/proc" is a mount point on every Linux system the tests run on.
    const std::u16string aliasOfRoot = path(u"src") + u"/../../..";
    const std::u16string cases[] = {u"/", u"//", u"/proc", u"/proc/", aliasOfRoot};
    const auto before = snapshot();
    for (const std::u16string& root : cases) {
        SCOPED_TRACE(Narrow(root));
        EXPECT_EQ(FailureOf([&] { manager_.deleteItem(String(root)); }), deleteRoot);
        EXPECT_EQ(FailureOf([&] { manager_.moveItem(String(root), at(u"box")); }), moveRoot);
        EXPECT_EQ(snapshot(), before);
    }
    struct stat proc {};
    EXPECT_EQ(::stat("/proc/self", &proc), 0);
    // A link to the root is no root: deleting it takes the link alone.
    manager_.deleteItem(at(u"to-root"));
    EXPECT_FALSE(exists(u"to-root"));
    EXPECT_EQ(::access("/proc/self", F_OK), 0);
}

TEST_F(TransferTest, TheDatabaseFolderAndItsHoldersAreRefusedByIdentity) {
    makeFolder(u"db");
    makeFolder(u"db\\files");
    ASSERT_EQ(::symlink(Narrow(path(u"db")).c_str(), Narrow(path(u"alias")).c_str()), 0);
    const String database = at(u"db\\files");
    const char* message = "Cannot delete the database's own folder";
    const struct {
        std::u16string path;
        bool refused;
    } cases[] = {{path(u"db\\files"), true},
                 {path(u"db"), true},
                 {path(u""), true},
                 {path(u"alias\\files"), true},
                 // The link itself is not the folder: deleting or moving it takes the link only.
                 {path(u"alias"), false},
                 {path(u"db\\files\\..\\.."), true},
                 {path(u"src"), false},
                 {u"/", true},
                 {path(u"missing"), false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.path));
        EXPECT_EQ(FailureOf([&] { manager_.refuseHolderOf(String(c.path), database, message); }),
                  c.refused ? Failure(kBadParameter, message) : "");
    }
}

TEST_F(TransferTest, ALinkInATreeIsNeverFollowed) {
    makeFolder(u"outside");
    writeFile(u"outside\\precious.txt", "keep me");
    ASSERT_EQ(::symlink(Narrow(path(u"outside")).c_str(), Narrow(path(u"src\\sub\\link")).c_str()),
              0);
    ASSERT_EQ(::symlink("../missing", Narrow(path(u"src\\dangling")).c_str()), 0);
    const auto outside = snapshot(u"outside");

    EXPECT_EQ(manager_.getItemSize(at(u"src")), 8u);  // "top" + "inner": the link counts nothing
    manager_.copyItem(at(u"src"), at(u"copy"));
    EXPECT_EQ(snapshot(u"copy"), snapshot(u"src"));
    EXPECT_EQ(LinkTarget(path(u"copy\\sub\\link")), Narrow(path(u"outside")));
    EXPECT_EQ(LinkTarget(path(u"copy\\dangling")), "../missing");

    manager_.deleteItem(at(u"src"));
    manager_.deleteItem(at(u"copy"));
    EXPECT_FALSE(exists(u"src"));
    EXPECT_EQ(snapshot(u"outside"), outside);
    EXPECT_EQ(readFile(u"outside\\precious.txt"), "keep me");
}

TEST_F(TransferTest, AFailedCopyLeavesNoTargetAndNoPartialFile) {
    // A pipe cannot be copied (reading it could block for ever): the copy fails part way.
    ASSERT_EQ(::mkfifo(Narrow(path(u"src\\sub\\pipe")).c_str(), 0600), 0);
    const auto before = snapshot();
    EXPECT_EQ(FailureOf([&] { manager_.copyItem(at(u"src"), at(u"dst")); }),
              Failure(kBadParameter, "Cannot copy item"));
    EXPECT_EQ(snapshot(), before);
    EXPECT_FALSE(HasPartialName(snapshot()));
}

TEST_F(TransferTest, CopiesKeepModesAndCopyIntoTheirOwnTreeIsRefused) {
    ASSERT_EQ(::chmod(Narrow(path(u"lone.txt")).c_str(), 0751), 0);
    manager_.copyItem(at(u"lone.txt"), at(u"copy.txt"));
    struct stat info {};
    ASSERT_EQ(::stat(Narrow(path(u"copy.txt")).c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0751u);

    const auto before = snapshot();
    for (const std::u16string into : {u"src", u"src\\sub"}) {
        EXPECT_EQ(FailureOf([&] { manager_.copyItem(at(u"src"), at(into)); }),
                  Failure(kBadParameter, "Cannot copy item"));
        EXPECT_EQ(FailureOf([&] { manager_.moveItem(at(u"src"), at(into)); }),
                  Failure(kBadParameter, "Cannot move item"));
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(TransferTest, ACopyKilledPartWayLeavesNothingUnderTheTargetsName) {
    // Enough files, each flushed to disk, that the copy is still running when it is seen begun
    // (under a name of its own, or, were it not whole-or-absent, under the target's).
    makeFolder(u"many");
    for (int i = 0; i < 2000; ++i) {
        writeFile(u"many\\" + FileNameBytesToText(std::to_string(i)), std::string(512, 'x'));
    }
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            manager_.copyItem(at(u"many"), at(u"copy"));
        } catch (...) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    ASSERT_GT(child, 0);
    bool begun = false;
    for (int i = 0; i < 20000 && !begun; ++i) {
        std::map<std::u16string, std::string> top;
        CollectTree(root_, top);
        begun = HasPartialName(top) || top.count(u"copy") != 0;
        if (!begun) {
            ::usleep(500);
        }
    }
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSIGNALED(status)) {
        GTEST_SKIP() << "the copy ended before it could be killed part way";
    }
    ASSERT_TRUE(begun);
    EXPECT_FALSE(exists(u"copy"));
}

// A folder on another file system than the scratch folder, removed afterwards; none when this
// machine has no second one at hand.
class CrossDeviceTest : public TransferTest {
  protected:
    void SetUp() override {
        TransferTest::SetUp();
        other_ = "/dev/shm/vf-fm-" + std::to_string(::getpid());
        if (DeviceOf("/dev/shm") == 0 || DeviceOf("/dev/shm") == DeviceOf(Narrow(root_))) {
            GTEST_SKIP() << "/dev/shm and " << Narrow(root_) << " are one file system here";
        }
        ASSERT_EQ(::mkdir(other_.c_str(), 0755), 0);
    }
    void TearDown() override {
        RemoveTree(FileNameText(other_));
        TransferTest::TearDown();
    }
    static std::u16string FileNameText(const std::string& path) {
        return std::u16string(path.begin(), path.end());
    }
    String there(const std::string& name) const { return String(FileNameText(other_ + name)); }
    std::string other_;
};

TEST_F(CrossDeviceTest, MovesAFileAndATreeWholeThenRemovesTheSource) {
    const auto tree = snapshot(u"src");
    manager_.moveItem(at(u"lone.txt"), there(""));
    manager_.moveItem(at(u"src"), there("/moved"));
    EXPECT_FALSE(exists(u"lone.txt"));
    EXPECT_FALSE(exists(u"src"));
    std::map<std::u16string, std::string> moved;
    CollectTree(FileNameText(other_ + "/moved"), moved);
    EXPECT_EQ(moved.size(), tree.size());
    EXPECT_EQ(DeviceOf(other_ + "/lone.txt"), DeviceOf(other_));
}

TEST_F(CrossDeviceTest, AFailedMoveLeavesTheSourceAsItWas) {
    ASSERT_EQ(::mkfifo(Narrow(path(u"src\\pipe")).c_str(), 0600), 0);
    const auto before = snapshot();
    EXPECT_EQ(FailureOf([&] { manager_.moveItem(at(u"src"), there("/moved")); }),
              Failure(kBadParameter, "Cannot move item"));
    EXPECT_EQ(snapshot(), before);
    std::map<std::u16string, std::string> left;
    CollectTree(FileNameText(other_), left);
    EXPECT_TRUE(left.empty());
}

}  // namespace
}  // namespace test
}  // namespace slib
