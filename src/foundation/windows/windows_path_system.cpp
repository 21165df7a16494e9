// The real path queries of the Windows build, behind slib::PathSystem.

#include <shlobj.h>
#include <shlwapi.h>
#include <windows.h>

#include <optional>
#include <string>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/path_normal_form.h"
#include "foundation/path_system.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

std::u16string FromWide(const wchar_t* text, size_t length) {
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

// Runs a Win32 "fill this buffer, or tell me the size you need" query. `query` returns the
// length written (less than the buffer), the size needed (including the terminator), or 0.
template <typename Query>
std::optional<std::u16string> QueryGrowingBuffer(Query query) {
    std::u16string buffer(MAX_PATH, u'\0');
    for (int attempt = 0; attempt < 3; ++attempt) {
        const DWORD capacity = static_cast<DWORD>(buffer.size());
        const DWORD length = query(reinterpret_cast<wchar_t*>(buffer.data()), capacity);
        if (length == 0) {
            return std::nullopt;
        }
        if (length < capacity) {
            buffer.resize(length);
            return buffer;
        }
        buffer.assign(length, u'\0');  // the path changed size between calls: try again
    }
    return std::nullopt;
}

// The name queries take the prefix, but answer in the form they were asked in: below MAX_PATH
// they are asked in the plain normal form, which every system version expands reliably.
std::u16string SystemForm(const std::u16string& path) {
    const std::u16string normal = NormalizePath(path);
    return normal.size() < MAX_PATH ? normal : WithLongPathPrefix(normal);
}

// The queries answer in the prefixed form they were asked in; results are plain paths.
std::optional<std::u16string> PlainForm(const std::optional<std::u16string>& path) {
    if (!path) {
        return std::nullopt;
    }
    return NormalizePath(*path);
}

class WindowsPathSystem final : public PathSystem {
  public:
    std::u16string currentDirectory() const override {
        return QueryGrowingBuffer([](wchar_t* buffer, DWORD capacity) {
                   return GetCurrentDirectoryW(capacity, buffer);
               })
            .value_or(std::u16string());
    }

    std::u16string profileFolder() const override {
        wchar_t buffer[MAX_PATH] = {};
        const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_PROFILE, nullptr, 0, buffer);
        if (result != S_OK) {
            ThrowHResult("Cannot get home folder of user", static_cast<int32_t>(result));
        }
        return FromWide(buffer, wcslen(buffer));
    }

    std::optional<std::u16string> longPathName(const std::u16string& path) const override {
        return PlainForm(QueryGrowingBuffer([&path](wchar_t* buffer, DWORD capacity) {
            return GetLongPathNameW(Wide(SystemForm(path)), buffer, capacity);
        }));
    }

    std::optional<std::u16string> shortPathName(const std::u16string& path) const override {
        return PlainForm(QueryGrowingBuffer([&path](wchar_t* buffer, DWORD capacity) {
            return GetShortPathNameW(Wide(SystemForm(path)), buffer, capacity);
        }));
    }

    bool isExistingFolder(const std::u16string& path) const override {
        if (path.empty()) {
            return false;
        }
        const DWORD attributes = GetFileAttributesW(Wide(WithLongPathPrefix(path)));
        if (attributes != INVALID_FILE_ATTRIBUTES) {
            return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        }
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) {
            return false;
        }
        // Same rule as the file manager's item-kind test: anything else is a refusal.
        Throw(kPermissionDenied, "Insufficent file permissions");
    }
};

}  // namespace

const PathSystem& DefaultPathSystem() {
    static const WindowsPathSystem system;
    return system;
}

}  // namespace slib
