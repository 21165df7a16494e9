#include "picture/windows/picture_file.h"

#include <algorithm>
#include <limits>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/windows/file_manager.h"
#include "foundation/windows/unique_handles.h"

namespace slib {
namespace {

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

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
    UniqueFileHandle file(CreateFileW(Wide(longPath), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
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
    // Written beside the target and then moved over it, so a failed write never costs the
    // file that was there before.
    const std::u16string longPath = WithLongPathPrefix(path.units());
    const std::u16string partial = longPath + u".vf-partial";
    {
        UniqueFileHandle file(CreateFileW(Wide(partial), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) {
            ThrowLastError("Cannot create the target picture file", GetLastError());
        }
        size_t done = 0;
        while (done < bytes.size()) {
            const DWORD want = static_cast<DWORD>(std::min<size_t>(bytes.size() - done, kChunk));
            DWORD wrote = 0;
            if (!WriteFile(file.get(), bytes.data() + done, want, &wrote, nullptr) || wrote == 0) {
                const DWORD error = GetLastError();
                file.reset();
                DeleteFileW(Wide(partial));
                ThrowLastError("Cannot write the target picture file", error);
            }
            done += wrote;
        }
    }
    if (!MoveFileExW(Wide(partial), Wide(longPath), MOVEFILE_REPLACE_EXISTING)) {
        const DWORD error = GetLastError();
        DeleteFileW(Wide(partial));
        ThrowLastError("Cannot create the target picture file", error);
    }
}

}  // namespace slib
