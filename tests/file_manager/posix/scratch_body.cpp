// The POSIX bodies of the scratch-folder fixture: plain system calls, never the code under test.

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

#include "file_manager/scratch_folder.h"
#include "foundation/file_name_bytes.h"

extern char** environ;

namespace slib {
namespace test {

const char16_t kSeparator = u'/';

namespace {

std::string Bytes(const std::u16string& path) {
    return TextToFileNameBytes(path).value_or(std::string());
}

std::vector<std::string> Names(const std::string& folder) {
    std::vector<std::string> names;
    DIR* stream = ::opendir(folder.c_str());
    if (stream == nullptr) {
        return names;
    }
    while (const dirent* entry = ::readdir(stream)) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(name);
        }
    }
    ::closedir(stream);
    return names;
}

void Collect(const std::string& base, const std::u16string& prefix,
             std::map<std::u16string, std::string>& out) {
    for (const std::string& name : Names(base)) {
        const std::u16string text = FileNameBytesToText(name);
        const std::u16string relative = prefix.empty() ? text : prefix + u"\\" + text;
        struct stat info;
        if (::lstat((base + "/" + name).c_str(), &info) != 0) {
            continue;
        }
        if (S_ISLNK(info.st_mode)) {
            out[relative] = "<link>";
        } else if (S_ISDIR(info.st_mode)) {
            out[relative] = "<dir>";
            Collect(base + "/" + name, relative, out);
        } else if (S_ISREG(info.st_mode)) {
            out[relative] = "";
        } else {
            out[relative] = "<other>";  // a pipe or device: never opened, it could block
        }
    }
}

void RemoveBytes(const std::string& path) {
    struct stat info;
    if (::lstat(path.c_str(), &info) != 0) {
        return;
    }
    if (!S_ISDIR(info.st_mode)) {
        ::unlink(path.c_str());
        return;
    }
    ::chmod(path.c_str(), 0700);  // a test may have left it unreadable
    for (const std::string& name : Names(path)) {
        RemoveBytes(path + "/" + name);
    }
    ::rmdir(path.c_str());
}

}  // namespace

std::u16string BesideProgram(const std::u16string& name) {
    std::string self(4096, '\0');
    const ssize_t length = ::readlink("/proc/self/exe", &self[0], self.size());
    self.resize(length > 0 ? static_cast<size_t>(length) : 0);
    return FileNameBytesToText(self.substr(0, self.rfind('/') + 1)) + name;
}

std::string WhyFailedStartsLookMade() {
    // Below a file: nothing there can exist, on any machine.
    char program[] = "/dev/null/vf-no-program";
    char* const argv[] = {program, nullptr};
    pid_t child = 0;
    if (::posix_spawn(&child, program, nullptr, nullptr, argv, environ) != 0) {
        return "";
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return std::string("posix_spawn answered a start of ") + program +
           ", which cannot run, as made (its child then exited with status " +
           std::to_string(WIFEXITED(status) ? WEXITSTATUS(status) : -1) +
           "): this process cannot see a failed start, as under qemu's user mode";
}

bool MakeHardLink(const std::u16string& existing, const std::u16string& link) {
    return ::link(Bytes(existing).c_str(), Bytes(link).c_str()) == 0;
}

void CollectTree(const std::u16string& folder, std::map<std::u16string, std::string>& out) {
    Collect(Bytes(folder), u"", out);
}

void RemoveTree(const std::u16string& path) {
    RemoveBytes(Bytes(path));
}

void ScratchTest::SetUp() {
    static int counter = 0;
    const char* temporary = std::getenv("TMPDIR");
    const std::string base = temporary != nullptr && temporary[0] == '/' ? temporary : "/tmp";
    for (int attempt = 0;; ++attempt) {
        const std::string root =
            base + "/vf-fm-" + std::to_string(::getpid()) + "-" + std::to_string(++counter);
        RemoveBytes(root);
        if (::mkdir(root.c_str(), 0755) == 0) {
            root_ = FileNameBytesToText(root);
            break;
        }
        ASSERT_LT(attempt, 100) << root;
    }
}

void ScratchTest::TearDown() {
    RemoveTree(root_);
    struct stat info;
    EXPECT_NE(::lstat(Bytes(root_).c_str(), &info), 0) << "scratch folder left";
}

void ScratchTest::makeFolder(const std::u16string& relative) const {
    ASSERT_EQ(::mkdir(Bytes(path(relative)).c_str(), 0755), 0) << Narrow(relative);
}

void ScratchTest::writeFile(const std::u16string& relative, const std::string& content) const {
    std::ofstream file(Bytes(path(relative)), std::ios::binary | std::ios::trunc);
    ASSERT_TRUE(file) << Narrow(relative);
    file << content;
    file.close();
    ASSERT_TRUE(file) << Narrow(relative);
}

void ScratchTest::makeSparseFile(const std::u16string& relative, uint64_t size) const {
    const int fd = ::open(Bytes(path(relative)).c_str(), O_WRONLY | O_CREAT | O_EXCL, 0644);
    ASSERT_GE(fd, 0) << Narrow(relative);
    const bool sized = ::ftruncate(fd, static_cast<off_t>(size)) == 0;
    ::close(fd);
    ASSERT_TRUE(sized);
}

std::optional<std::string> ScratchTest::readFile(const std::u16string& relative) const {
    std::ifstream file(Bytes(path(relative)), std::ios::binary);
    struct stat info;
    if (!file || ::stat(Bytes(path(relative)).c_str(), &info) != 0 || S_ISDIR(info.st_mode)) {
        return std::nullopt;
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

bool ScratchTest::exists(const std::u16string& relative) const {
    struct stat info;
    return ::lstat(Bytes(path(relative)).c_str(), &info) == 0;
}

}  // namespace test
}  // namespace slib
