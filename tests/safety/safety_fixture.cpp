#include "safety_fixture.h"

#include <vector>

namespace safety_test {

namespace {

using UnixFileName = char*(CDECL*)(const wchar_t*);

// Wine's own export: the Unix path of a Windows one. Present only under Wine.
UnixFileName WineUnixFileName() {
    return reinterpret_cast<UnixFileName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name")));
}

// symlink(2) through the Linux system call itself: a Wine process is a Linux process.
long LinuxSymlink(const char* target, const char* link) {
    long result = 0;
    asm volatile("syscall"
                 : "=a"(result)
                 : "a"(88L), "D"(target), "S"(link)
                 : "rcx", "r11", "memory");
    return result;
}

long LinuxUnlink(const char* path) {
    long result = 0;
    asm volatile("syscall" : "=a"(result) : "a"(87L), "D"(path) : "rcx", "r11", "memory");
    return result;
}

void RemoveLinksBelow(const std::u16string& folder) {
    // Listed in full first: removing entries while listing them may skip some.
    std::vector<std::pair<std::u16string, DWORD>> entries;
    WIN32_FIND_DATAW found;
    const slib::UniqueFindHandle search(FindFirstFileW(Wide(u"\\\\?\\" + folder + u"\\*"), &found));
    if (!search.valid()) {
        return;
    }
    do {
        const std::u16string name = slib::test::FromWide(found.cFileName);
        if (name != u"." && name != u"..") {
            entries.emplace_back(folder + u"\\" + name, found.dwFileAttributes);
        }
    } while (FindNextFileW(search.get(), &found));
    for (const auto& [entry, attributes] : entries) {
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
            (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
            RemoveLinksBelow(entry);
        } else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ||
                   !DeleteFileW(Wide(u"\\\\?\\" + entry))) {
            // A link, or one whose target is gone (Wine shows that as a file it cannot delete).
            RemoveFolderLink(entry);
        }
    }
}

// The link, never what it names: the system's own call, or under Wine the Unix one.
bool RemoveLinkItself(const std::u16string& link, BOOL(WINAPI* systemRemove)(LPCWSTR)) {
    const UnixFileName unixName = WineUnixFileName();
    if (unixName == nullptr) {
        return systemRemove(Wide(u"\\\\?\\" + link)) != 0;
    }
    char* unixLink = unixName(Wide(link));
    const bool removed = unixLink != nullptr && LinuxUnlink(unixLink) == 0;
    HeapFree(GetProcessHeap(), 0, unixLink);
    return removed;
}

bool IsReparsePoint(const std::u16string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(path));
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

void ListInto(const std::u16string& folder, const std::u16string& relative, std::string& out) {
    WIN32_FIND_DATAW found;
    const slib::UniqueFindHandle search(
        FindFirstFileW(Wide(u"\\\\?\\" + folder + relative + u"\\*"), &found));
    if (!search.valid()) {
        return;
    }
    do {
        const std::u16string name = slib::test::FromWide(found.cFileName);
        if (name == u"." || name == u"..") {
            continue;
        }
        const std::u16string child = relative + u"\\" + name;
        const FileState state = StateOf(folder + child);
        out += Narrow(child) + " [" + std::to_string(found.dwFileAttributes) + "] ";
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            out += "<dir>\n";
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
                ListInto(folder, child, out);
            }
        } else {
            out += std::to_string(state.bytes ? state.bytes->size() : 0) + " bytes " +
                   std::to_string(std::hash<std::string>()(state.bytes.value_or(""))) + "\n";
        }
    } while (FindNextFileW(search.get(), &found));
}

}  // namespace

