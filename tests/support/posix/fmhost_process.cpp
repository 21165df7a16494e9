// The Linux fmhost as a child process: started directly (no shell), its standard output and
// error read together so that neither pipe fills and stalls it.

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>

#include "foundation/posix/unique_fds.h"
#include "support/fmhost_process.h"

extern char** environ;

namespace vf::test {

namespace {

struct Pipe {
    slib::UniqueFd read;
    slib::UniqueFd write;
};

bool MakePipe(Pipe& pipe) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return false;
    }
    pipe.read.reset(ends[0]);
    pipe.write.reset(ends[1]);
    return true;
}

std::vector<std::string> ChildEnvironment(const ProcessOptions& options) {
    std::vector<std::string> environment;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string text = *entry;
        bool replaced = false;
        for (const auto& [name, value] : options.environment) {
            replaced = replaced || text.rfind(name + "=", 0) == 0;
        }
        if (!replaced) {
            environment.push_back(text);
        }
    }
    for (const auto& [name, value] : options.environment) {
        environment.push_back(name + "=" + value);
    }
    return environment;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Writes `input` and reads both outputs until the child has closed them.
void Exchange(Pipe& in, Pipe& out, Pipe& err, const std::string& input, ProcessResult& result) {
    size_t sent = 0;
    if (input.empty()) {
        in.write.reset();
    }
    while (out.read.valid() || err.read.valid()) {
        pollfd watched[3] = {
            {out.read.get(), POLLIN, 0}, {err.read.get(), POLLIN, 0}, {in.write.get(), POLLOUT, 0}};
        if (::poll(watched, 3, -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            return;
        }
        const std::pair<Pipe*, std::string*> reads[] = {{&out, &result.out}, {&err, &result.err}};
        for (int i = 0; i < 2; ++i) {
            if (watched[i].revents == 0) {
                continue;
            }
            char buffer[65536];
            const ssize_t got = ::read(reads[i].first->read.get(), buffer, sizeof buffer);
            if (got > 0) {
                reads[i].second->append(buffer, static_cast<size_t>(got));
            } else if (got == 0 || errno != EINTR) {
                reads[i].first->read.reset();
            }
        }
        if (watched[2].revents != 0) {
            const ssize_t put = ::write(in.write.get(), input.data() + sent, input.size() - sent);
            sent += put > 0 ? static_cast<size_t>(put) : 0;
            if (put < 0 || sent == input.size()) {
                in.write.reset();
            }
        }
    }
}

}  // namespace

ProcessResult RunProcess(const std::string& exe, const std::vector<std::string>& args,
                         const ProcessOptions& options) {
    ProcessResult result;
    Pipe in, out, err;
    if (!MakePipe(in) || !MakePipe(out) || !MakePipe(err)) {
        return result;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.read.get(), 0);
    posix_spawn_file_actions_adddup2(&actions, out.write.get(), 1);
    posix_spawn_file_actions_adddup2(&actions, err.write.get(), 2);
    if (!options.workingDirectory.empty()) {
        posix_spawn_file_actions_addchdir_np(&actions, options.workingDirectory.c_str());
    }
    // A cross build's programs run through its emulator (VF_TEST_EMULATOR, set by CTest).
    const char* emulator = std::getenv("VF_TEST_EMULATOR");
    std::vector<std::string> argv;
    if (emulator != nullptr && *emulator != '\0') {
        argv.push_back(emulator);
    }
    argv.push_back(exe);
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<std::string> environment = ChildEnvironment(options);
    pid_t child = 0;
    const int started = ::posix_spawn(&child, argv.front().c_str(), &actions, nullptr,
                                      Pointers(argv).data(), Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    in.read.reset();
    out.write.reset();
    err.write.reset();
    if (started != 0) {
        return result;
    }
    // A child that stops reading its input must not end this process.
    ::signal(SIGPIPE, SIG_IGN);
    Exchange(in, out, err, options.input, result);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

ProcessResult RunFmhost(const std::vector<std::string>& args, const ProcessOptions& options) {
    return RunProcess(BesideTest("fmhost"), args, options);
}

std::string BesideTest(const std::string& fileName) {
    char self[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
    if (length <= 0) {
        return fileName;
    }
    const std::string program(self, static_cast<size_t>(length));
    return program.substr(0, program.rfind('/') + 1) + fileName;
}

}  // namespace vf::test
