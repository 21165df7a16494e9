// The logical drives, as path resolution asks for them to tell a volume name from a folder name.

#include <windows.h>

#include <cwchar>
#include <vector>

#include "foundation/file_manager.h"

namespace slib {

std::vector<std::shared_ptr<const String>> FileManager::listVolumes() const {
    std::vector<std::shared_ptr<const String>> volumes;
    const DWORD needed = GetLogicalDriveStringsW(0, nullptr);
    std::vector<wchar_t> buffer(needed + 1, L'\0');
    const DWORD length = GetLogicalDriveStringsW(static_cast<DWORD>(buffer.size()), buffer.data());
    if (length == 0 || length >= buffer.size()) {
        return volumes;  // the drives changed under us or the call failed: no volumes known
    }
    // "C:\<0>D:\<0><0>": each root is a letter, a colon and a backslash.
    for (const wchar_t* root = buffer.data(); *root != L'\0'; root += wcslen(root) + 1) {
        volumes.push_back(String::FromWide(root, wcsnlen(root, 2)));
    }
    return volumes;
}

bool FileManager::isMountedVolume(const String& name) const {
    const std::u16string& text = name.units();
    if (text.size() != 2 || text[1] != u':') {
        return false;
    }
    const auto upper = [](char16_t unit) {
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
    };
    for (const std::shared_ptr<const String>& volume : listVolumes()) {
        const std::u16string& drive = volume->units();
        if (drive.size() == 2 && upper(drive[0]) == upper(text[0]) && drive[1] == u':') {
            return true;
        }
    }
    return false;
}

}  // namespace slib
