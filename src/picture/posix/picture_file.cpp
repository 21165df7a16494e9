#include "picture/picture_file.h"

#include <limits>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/replace_contents.h"

namespace slib {

std::vector<uint8_t> ReadPictureFile(const String& path, const char* missingMessage) {
    const FileManager files;
    const uint32_t kind = files.getItemKind(path);
    if (kind == ItemKind::kNone) {
        Throw(kItemNotFound, missingMessage);
    }
    if (kind == ItemKind::kFolder) {
        Throw(kBadParameter, "This is not a picture.");
    }
    return files.readFile(path, FilePosition{0, 0}, std::numeric_limits<uint64_t>::max())->bytes();
}

void WritePictureFile(const String& path, const std::vector<uint8_t>& bytes) {
    ReplaceFileContents(path.units(), bytes.data(), bytes.size(),
                        "Cannot create the target picture file");
}

}  // namespace slib
