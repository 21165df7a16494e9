// Starting a program with arguments: posix_spawn, no shell, so no argument is ever read as shell
// syntax. The program is never waited for, but a thread of ours reaps it when it ends, so no
// zombie stays in the host's process table. Every descriptor we open is O_CLOEXEC: the program
// inherits only what the host itself leaves open.

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <thread>
#include <vector>

#include "foundation/argument_lines.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/item_path.h"

extern char** environ;

namespace slib {

namespace {

constexpr char kCannotRun[] = "Cannot run the application";

// Owns a posix_spawnattr_t for the one start it is made for.
class SpawnAttributes {
  public:
    SpawnAttributes() {
        ::posix_spawnattr_init(&attributes_);
        // The host's blocked and ignored signals are its own business, not the program's.
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &all);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    const posix_spawnattr_t* get() const { return &attributes_; }

  private:
    posix_spawnattr_t attributes_;
};

}  // namespace

void FileManager::runApplication(const String& application, const String& arguments) const {
    std::vector<std::string> words{ItemPathBytes(application, kCannotRun)};
    for (const std::u16string& line : SplitArgumentLines(arguments.units())) {
        const std::optional<std::string> bytes = TextToFileNameBytes(line);
        if (!bytes) {
            Throw(kBadParameter, kCannotRun);  // a NUL cannot be passed in an argument
        }
        words.push_back(*bytes);
    }
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    const SpawnAttributes attributes;
    pid_t child = 0;
    if (::posix_spawn(&child, argv[0], nullptr, attributes.get(), argv.data(), environ) != 0) {
        Throw(kUnclassified, kCannotRun);
    }
    std::thread([child] {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
    }).detach();
}

}  // namespace slib
