// The real system queries behind slib::Path on Linux, and the file manager's home folder.

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/file_name_bytes.h"
#include "foundation/path_system.h"

namespace slib {
namespace {

const PathSystem& realSystem = DefaultPathSystem();

std::u16string Text(const std::string& bytes) {
    return FileNameBytesToText(bytes);
}

TEST(PosixPathSystem, CurrentDirectoryIsTheProcesssOwn) {
    char current[4096];
    ASSERT_NE(::getcwd(current, sizeof(current)), nullptr);
    EXPECT_EQ(realSystem.currentDirectory(), Text(current));
}

TEST(PosixPathSystem, HomeIsTheAccountsNotTheEnvironments) {
    const passwd* account = ::getpwuid(::geteuid());
    ASSERT_NE(account, nullptr);
    std::string expected = account->pw_dir;
    while (expected.size() > 1 && expected.back() == '/') {
        expected.pop_back();
    }
    const char* saved = std::getenv("HOME");
    const std::string old = saved != nullptr ? saved : "";
    ::setenv("HOME", "/nowhere/else", 1);
    EXPECT_EQ(realSystem.profileFolder(), Text(expected));
    EXPECT_EQ(FileManager().getHomeFolder()->units(), Text(expected));
    saved != nullptr ? ::setenv("HOME", old.c_str(), 1) : ::unsetenv("HOME");
}

TEST(PosixPathSystem, OneFormPerNameAndFoldersTold) {
    const std::string folder = "/tmp/vf-path-system-" + std::to_string(::getpid());
    ASSERT_EQ(::mkdir(folder.c_str(), 0700), 0);
    ASSERT_EQ(::symlink("/nowhere", (folder + "/dangling").c_str()), 0);
    const struct {
        std::string path;
        bool exists;
        bool folder;
    } cases[] = {{folder, true, true},
                 {folder + "/dangling", true, false},
                 {folder + "/missing", false, false},
                 {folder + "/missing/deeper", false, false},
                 {"/", true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const std::optional<std::u16string> longForm = realSystem.longPathName(Text(c.path));
        EXPECT_EQ(longForm.has_value(), c.exists);
        if (longForm) {
            EXPECT_EQ(*longForm, Text(c.path));
        }
        EXPECT_FALSE(realSystem.shortPathName(Text(c.path)));
        EXPECT_EQ(realSystem.isExistingFolder(Text(c.path)), c.folder);
    }
    ::unlink((folder + "/dangling").c_str());
    ::rmdir(folder.c_str());
}

}  // namespace
}  // namespace slib
