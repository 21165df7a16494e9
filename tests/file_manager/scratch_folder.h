#pragma once
// Test support: each test gets its own folder under the system's temporary folder, removed with
// everything in it afterwards, plus helpers to lay out files and to catch the manager's failures.

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "foundation/exception.h"
#include "foundation/utf16_string.h"
#include "foundation/windows/file_manager.h"

namespace slib {
namespace test {

std::u16string FromWide(const wchar_t* text);
const wchar_t* Wide(const std::u16string& text);
std::string Narrow(const std::u16string& text);

// Removes a file or a whole tree through the long-path form, whatever its depth. Test-side only,
// so cleanup never depends on the code under test.
void RemoveTree(const std::u16string& path);

// The exception `action` throws, or none when it returns normally.
std::optional<Exception> Caught(const std::function<void()>& action);

// Passes when `action` throws an slib::Exception with exactly this code and message.
::testing::AssertionResult FailsWith(const std::function<void()>& action, int32_t code,
                                     const char* message);

class ScratchTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Absolute path of `relative` inside the scratch folder.
    std::u16string path(const std::u16string& relative) const;
    String at(const std::u16string& relative) const { return String(path(relative)); }

    void makeFolder(const std::u16string& relative) const;
    void writeFile(const std::u16string& relative, const std::string& content) const;
    // Content of a file (any depth); nullopt when it cannot be opened.
    std::optional<std::string> readFile(const std::u16string& relative) const;
    bool exists(const std::u16string& relative) const;
    // Everything below `relative` (default: the whole scratch folder): relative path to "<dir>"
    // for folders and to the content for files.
    std::map<std::u16string, std::string> snapshot(const std::u16string& relative = u"") const;

    std::u16string root_;
    FileManager manager_;
};

}  // namespace test
}  // namespace slib
