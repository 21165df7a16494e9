#include "host_system.h"

#include <windows.h>

#include <shlobj.h>

#include "path_syntax.h"

namespace fmwrapper {
namespace {

std::u16string FromWide(const wchar_t* text, size_t length) {
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

std::u16string ShellFolder(int csidl) {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path)))
        return {};
    return FromWide(path, wcslen(path));
}

}  // namespace

std::u16string AbsoluteNativePath(std::u16string_view path) {
    const std::u16string given(path);
    wchar_t full[4096];
    const DWORD length =
        GetFullPathNameW(reinterpret_cast<const wchar_t*>(given.c_str()), 4096, full, nullptr);
    if (length == 0 || length >= 4096)
        return given;
    return FromWide(full, length);
}

std::u16string HostFilePath(std::u16string_view absolutePath) {
    return u"file:" + HostPathFromNative(absolutePath);
}

std::u16string HostFolderPath(std::u16string_view folder) {
    std::u16string native(folder);
    if (native.empty() || (native.back() != u'\\' && native.back() != u'/'))
        native += u'\\';
    return HostPathFromNative(native);
}

std::u16string ExecutableFolder() {
    wchar_t path[MAX_PATH * 4] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH * 4);
    std::u16string full = FromWide(path, length);
    const size_t slash = full.find_last_of(u"\\/");
    return slash == std::u16string::npos ? std::u16string() : full.substr(0, slash + 1);
}

std::u16string TemporaryFolder() {
    wchar_t path[MAX_PATH + 1] = {};
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    return FromWide(path, length);
}

std::u16string DocumentsFolder() {
    return ShellFolder(CSIDL_PERSONAL);
}

std::u16string DesktopFolder() {
    return ShellFolder(CSIDL_DESKTOPDIRECTORY);
}

int32_t SystemPlatform() {
    return -2;
}

}  // namespace fmwrapper