MappedDrive::MappedDrive(const std::u16string& folder) {
    const DWORD used = GetLogicalDrives();
    for (char16_t letter = u'M'; letter < u'Z' && drive_.empty(); ++letter) {
        const std::u16string drive = std::u16string(1, letter) + u":";
        if ((used & (1u << (letter - u'A'))) != 0 ||
            GetFileAttributesW(Wide(drive + u"\\")) != INVALID_FILE_ATTRIBUTES) {
            continue;
        }
        const UnixFileName unixName = WineUnixFileName();
        if (unixName == nullptr) {
            if (DefineDosDeviceW(0, Wide(drive), Wide(folder))) {
                drive_ = drive;
            }
            continue;
        }
        // The prefix's own drive C: lives beside its dosdevices folder.
        char* unixC = unixName(L"C:\\");
        char* unixTarget = unixName(Wide(folder));
        if (unixC != nullptr && unixTarget != nullptr) {
            std::string prefix(unixC);
            while (!prefix.empty() && prefix.back() == '/') {
                prefix.pop_back();
            }
            prefix.resize(prefix.rfind('/') + 1);
            // Wine names C: either by its folder (drive_c) or by its dosdevices link (c:).
            const std::string devices = "/dosdevices/";
            if (prefix.size() < devices.size() ||
                prefix.compare(prefix.size() - devices.size(), devices.size(), devices) != 0) {
                prefix += "dosdevices/";
            }
            const std::string link = prefix + char(letter - u'A' + 'a') + ":";
            if (LinuxSymlink(unixTarget, link.c_str()) == 0) {
                wineLink_ = link;
                drive_ = drive;
                // Files are reached through the link; the system's list of drives (the plug-in
                // asks it which names are volumes) learns the letter from the definition.
                DefineDosDeviceW(0, Wide(drive), Wide(folder));
            }
        }
        HeapFree(GetProcessHeap(), 0, unixC);
        HeapFree(GetProcessHeap(), 0, unixTarget);
    }
    if (drive_.empty()) {
        why_ = "no free drive letter could be mapped to a folder here";
    } else if (GetFileAttributesW(Wide(drive_ + u"\\")) == INVALID_FILE_ATTRIBUTES) {
        why_ = "the mapped drive " + Narrow(drive_) + " cannot be reached";
    }
}

MappedDrive::~MappedDrive() {
    if (!wineLink_.empty()) {
        LinuxUnlink(wineLink_.c_str());
    }
    if (!drive_.empty()) {
        DefineDosDeviceW(DDD_REMOVE_DEFINITION, Wide(drive_), nullptr);
    }
}

