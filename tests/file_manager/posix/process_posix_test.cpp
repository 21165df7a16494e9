// Starting programs on Linux, and the members a server has no use for.

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"

namespace slib {
namespace test {
namespace {

using ProcessTest = ScratchTest;

// Children of this process that have ended and not been reaped.
int ZombieChildren() {
    int zombies = 0;
    DIR* proc = ::opendir("/proc");
    while (const dirent* entry = proc != nullptr ? ::readdir(proc) : nullptr) {
        std::ifstream stat(std::string("/proc/") + entry->d_name + "/stat");
        std::string line;
        if (!std::getline(stat, line) || line.rfind(')') == std::string::npos) {
            continue;
        }
        std::istringstream fields(line.substr(line.rfind(')') + 2));
        char state = 0;
        int parent = 0;
        fields >> state >> parent;
        zombies += state == 'Z' && parent == ::getpid();
    }
    if (proc != nullptr) {
        ::closedir(proc);
    }
    return zombies;
}

// Descriptors of this process a started program inherits: those without close-on-exec.
int InheritableDescriptors() {
    int count = 0;
    DIR* folder = ::opendir("/proc/self/fd");
    while (const dirent* entry = folder != nullptr ? ::readdir(folder) : nullptr) {
        const int fd = std::atoi(entry->d_name);
        const int flags =
            entry->d_name[0] == '.' || fd == ::dirfd(folder) ? -1 : ::fcntl(fd, F_GETFD);
        count += flags >= 0 && (flags & FD_CLOEXEC) == 0;
    }
    if (folder != nullptr) {
        ::closedir(folder);
    }
    return count;
}

TEST_F(ProcessTest, EachLineIsOneArgumentAsWrittenWithNoShellBetween) {
    // The started shell is the program under test's subject, not its means: it only writes out
    // the arguments it received, one per line, and what it inherited as descriptors.
    const std::u16string record = path(u"record.txt");
    const std::u16string script =
        u"for a in \"$@\"; do printf '[%s]\\n' \"$a\"; done > \"$0\"; "
        u"ls /proc/self/fd | wc -l > \"$0.fds\"; : > \"$0.done\"";
    const std::u16string lines[] = {
        u"-c",           script, record, u"two words", u"", u"$HOME;*", u"quote\" 'single'",
        u"\u00e9t\u00e9"};
    std::u16string arguments = lines[0];
    for (size_t i = 1; i < std::size(lines); ++i) {
        arguments += u"\r" + lines[i];
    }
    const int zombiesBefore = ZombieChildren();
    manager_.runApplication(String(u"/bin/sh"), String(arguments));
    // Not waited for by the code under test: the bound is only reached when nothing started.
    for (int i = 0; i < 600 && !exists(u"record.txt.done"); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ASSERT_TRUE(exists(u"record.txt.done"));
    EXPECT_EQ(readFile(u"record.txt"),
              "[two words]\n[]\n[$HOME;*]\n[quote\" 'single']\n[\xc3\xa9t\xc3\xa9]\n");
    // What the test process leaves inheritable (stdin, stdout, stderr, whatever its runner
    // passed on) and the one ls opens to list them: nothing the manager opened.
    EXPECT_EQ(readFile(u"record.txt.fds"), std::to_string(InheritableDescriptors() + 1) + "\n");
    int zombies = ZombieChildren();
    for (int i = 0; i < 600 && zombies > zombiesBefore; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        zombies = ZombieChildren();
    }
    EXPECT_EQ(zombies, zombiesBefore) << "the ended program was never reaped";
}

TEST_F(ProcessTest, AProgramThatCannotStartIsReported) {
    const std::string unseen = WhyFailedStartsLookMade();
    if (!unseen.empty()) {
        GTEST_SKIP() << unseen;
    }
    writeFile(u"not-a-program", "just text");
    for (const std::u16string& program : {path(u"missing"), path(u"not-a-program"), path(u"")}) {
        EXPECT_EQ(FailureOf([&] { manager_.runApplication(String(program), String(u"x")); }),
                  Failure(kUnclassified, "Cannot run the application"))
            << Narrow(program);
    }
}

TEST(ServerMembers, AnswerADefinedErrorBeforeTouchingAnything) {
    const FileManager manager;
    const String any(u"/tmp");
    const std::string noDesktop =
        Failure(kUnclassified, "No interactive desktop to show the dialog on");
    const std::string mounts =
        Failure(kUnclassified, "On the server, the administrator mounts network shares");
    const struct {
        const char* name;
        std::function<void()> call;
        std::string failure;
    } cases[] = {
        {"openFile", [&] { manager.openFile(any); }, noDesktop},
        {"openFileWithApplication", [&] { manager.openFileWithApplication(any, any); }, noDesktop},
        {"revealItem", [&] { manager.revealItem(any); }, noDesktop},
        {"chooseFiles", [&] { manager.chooseFiles(true, nullptr, nullptr, nullptr); }, noDesktop},
        {"chooseFolder", [&] { manager.chooseFolder(nullptr, nullptr); }, noDesktop},
        {"chooseSaveFile", [&] { manager.chooseSaveFile(nullptr, nullptr); }, noDesktop},
        {"choose a file", [&] { manager.choose(CreateKind::kFile, false, nullptr, nullptr, {}); },
         noDesktop},
        {"choose an unknown kind",
         [&] { manager.choose(CreateKind::kUnknown, false, nullptr, nullptr, {}); },
         Failure(kBadParameter, "Wrong parameter")},
        {"mountVolume", [&] { manager.mountVolume(any, nullptr, nullptr, nullptr); }, mounts},
        {"unmountVolume", [&] { manager.unmountVolume(any); }, mounts},
        {"listVolumes", [&] { manager.listVolumes(); }, mounts},
        {"toShortPath", [&] { manager.toShortPath(any); },
         Failure(kUnclassified, "Linux has no short path form")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FailureOf(c.call), c.failure) << c.name;
    }
    // Host paths are told from native ones by this question: it answers, never fails.
    EXPECT_FALSE(manager.isMountedVolume(String(u"C:")));
}

}  // namespace
}  // namespace test
}  // namespace slib
