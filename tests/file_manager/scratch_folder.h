#pragma once
// Test support: each test gets its own folder under the system's temporary folder, removed with
// everything in it afterwards, plus helpers to lay out files, to catch the manager's failures and
// to watch what the shell actions start. Relative paths are written with "\\" on every system;
// the POSIX body turns them into "/". scratch_folder.cpp is shared, windows/ and posix/ hold
// each system's bodies (tests/CMakeLists.txt: VF_SCRATCH_SOURCES).

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace test {

// The native separator, and the whole tree below `folder` as relative paths joined by "\\":
// "<dir>" for folders, "<link>" for symbolic links, "" for files.
extern const char16_t kSeparator;
void CollectTree(const std::u16string& folder, std::map<std::u16string, std::string>& out);

// Windows bodies only.
std::u16string FromWide(const wchar_t* text);
const wchar_t* Wide(const std::u16string& text);
// The path of a file built beside the running test program.
std::u16string BesideProgram(const std::u16string& name);
// A second name `link` for the existing file `existing`; false where the file system has none.
bool MakeHardLink(const std::u16string& existing, const std::u16string& link);

std::string Narrow(const std::u16string& text);
std::u16string Quote(const std::u16string& text);  // in double quotes, nothing escaped

// Removes a file or a whole tree (through the long-path form on Windows), whatever its depth,
// never following a link. Test-side only, so cleanup never depends on the code under test.
void RemoveTree(const std::u16string& path);

// Whether this system's shell merges a folder moved into a folder that holds one of the same
// name, tried in the folder `probe` (made and removed again); Wine's reports success and leaves
// both untouched.
bool ShellMergesMovedFolders(const std::u16string& probe);

// "" where starting a program that cannot run fails the call that starts it, else what shows it
// does not: under qemu's user mode, posix_spawn's vfork runs as a fork and the failed exec stays
// in the child, so the start looks made.
std::string WhyFailedStartsLookMade();

// The exception `action` throws, or none when it returns normally.
std::optional<Exception> Caught(const std::function<void()>& action);
// "" when `action` returns normally, else Failure() of the slib::Exception it threw.
std::string FailureOf(const std::function<void()>& action);
std::string Failure(int32_t code, const std::string& message);  // "<code> <message>"

// Waits for a visible folder window titled `title` of another process, then closes it again.
::testing::AssertionResult FolderWindowOpensAndCloses(const std::u16string& title);

class ScratchTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Absolute path of `relative` inside the scratch folder.
    std::u16string path(const std::u16string& relative) const;
    String at(const std::u16string& relative) const { return String(path(relative)); }

    void makeFolder(const std::u16string& relative) const;
    void writeFile(const std::u16string& relative, const std::string& content) const;
    // A file of `size` bytes that takes no room on the disk.
    void makeSparseFile(const std::u16string& relative, uint64_t size) const;
    // Content of a file (any depth); nullopt when it cannot be opened.
    std::optional<std::string> readFile(const std::u16string& relative) const;
    bool exists(const std::u16string& relative) const;
    // Everything below `relative` (default: the whole scratch folder): relative path to "<dir>"
    // for folders and to the content for files.
    std::map<std::u16string, std::string> snapshot(const std::u16string& relative = u"") const;

    // Copies the command-line recorder to "app dir\rec order.exe" (spaces show the quoting at
    // work) and has it write to record.txt here; returns the copy's path.
    std::u16string installRecorder();
    // The command line the recorder was started with, removing the record for the next start;
    // none when no program started.
    std::optional<std::u16string> recorded() const;

    std::u16string root_;
    FileManager manager_;
};

}  // namespace test
}  // namespace slib
