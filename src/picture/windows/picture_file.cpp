#include "picture/picture_file.h"

#include <algorithm>
#include <limits>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace {

constexpr DWORD kChunk = 1u << 30;

}  // namespace

std::vector<uint8_t> ReadPictureFile(const String& path, const char* missingMessage) {
    const uint32_t kind = FileManager().getItemKind(path);
    if (kind == ItemKind::kNone) {
        Throw(kItemNotFound, missingMessage);
    }
    if (kind == ItemKind::kFolder) {
        Throw(kBadParameter, "This is not a picture.");
    }
    const std::u16string longPath = WithLongPathPrefix(path.units());
    UniqueFileHandle file = OpenShared(longPath, GENERIC_READ, FileUse::kRead, OPEN_EXISTING,
                                       FILE_FLAG_SEQUENTIAL_SCAN);
    if (!file) {
        ThrowLastError("Cannot open the picture file", GetLastError());
    }
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.get(), &size)) {
        ThrowLastError("Cannot open the picture file", GetLastError());
    }
    if (static_cast<uint64_t>(size.QuadPart) > std::numeric_limits<size_t>::max() / 2) {
        Throw(kUnclassified, "The picture file is too large");
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(size.QuadPart));
    size_t done = 0;
    while (done < bytes.size()) {
        const DWORD want = static_cast<DWORD>(std::min<size_t>(bytes.size() - done, kChunk));
        DWORD got = 0;
        if (!ReadFile(file.get(), bytes.data() + done, want, &got, nullptr)) {
            ThrowLastError("Cannot read the picture file", GetLastError());
        }
        if (got == 0) {
            bytes.resize(done);  // the file shrank while we read it
            break;
        }
        done += got;
    }
    return bytes;
}

void WritePictureFile(const String& path, const std::vector<uint8_t>& bytes) {
    ReplaceFileContents(path.units(), bytes.data(), bytes.size(),
                        "Cannot create the target picture file");
}

}  // namespace slib
