#include "safety/posix/safety_scratch.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

#include "foundation/file_name_bytes.h"
#include "foundation/posix/unique_fds.h"

namespace safety_test {

void SafetyTest::TearDown() {
    if (!volumeFolder_.empty()) {
        slib::test::RemoveTree(volumeFolder_);
    }
    if (!mounted_.empty()) {
        ::umount2(mounted_.c_str(), MNT_DETACH);
    }
    items_test::ItemsTest::TearDown();
}

std::string SafetyTest::bytes(const std::u16string& relative) const {
    return slib::TextToFileNameBytes(path(relative)).value();
}

void SafetyTest::makeLink(const std::u16string& relative, const std::string& leadsTo) const {
    ASSERT_EQ(::symlink(leadsTo.c_str(), bytes(relative).c_str()), 0) << std::strerror(errno);
}

bool SafetyTest::modesRefuse() {
    writeFile(u"mode probe", "");
    ::chmod(bytes(u"mode probe").c_str(), 0444);
    const slib::UniqueFd probe(::open(bytes(u"mode probe").c_str(), O_WRONLY | O_CLOEXEC));
    const bool refused = !probe.valid();
    ::unlink(bytes(u"mode probe").c_str());
    return refused;
}

std::optional<std::u16string> SafetyTest::smallVolume(std::string& why) {
    if (const char* given = getenv("VF_TEST_SMALL_VOLUME")) {
        volumeFolder_ =
            slib::FileNameBytesToText(std::string(given) + "/native-" + std::to_string(::getpid()));
        slib::test::RemoveTree(volumeFolder_);
        if (::mkdir(slib::TextToFileNameBytes(volumeFolder_).value().c_str(), 0755) != 0) {
            why = "cannot make a folder on VF_TEST_SMALL_VOLUME (" + std::string(given) +
                  "): " + std::strerror(errno);
            volumeFolder_.clear();
            return std::nullopt;
        }
        return volumeFolder_;
    }
    makeFolder(u"small volume");
    if (::mount("tmpfs", bytes(u"small volume").c_str(), "tmpfs", 0, "size=3m") != 0) {
        why = std::string("no VF_TEST_SMALL_VOLUME given and no tmpfs can be mounted here: ") +
              std::strerror(errno);
        return std::nullopt;
    }
    mounted_ = bytes(u"small volume");
    return path(u"small volume");
}

void SafetyTest::FillVolume(const std::u16string& folder) {
    const std::string filler = slib::TextToFileNameBytes(folder + u"/filler").value();
    const slib::UniqueFd file(::open(filler.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    ASSERT_TRUE(file.valid());
    const std::vector<char> block(4096, 'f');
    while (::write(file.get(), block.data(), block.size()) == static_cast<ssize_t>(block.size())) {
    }
    // Then byte by byte, up to the very last block.
    while (::write(file.get(), "f", 1) == 1) {
    }
}

void SafetyTest::killPartWay(const std::u16string& calculation, int delayMs) {
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const slib::UniqueFd readEnd(ready[0]);
    const slib::UniqueFd writeEnd(ready[1]);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        (void)!::write(writeEnd.get(), "!", 1);
        host_.Evaluate(calculation);
        ::_exit(0);
    }
    char go = 0;
    ASSERT_EQ(::read(readEnd.get(), &go, 1), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
}

std::string SafetyTest::codeOf(const std::u16string& calculation) {
    const std::string outcome = call(calculation);
    return outcome.substr(0, outcome.find(" | "));
}

}  // namespace safety_test
