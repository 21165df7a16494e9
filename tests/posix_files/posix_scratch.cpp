#include "posix_scratch.h"

#include <dirent.h>
#include <fcntl.h>
#include <ftw.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <thread>

#include "foundation/file_name_bytes.h"

namespace posix_test {

std::u16string Text(const std::string& utf8) {
    return slib::FileNameBytesToText(utf8);
}

void KillPartWay(int delayMs, const std::function<void()>& work) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        (void)!write(ready[1], "!", 1);
        try {
            work();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    char go = 0;
    ASSERT_EQ(read(ready[0], &go, 1), 1);
    close(ready[0]);
    close(ready[1]);
    std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
}

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const slib::Exception& e) {
        return std::to_string(e.error()->code()) + " " + e.message();
    }
    return "";
}

void PosixScratchTest::SetUp() {
    char pattern[] = "/tmp/vf-posix-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr) << std::strerror(errno);
    root_ = pattern;
}

void PosixScratchTest::TearDown() {
    if (!mounted_.empty()) {
        umount2(mounted_.c_str(), MNT_DETACH);
    }
    nftw(
        root_.c_str(),
        [](const char* item, const struct stat*, int kind, struct FTW*) {
            if (kind == FTW_DP) {
                chmod(item, 0700);
                return rmdir(item);
            }
            return unlink(item);
        },
        16, FTW_DEPTH | FTW_PHYS);
}

void PosixScratchTest::makeFolder(const std::string& relative, mode_t mode) const {
    ASSERT_EQ(mkdir(path(relative).c_str(), mode), 0) << relative << ": " << std::strerror(errno);
}

void PosixScratchTest::writeFile(const std::string& relative, const std::string& content,
                                 mode_t mode) const {
    {
        std::ofstream out(path(relative), std::ios::binary | std::ios::trunc);
        out << content;
        ASSERT_TRUE(out.good()) << relative;
    }
    ASSERT_EQ(chmod(path(relative).c_str(), mode), 0) << relative;
}

void PosixScratchTest::makeLink(const std::string& relative, const std::string& leadsTo) const {
    ASSERT_EQ(symlink(leadsTo.c_str(), path(relative).c_str()), 0) << relative;
}

std::optional<std::string> PosixScratchTest::readFile(const std::string& relative) const {
    std::ifstream in(path(relative), std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

bool PosixScratchTest::exists(const std::string& relative) const {
    struct stat item = {};
    return lstat(path(relative).c_str(), &item) == 0;
}

mode_t PosixScratchTest::modeOf(const std::string& relative) const {
    struct stat item = {};
    EXPECT_EQ(lstat(path(relative).c_str(), &item), 0) << relative;
    return item.st_mode & 07777;
}

std::map<std::string, std::string> PosixScratchTest::snapshot(const std::string& relative) const {
    std::map<std::string, std::string> tree;
    const std::string base = relative.empty() ? root_ : path(relative);
    DIR* folder = opendir(base.c_str());
    if (folder == nullptr) {
        return tree;
    }
    while (const dirent* entry = readdir(folder)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        const std::string inner = relative.empty() ? name : relative + "/" + name;
        struct stat item = {};
        lstat(path(inner).c_str(), &item);
        if (S_ISLNK(item.st_mode)) {
            tree[inner] = "<link>";
        } else if (S_ISDIR(item.st_mode)) {
            tree[inner] = "<dir>";
            for (const auto& [below, what] : snapshot(inner)) {
                tree[below] = what;
            }
        } else {
            tree[inner] = readFile(inner).value_or("<unreadable>");
        }
    }
    closedir(folder);
    return tree;
}

bool PosixScratchTest::mountSmallVolume(const std::string& relative, int kilobytes,
                                        std::string& why) {
    makeFolder(relative);
    const std::string options = "size=" + std::to_string(kilobytes) + "k";
    if (mount("tmpfs", path(relative).c_str(), "tmpfs", 0, options.c_str()) != 0) {
        why = std::string("cannot mount a small tmpfs here: ") + std::strerror(errno);
        return false;
    }
    mounted_ = path(relative);
    return true;
}

}  // namespace posix_test
