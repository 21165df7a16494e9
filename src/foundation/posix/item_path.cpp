#include "foundation/posix/item_path.h"

#include <cerrno>
#include <optional>

#include "foundation/exception.h"
#include "foundation/posix/system_path.h"

namespace slib {

std::string ItemPathBytes(const String& path, const char* message) {
    const std::optional<std::string> bytes = SystemPath(path.units());
    if (!bytes || bytes->empty()) {
        ThrowErrno(message, EINVAL);
    }
    return *bytes;
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
}

}  // namespace slib
