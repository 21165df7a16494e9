#pragma once
// Test support for the Linux bodies: each test gets its own folder under /tmp, removed with
// everything in it afterwards, plus helpers to lay out and look at files without going through
// the code under test, and a small volume of its own for the full-disk cases.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/utf16_string.h"

namespace posix_test {

std::u16string Text(const std::string& utf8);

// "" when `action` returns normally, else "<code> <message>" of the slib::Exception it threw.
std::string FailureOf(const std::function<void()>& action);

// Runs `work` in a child process and kills it (SIGKILL) `delayMs` after it began, as a crash or
// an administrator's kill ends the server; returns once the child is gone.
void KillPartWay(int delayMs, const std::function<void()>& work);

class PosixScratchTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    std::string path(const std::string& relative) const { return root_ + "/" + relative; }
    slib::String at(const std::string& relative) const {
        return slib::String(Text(path(relative)));
    }

    void makeFolder(const std::string& relative, mode_t mode = 0755) const;
    void writeFile(const std::string& relative, const std::string& content,
                   mode_t mode = 0644) const;
    void makeLink(const std::string& relative, const std::string& leadsTo) const;
    std::optional<std::string> readFile(const std::string& relative) const;
    bool exists(const std::string& relative) const;  // the item itself, a link not followed
    mode_t modeOf(const std::string& relative) const;
    // Everything below `relative`: path to "<dir>", "<link>" or the content.
    std::map<std::string, std::string> snapshot(const std::string& relative = "") const;

    // Mounts a tmpfs of `kilobytes` at `relative`; false (and the reason in `why`) when this
    // process may not mount.
    bool mountSmallVolume(const std::string& relative, int kilobytes, std::string& why);

    std::string root_;
    std::string mounted_;
    slib::FileManager manager_;
};

}  // namespace posix_test
