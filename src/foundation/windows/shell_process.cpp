// Starting programs: a file in a chosen application, or an application with arguments. The new
// process is never waited for; only its start is checked. Opening a file is for someone at the
// screen and needs a desktop; running a program does not (a command-line tool on a server is a
// real use, and one with windows runs unseen there).

#include <windows.h>

#include <vector>

#include "foundation/argument_lines.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/path_normal_form.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/interactive_desktop.h"

namespace slib {

namespace {

// Starts `program` with `arguments` after its own name on the command line, with the caller's
// environment and folder; false when it cannot start. The program is named by its long form, as
// every other item is: a path past MAX_PATH works and no search or ".exe" guess picks another
// file. The program still reads its name as the plain path.
bool StartProcess(const String& program, const std::u16string& arguments) {
    const std::u16string commandLine = u"\"" + program.units() + u"\"" + arguments;
    // CreateProcessW may write into its command line: give it a private, writable copy.
    std::vector<wchar_t> line(commandLine.begin(), commandLine.end());
    line.push_back(L'\0');
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(Wide(WithLongPathPrefix(program.units())), line.data(), nullptr, nullptr,
                        FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    // Closing our handles does not stop the program; we keep nothing of it.
    const UniqueHandle processHandle(process.hProcess);
    const UniqueHandle threadHandle(process.hThread);
    return true;
}

}  // namespace

void FileManager::openFileWithApplication(const String& file, const String& application) const {
    file_manager_detail::RequireInteractiveDesktop();
    if (!StartProcess(application, u" \"" + file.units() + u"\"")) {
        Throw(kUnclassified, "Cannot open file in the given application");
    }
}

void FileManager::runApplication(const String& application, const String& arguments) const {
    // Every argument gets backslash escapes, whatever rules the program splits its line by.
    std::u16string line;
    for (const std::u16string& argument : SplitArgumentLines(arguments.units())) {
        line += escapeForCommandLine(String(argument))->units();
    }
    if (!StartProcess(application, line)) {
        Throw(kUnclassified, "Cannot run the application");
    }
}

}  // namespace slib
