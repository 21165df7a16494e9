#include "foundation/posix/system_path.h"

<<<<<<< HEAD
#include <cerrno>

#include "foundation/exception.h"
=======
>>>>>>> linux-items
#include "foundation/file_name_bytes.h"

namespace slib {

std::optional<std::string> SystemPath(const std::u16string& path) {
    return TextToFileNameBytes(path);
}

std::string SystemPath(const String& path, const char* message) {
    std::optional<std::string> bytes = SystemPath(path.units());
    if (!bytes || bytes->empty()) {
        ThrowErrno(message, EINVAL);
    }
    return *bytes;
}

std::string FolderOf(const std::string& path) {
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos) {
        return ".";
    }
    return separator == 0 ? "/" : path.substr(0, separator);
<<<<<<< HEAD
}

PathParts SplitPath(const std::string& path) {
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/') {
        trimmed.pop_back();
    }
    const size_t slash = trimmed.rfind('/');
    PathParts parts;
    if (slash == std::string::npos) {
        parts = {".", trimmed};
    } else {
        parts = {slash == 0 ? "/" : trimmed.substr(0, slash), trimmed.substr(slash + 1)};
    }
    if (parts.name == "." || parts.name == "..") {
        parts.name.clear();
    }
    return parts;
=======
>>>>>>> linux-items
}

}  // namespace slib
