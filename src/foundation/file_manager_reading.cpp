// The reads built on readFile, the same on every system.

#include "foundation/file_manager.h"
#include "foundation/mime_sniffing.h"
#include "foundation/path_style.h"

namespace slib {

std::shared_ptr<const Data> FileManager::readWholeFile(const String& path) const {
    return readFile(path, FilePosition{0, 0}, kReadToEnd);
}

std::string FileManager::getMimeType(const String& path) const {
    const size_t separator = LastSeparator(path.units(), NativePathStyle());
    const std::u16string name =
        separator == std::u16string::npos ? path.units() : path.units().substr(separator + 1);
    const std::shared_ptr<const Data> head = readFile(path, FilePosition{0, 0}, kMimeSniffLength);
    return SniffMimeType(head->bytes().data(), head->size(), name);
}

}  // namespace slib