slib::UniqueFileHandle Hold(const std::u16string& path, DWORD access, DWORD share) {
    return slib::UniqueFileHandle(CreateFileW(Wide(path), access, share, nullptr, OPEN_EXISTING,
                                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool MakeFolderLink(const std::u16string& link, const std::u16string& target) {
    return MakeLink(link, target, SYMBOLIC_LINK_FLAG_DIRECTORY) && IsReparsePoint(link);
}

bool MakeFileLink(const std::u16string& link, const std::u16string& target) {
    return MakeLink(link, target, 0);
}

bool MakeLink(const std::u16string& link, const std::u16string& target, DWORD kind) {
    if (CreateSymbolicLinkW(Wide(link), Wide(target),
                            kind | SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE) &&
        GetFileAttributesW(Wide(link)) != INVALID_FILE_ATTRIBUTES) {
        return true;
    }
    const UnixFileName unixName = WineUnixFileName();
    if (unixName == nullptr) {
        return false;
    }
    char* unixTarget = unixName(Wide(target));
    char* unixLink = unixName(Wide(link));
    const bool made =
        unixTarget != nullptr && unixLink != nullptr && LinuxSymlink(unixTarget, unixLink) == 0;
    HeapFree(GetProcessHeap(), 0, unixTarget);
    HeapFree(GetProcessHeap(), 0, unixLink);
    return made && GetFileAttributesW(Wide(link)) != INVALID_FILE_ATTRIBUTES;
}

bool RemoveFileLink(const std::u16string& link) {
    // Under Wine through the Unix call only: its DeleteFileW on a link deletes the file it names.
    return RemoveLinkItself(link, DeleteFileW);
}

bool RemoveFolderLink(const std::u16string& link) {
    // Under Wine through the Unix call only: its RemoveDirectoryW on a link to an empty folder
    // removes that folder and leaves the link.
    return RemoveLinkItself(link, RemoveDirectoryW);
}

bool SystemRemovesFolderLinks(const std::u16string& scratch, std::string& why) {
    const std::u16string target = scratch + u"\\link probe target";
    const std::u16string link = scratch + u"\\link probe";
    CreateDirectoryW(Wide(target), nullptr);
    CreateDirectoryW(Wide(target + u"\\inside"), nullptr);
    if (!MakeFolderLink(link, target)) {
        why = "no folder link could be made";
        return false;
    }
    const bool removed = RemoveDirectoryW(Wide(link)) != 0;
    const DWORD error = GetLastError();
    if (!removed) {
        why = "RemoveDirectoryW on a folder link failed with " + std::to_string(error) +
              " (the link still there: " + (IsReparsePoint(link) ? "yes" : "no") + ")";
        RemoveFolderLink(link);
    }
    RemoveDirectoryW(Wide(target + u"\\inside"));
    RemoveDirectoryW(Wide(target));
    return removed;
}

void SafetyTest::TearDown() {
    RemoveLinksBelow(root_);
    items_test::ItemsTest::TearDown();
}

FileState StateOf(const std::u16string& path) {
    FileState state{std::nullopt, GetFileAttributesW(Wide(u"\\\\?\\" + path))};
    const slib::UniqueFileHandle file(
        CreateFileW(Wide(u"\\\\?\\" + path), GENERIC_READ,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                    FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) {
        return state;
    }
    std::string bytes;
    char buffer[65536];
    DWORD got = 0;
    while (ReadFile(file.get(), buffer, sizeof(buffer), &got, nullptr) && got > 0) {
        bytes.append(buffer, got);
    }
    state.bytes = bytes;
    return state;
}

std::optional<std::u16string> SafetyTest::SmallVolume(std::string& why) {
    wchar_t value[1024] = {};
    const DWORD length = GetEnvironmentVariableW(L"VF_TEST_SMALL_VOLUME", value, 1024);
    if (length == 0 || length >= 1024) {
        wchar_t refused[1024] = {};
        why = GetEnvironmentVariableW(L"VF_TEST_SMALL_VOLUME_REFUSED", refused, 1024) > 0
                  ? "the test script could not mount the small volume: " +
                        Narrow(slib::test::FromWide(refused))
                  : "no small volume given (VF_TEST_SMALL_VOLUME; scripts/run-tests.sh mounts one)";
        return std::nullopt;
    }
    std::u16string windows = u"Z:" + slib::test::FromWide(value);
    for (char16_t& unit : windows) {
        unit = unit == u'/' ? u'\\' : unit;
    }
    return windows;
}

void SafetyTest::FillVolume(const std::u16string& folder) {
    const slib::UniqueFileHandle filler(CreateFileW(Wide(folder + u"\\filler"), GENERIC_WRITE, 0,
                                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                    nullptr));
    ASSERT_TRUE(filler.valid());
    const std::vector<char> block(4096, 'f');
    DWORD written = 0;
    while (WriteFile(filler.get(), block.data(), 4096, &written, nullptr) && written == 4096) {
    }
    // Then byte by byte, up to the very last block.
    while (WriteFile(filler.get(), "f", 1, &written, nullptr) && written == 1) {
    }
}

std::string SafetyTest::codeOf(const std::u16string& calculation) {
    const std::string outcome = call(calculation);
    return outcome.substr(0, outcome.find(" | "));
}

std::string SafetyTest::Listing(const std::u16string& folder) {
    std::string out;
    ListInto(folder, u"", out);
    return out;
}

}  // namespace safety_test
