// Connecting and disconnecting network volumes on drive letters.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <winnetwk.h>

#include "foundation/exception.h"
#include "foundation/file_manager.h"

namespace slib {

namespace {

std::u16string WithoutTrailingSeparator(const std::u16string& path) {
    if (!path.empty() && path.back() == u'\\') {
        return path.substr(0, path.size() - 1);
    }
    return path;
}

// Absent optional values reach the system as null, never as empty text.
const wchar_t* WideOrNull(const std::shared_ptr<const String>& text) {
    return text ? text->wide() : nullptr;
}

}  // namespace

char16_t ChooseFreeDriveLetter(uint32_t usedDrives) {
    int bit = 25;  // Z
    while (bit >= 0 && (usedDrives & (uint32_t{1} << bit)) != 0) {
        --bit;
    }
    // Past A (bit -1) this is '@', a name the system refuses.
    return static_cast<char16_t>(u'A' + bit);
}

std::shared_ptr<const String> FileManager::mountVolume(
    const String& remote, const std::shared_ptr<const String>& mountPath,
    const std::shared_ptr<const String>& user,
    const std::shared_ptr<const String>& password) const {
    std::u16string localName;
    if (mountPath) {
        localName = WithoutTrailingSeparator(mountPath->units());
    } else {
        localName = std::u16string(1, ChooseFreeDriveLetter(GetLogicalDrives())) + u":";
    }
    std::u16string remoteName = remote.units();
    NETRESOURCEW resource = {};
    resource.dwType = RESOURCETYPE_DISK;
    resource.lpLocalName = reinterpret_cast<wchar_t*>(localName.data());
    resource.lpRemoteName = reinterpret_cast<wchar_t*>(remoteName.data());
    const DWORD result = WNetAddConnection2W(&resource, WideOrNull(password), WideOrNull(user), 0);
    if (result != NO_ERROR) {
        ThrowLastError("Cannot mount volume", result);
    }
    return std::make_shared<String>(localName + u"\\");
}

void FileManager::unmountVolume(const String& mountPath) const {
    const std::u16string name = WithoutTrailingSeparator(mountPath.units());
    const DWORD result = WNetCancelConnection2W(reinterpret_cast<const wchar_t*>(name.c_str()),
                                                CONNECT_UPDATE_PROFILE, TRUE);
    if (result != NO_ERROR) {
        ThrowLastError("Error unmounting volume", result);
    }
}

}  // namespace slib
