// The real path queries of the Linux build, behind slib::PathSystem. Linux keeps one form of
// each name: the long form is the path itself, and no item has a short one.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_name_bytes.h"
#include "foundation/path_system.h"
#include "foundation/posix/home_folder.h"

namespace slib {

namespace {

class PosixPathSystem final : public PathSystem {
  public:
    std::u16string currentDirectory() const override {
        std::vector<char> buffer(4096);
        while (::getcwd(buffer.data(), buffer.size()) == nullptr) {
            if (errno != ERANGE) {
                return std::u16string();
            }
            buffer.resize(buffer.size() * 2);
        }
        return FileNameBytesToText(buffer.data());
    }

    std::u16string profileFolder() const override { return HomeFolder(); }

    std::optional<std::u16string> longPathName(const std::u16string& path) const override {
        const std::optional<std::string> bytes = TextToFileNameBytes(path);
        struct stat info;
        if (!bytes || ::lstat(bytes->c_str(), &info) != 0) {
            return std::nullopt;
        }
        return path;
    }

    std::optional<std::u16string> shortPathName(const std::u16string&) const override {
        return std::nullopt;
    }

    bool isExistingFolder(const std::u16string& path) const override {
        const std::optional<std::string> bytes = TextToFileNameBytes(path);
        struct stat info;
        if (!bytes || ::stat(bytes->c_str(), &info) != 0) {
            if (!bytes || errno == ENOENT || errno == ENOTDIR) {
                return false;
            }
            Throw(kPermissionDenied, "Insufficent file permissions");
        }
        return S_ISDIR(info.st_mode);
    }
};

}  // namespace

const PathSystem& DefaultPathSystem() {
    static const PosixPathSystem system;
    return system;
}

}  // namespace slib
