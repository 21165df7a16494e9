// Starting programs: a file in a chosen application, or an application with arguments. The new
// process is never waited for; only its start is checked.

#include <windows.h>

#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"

namespace slib {

namespace {

// Starts `commandLine` with the caller's environment and folder; false when it cannot start.
bool StartProcess(const std::u16string& commandLine) {
    // CreateProcessW may write into its command line: give it a private, writable copy.
    std::vector<wchar_t> line(commandLine.begin(), commandLine.end());
    line.push_back(L'\0');
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
        return false;
    }
    // Closing our handles does not stop the program; we keep nothing of it.
    const UniqueHandle processHandle(process.hProcess);
    const UniqueHandle threadHandle(process.hThread);
    return true;
}

// The lines of `text` split at carriage returns; an empty text has none.
std::vector<std::u16string> SplitLines(const std::u16string& text) {
    std::vector<std::u16string> lines;
    if (text.empty()) {
        return lines;
    }
    size_t start = 0;
    for (;;) {
        const size_t end = text.find(u'\r', start);
        lines.push_back(text.substr(start, end - start));
        if (end == std::u16string::npos) {
            return lines;
        }
        start = end + 1;
    }
}

}  // namespace

void FileManager::openFileWithApplication(const String& file, const String& application) const {
    const std::u16string commandLine =
        u"\"" + application.units() + u"\" \"" + file.units() + u"\"";
    if (!StartProcess(commandLine)) {
        Throw(kUnclassified, "Cannot open file in the given application");
    }
}

void FileManager::runApplication(const String& application, const String& arguments) const {
    // Every argument gets backslash escapes, whatever rules the program splits its line by.
    std::u16string commandLine = u"\"" + application.units() + u"\"";
    for (const std::u16string& argument : SplitLines(arguments.units())) {
        commandLine += escapeForCommandLine(String(argument))->units();
    }
    if (!StartProcess(commandLine)) {
        Throw(kUnclassified, "Cannot run the application");
    }
}

}  // namespace slib
