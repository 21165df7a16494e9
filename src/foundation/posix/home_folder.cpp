#include "foundation/posix/home_folder.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "foundation/exception.h"
#include "foundation/file_name_bytes.h"

namespace slib {

std::u16string HomeFolder() {
    // The account database, not $HOME: a server engine's environment is not the account's.
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    const int error = ::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found);
    if (found == nullptr || entry.pw_dir == nullptr || entry.pw_dir[0] != '/') {
        ThrowErrno("Cannot get home folder of user", error != 0 ? error : ENOENT);
    }
    std::string home = entry.pw_dir;
    while (home.size() > 1 && home.back() == '/') {
        home.pop_back();
    }
    return FileNameBytesToText(home);
}

}  // namespace slib
