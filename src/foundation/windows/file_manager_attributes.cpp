// Item dates and free space; the attribute-id dispatch is shared (../file_manager_attributes.cpp)
// and the security attributes are in file_manager_security.cpp.

#include <windows.h>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/item_dates.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/file_sharing.h"
#include "foundation/windows/local_file_time.h"

namespace slib {

using file_manager_detail::Wide;

namespace {

std::shared_ptr<Object> ItemDateAt(const std::u16string& longPath, uint32_t id) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Wide(longPath), GetFileExInfoStandard, &data)) {
        ThrowLastError("Cannot get item attributes", GetLastError());
    }
    std::shared_ptr<Date> date = FileTimeToLocalDate(
        id == AttributeId::kCreated ? data.ftCreationTime : data.ftLastWriteTime);
    if (!date) {
        ThrowLastError("Cannot get item attributes", GetLastError());
    }
    return date;
}

constexpr char kUnstorableDate[] = "The file cannot keep this date";

uint64_t Ticks(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

const FILETIME& TimeOf(const WIN32_FILE_ATTRIBUTE_DATA& data, uint32_t id) {
    return id == AttributeId::kCreated ? data.ftCreationTime : data.ftLastWriteTime;
}

// Whether the volume keeps `time` as set: file systems round (FAT to two seconds) and some stop
// at a year far short of the file time's range (ext4 at 2446).
bool KeptAsSet(const std::u16string& longPath, uint32_t id, const FILETIME& time) {
    constexpr uint64_t kRounding = 2 * Date::kFileTimeTicksPerSecond;
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(Wide(longPath), GetFileExInfoStandard, &data)) {
        return false;
    }
    const uint64_t kept = Ticks(TimeOf(data, id));
    const uint64_t asked = Ticks(time);
    return (kept > asked ? kept - asked : asked - kept) <= kRounding;
}

// Removes a file this call created once its handle is closed, when the date could not be kept.
struct CreatedFileCleanup {
    std::u16string longPath;
    bool remove = false;
    ~CreatedFileCleanup() {
        if (remove) {
            DeleteFileW(Wide(longPath));
        }
    }
};

// Opens the item as a file (so a missing one is created empty, and a folder is refused) and sets
// one of its times. The date is converted first: a date without a file time creates nothing. The
// time is read back: one the volume cannot keep is refused, and the old time (or the absence of
// the file) restored.
void SetDate(const String& path, uint32_t id, const Object& value) {
    const char* message = id == AttributeId::kCreated ? "Cannot modify file creation date"
                                                      : "Cannot modify file modification date";
    const auto* date = dynamic_cast<const Date*>(&value);
    if (date == nullptr) {
        Throw(kBadParameter, message);
    }
    const std::optional<FILETIME> time = LocalDateToFileTime(*date);
    if (!time) {
        Throw(kBadParameter, kUnstorableDate);
    }
    const std::u16string longPath = WithLongPathPrefix(path.units());
    WIN32_FILE_ATTRIBUTE_DATA before{};
    const bool existed = GetFileAttributesExW(Wide(longPath), GetFileExInfoStandard, &before);
    CreatedFileCleanup cleanup{longPath};
    // Times only: a read-only file, or one another program has open, still takes a date.
    const UniqueFileHandle file =
        OpenShared(longPath, FILE_WRITE_ATTRIBUTES, FileUse::kAttributes, OPEN_ALWAYS);
    if (!file.valid()) {
        ThrowLastError(message, GetLastError());
    }
    const bool creation = id == AttributeId::kCreated;
    if (!SetFileTime(file.get(), creation ? &*time : nullptr, nullptr,
                     creation ? nullptr : &*time)) {
        cleanup.remove = !existed;
        ThrowLastError(message, GetLastError());
    }
    if (!KeptAsSet(longPath, id, *time)) {
        const FILETIME& old = TimeOf(before, id);
        if (existed) {
            SetFileTime(file.get(), creation ? &old : nullptr, nullptr, creation ? nullptr : &old);
        }
        cleanup.remove = !existed;
        Throw(kBadParameter, kUnstorableDate);
    }
}

}  // namespace

std::shared_ptr<Object> file_manager_detail::GetItemDate(const String& path, uint32_t id) {
    return ItemDateAt(WithLongPathPrefix(path.units()), id);
}

void file_manager_detail::SetItemDate(const String& path, uint32_t id, const Object& value) {
    SetDate(path, id, value);
}

uint64_t FileManager::getFreeSpace(const String& path) const {
    // The call wants a folder ending in "\" (a UNC one must); a file's volume is its folder's.
    const std::u16string longPath = WithLongPathPrefix(path.units());
    const std::u16string folder = longPath.back() == u'\\' ? longPath : longPath + u'\\';
    ULARGE_INTEGER availableToCaller;
    if (GetDiskFreeSpaceExW(Wide(folder), &availableToCaller, nullptr, nullptr)) {
        return availableToCaller.QuadPart;
    }
    const DWORD error = GetLastError();
    const size_t separator = longPath.find_last_of(u'\\');
    const DWORD attributes = GetFileAttributesW(Wide(longPath));
    const bool isFile =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isFile && separator != std::u16string::npos &&
        GetDiskFreeSpaceExW(Wide(longPath.substr(0, separator + 1)), &availableToCaller, nullptr,
                            nullptr)) {
        return availableToCaller.QuadPart;
    }
    ThrowLastError("Cannot get free disk space", error);
}

}  // namespace slib
