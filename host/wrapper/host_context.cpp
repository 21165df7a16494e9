// The host's answers to the Get() functions that depend on the machine and the database.
#include <windows.h>

#include <shlobj.h>

#include "fault_injection.h"
#include "host_runtime.h"
#include "path_syntax.h"

namespace fmwrapper {
namespace {

using fmhost::Value;

std::u16string FromWide(const wchar_t* text, size_t length) {
    return std::u16string(reinterpret_cast<const char16_t*>(text), length);
}

// A folder in host syntax, always ending in "/".
Value FolderValue(std::u16string native) {
    if (native.empty() || (native.back() != u'\\' && native.back() != u'/'))
        native += u'\\';
    return Value(fmhost::Text(HostPathFromNative(native)));
}

std::u16string ShellFolder(int csidl) {
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, path)))
        return {};
    return FromWide(path, wcslen(path));
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

}  // namespace

fmhost::Session& HostContext::GetSession() {
    return HostRuntime::Instance().CurrentSession();
}

const fmhost::FunctionRegistry* HostContext::Functions() const {
    return &HostRuntime::Instance().Registry();
}

fmhost::ErrorCode HostContext::GetValue(fmhost::GetFunction function, Value& result) {
    using fmhost::GetFunction;
    const HostSettings settings = HostRuntime::Instance().Settings();
    switch (function) {
        case GetFunction::kApplicationVersion:
            result = Value(fmhost::Text(settings.applicationVersion));
            return fmhost::kNoError;
        case GetFunction::kSystemPlatform:
            result = Value(fmhost::Decimal(-2));  // Windows
            return fmhost::kNoError;
        case GetFunction::kFilePath:
            if (const int16_t injected = faults::FilePathFault())
                return injected;
            if (settings.fileMode == FileMode::kNone)
                return fmhost::kErrNoDatabase;
            result = Value(fmhost::Text(settings.filePath));
            return fmhost::kNoError;
        case GetFunction::kFileMakerPath:
            result = FolderValue(ExecutableFolder());
            return fmhost::kNoError;
        case GetFunction::kDocumentsPath:
            result = FolderValue(ShellFolder(CSIDL_PERSONAL));
            return fmhost::kNoError;
        case GetFunction::kDesktopPath:
            result = FolderValue(ShellFolder(CSIDL_DESKTOPDIRECTORY));
            return fmhost::kNoError;
        case GetFunction::kTemporaryPath:
            result = FolderValue(TemporaryFolder());
            return fmhost::kNoError;
    }
    return fmhost::kErrBadGetParameter;
}

}  // namespace fmwrapper
