// Starting a program with arguments, never waited for. A grandchild runs it, so it never stays a
// zombie of the host's process and is not the host's to reap; a close-on-exec pipe tells whether
// its exec worked. Any failure is 2400 "Cannot run the application", as on Windows. Between fork
// and exec only async-signal-safe calls are made: everything the children need is built before.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "foundation/argument_lines.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/posix/unique_fds.h"
#include "foundation/utf_conversion.h"

namespace slib {

namespace {

constexpr char kCannotRun[] = "Cannot run the application";

[[noreturn]] void ExecGrandchild(const char* program, char* const* argv, int report) {
    const pid_t grandchild = fork();
    if (grandchild == 0) {
        execv(program, argv);
        const int error = errno;
        (void)!write(report, &error, sizeof(error));
        _exit(127);
    }
    if (grandchild < 0) {
        const int error = errno;
        (void)!write(report, &error, sizeof(error));
    }
    _exit(0);
}

}  // namespace

void FileManager::runApplication(const String& application, const String& arguments) const {
    const std::string program = Utf16ToUtf8(application.units());
    std::vector<std::string> words{program};
    for (const std::u16string& line : ArgumentLines(arguments.units())) {
        words.push_back(Utf16ToUtf8(line));
    }
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        Throw(kUnclassified, kCannotRun);
    }
    UniqueFd reader(ends[0]);
    UniqueFd writer(ends[1]);
    const pid_t child = fork();
    if (child < 0) {
        Throw(kUnclassified, kCannotRun);
    }
    if (child == 0) {
        ExecGrandchild(program.c_str(), argv.data(), writer.get());
    }
    writer.reset();
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    // Nothing to read: the exec closed the pipe, the program runs.
    int error = 0;
    ssize_t got = 0;
    while ((got = read(reader.get(), &error, sizeof(error))) < 0 && errno == EINTR) {
    }
    if (got > 0) {
        Throw(kUnclassified, kCannotRun);
    }
}

}  // namespace slib
