#include <windows.h>

#include "e2e/soak_files.h"
#include "file_manager/scratch_folder.h"
#include "support/fmhost_process.h"

namespace vf::soak {

namespace {

using slib::test::FromWide;
using slib::test::Narrow;
using slib::test::Wide;

std::u16string Long(const std::u16string& path) {
    return u"\\\\?\\" + path;
}

}  // namespace

std::u16string TempFolder() {
    wchar_t temp[MAX_PATH] = {};
    const DWORD length = GetTempPathW(MAX_PATH, temp);
    std::u16string base = FromWide(temp).substr(0, length);
    while (!base.empty() && base.back() == u'\\') {
        base.pop_back();
    }
    return base;
}

std::u16string Join(const std::u16string& folder, const std::u16string& name) {
    return folder + u"\\" + name;
}

void MakeFolder(const std::u16string& path) {
    CreateDirectoryW(Wide(Long(path)), nullptr);
}

void WriteBytes(const std::u16string& path, const std::string& bytes) {
    const HANDLE file = CreateFileW(Wide(Long(path)), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        DWORD written = 0;
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        CloseHandle(file);
    }
}

void RemoveFile(const std::u16string& path) {
    DeleteFileW(Wide(path));
}

std::set<std::u16string> Names(const std::u16string& folder) {
    std::set<std::u16string> names;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(Wide(Long(folder) + u"\\*"), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        names.insert(FromWide(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    names.erase(u".");
    names.erase(u"..");
    return names;
}

std::string HostForm(const std::u16string& folder) {
    std::u16string path = folder;
    for (char16_t& unit : path) {
        unit = unit == u'\\' ? u'/' : unit;
    }
    return "file:/" + Narrow(path) + "/";
}

std::u16string ProcessTag() {
    return FromWide(std::to_wstring(GetCurrentProcessId()).c_str());
}

std::string PluginBesideTest() {
    return vf::test::BesideTest("Vantafile.fmx64");
}

void EndCrashesAtOnce() {
    // Inherited by each fmhost: Wine's debugger would otherwise hold the process until the
    // safety limit.
    SetErrorMode(GetErrorMode() | SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS);
}

}  // namespace vf::soak
