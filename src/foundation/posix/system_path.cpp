#include "foundation/posix/system_path.h"

#include "foundation/file_name_bytes.h"

namespace slib {

std::optional<std::string> SystemPath(const std::u16string& path) {
    return TextToFileNameBytes(path);
}

std::string FolderOf(const std::string& path) {
    const size_t separator = path.rfind('/');
    if (separator == std::string::npos) {
        return ".";
    }
    return separator == 0 ? "/" : path.substr(0, separator);
}

}  // namespace slib
