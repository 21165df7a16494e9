// A file's whole new contents, the same on every system: written beside it and put in its place
// only when complete.

#include "foundation/file_manager.h"
#include "foundation/replace_contents.h"

namespace slib {

uint64_t FileManager::replaceFile(const String& path, const Data& data) const {
    ReplaceFileContents(path.units(), data.bytes().data(), data.size(), "Cannot write to file");
    return data.size();
}

}  // namespace slib
