// The Win32 bodies of the scratch-folder fixture.

#include "file_manager/scratch_folder.h"

#include <windows.h>

#include <shellapi.h>

#include <vector>

namespace slib {
namespace test {

const char16_t kSeparator = u'\\';

std::u16string FromWide(const wchar_t* text) {
    return reinterpret_cast<const char16_t*>(text);
}

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

std::u16string BesideProgram(const std::u16string& name) {
    wchar_t self[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::u16string program = FromWide(self).substr(0, length);
    return program.substr(0, program.rfind(u'\\') + 1) + name;
}

// CreateProcessW and ShellExecuteExW look the program up before they answer, Wine's included.
std::string WhyFailedStartsLookMade() {
    return "";
}

bool MakeHardLink(const std::u16string& existing, const std::u16string& link) {
    return CreateHardLinkW(Wide(link), Wide(existing), nullptr) != FALSE;
}

namespace {

std::u16string Long(const std::u16string& path) {
    return u"\\\\?\\" + path;
}

bool IsDotEntry(const wchar_t* name) {
    return wcscmp(name, L".") == 0 || wcscmp(name, L"..") == 0;
}

template <typename Visit>
void ForEachEntry(const std::u16string& folder, Visit visit) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(Wide(Long(folder) + u"\\*"), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return;
    }
    do {
        if (!IsDotEntry(entry.cFileName)) {
            visit(FromWide(entry.cFileName),
                  (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0);
        }
    } while (FindNextFileW(search, &entry));
    FindClose(search);
}

void Collect(const std::u16string& base, const std::u16string& prefix,
             std::map<std::u16string, std::string>& out) {
    ForEachEntry(base, [&](const std::u16string& name, bool folder) {
        const std::u16string relative = prefix.empty() ? name : prefix + u"\\" + name;
        if (folder) {
            out[relative] = "<dir>";
            Collect(base + u"\\" + name, relative, out);
        } else {
            out[relative] = "";
        }
    });
}

}  // namespace

void CollectTree(const std::u16string& folder, std::map<std::u16string, std::string>& out) {
    Collect(folder, u"", out);
}

void RemoveTree(const std::u16string& path) {
    const DWORD attributes = GetFileAttributesW(Wide(Long(path)));
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return;
    }
    SetFileAttributesW(Wide(Long(path)), FILE_ATTRIBUTE_NORMAL);
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        DeleteFileW(Wide(Long(path)));
        return;
    }
    ForEachEntry(path, [&](const std::u16string& name, bool) { RemoveTree(path + u"\\" + name); });
    RemoveDirectoryW(Wide(Long(path)));
}

bool ShellMergesMovedFolders(const std::u16string& probe) {
    CreateDirectoryW(Wide(probe), nullptr);
    CreateDirectoryW(Wide(probe + u"\\a"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\box"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\box\\a"), nullptr);
    CreateDirectoryW(Wide(probe + u"\\a\\moved"), nullptr);
    const std::u16string from = probe + u"\\a" + std::u16string(2, u'\0');
    const std::u16string to = probe + u"\\box" + std::u16string(2, u'\0');
    SHFILEOPSTRUCTW request = {};
    request.wFunc = FO_MOVE;
    request.pFrom = Wide(from);
    request.pTo = Wide(to);
    request.fFlags = FOF_SILENT | FOF_NOCONFIRMATION;
    SHFileOperationW(&request);
    const bool merged =
        GetFileAttributesW(Wide(probe + u"\\box\\a\\moved")) != INVALID_FILE_ATTRIBUTES;
    RemoveTree(probe);
    return merged;
}

namespace {

// A visible window titled `title` that belongs to another process, or null.
HWND FindFolderWindow(const std::u16string& title) {
    for (HWND window = FindWindowExW(nullptr, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(nullptr, window, nullptr, nullptr)) {
        wchar_t text[MAX_PATH] = {};
        DWORD owner = 0;
        GetWindowTextW(window, text, MAX_PATH);
        GetWindowThreadProcessId(window, &owner);
        if (IsWindowVisible(window) && owner != GetCurrentProcessId() && FromWide(text) == title) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace

::testing::AssertionResult FolderWindowOpensAndCloses(const std::u16string& title) {
    // The shell does not wait for its window; the bound is only reached when none comes.
    HWND window = nullptr;
    for (int attempt = 0; attempt < 600 && window == nullptr; ++attempt) {
        Sleep(50);
        window = FindFolderWindow(title);
    }
    if (window == nullptr) {
        return ::testing::AssertionFailure() << "no folder window appeared";
    }
    // Close it again so nothing outlives the test.
    PostMessageW(window, WM_CLOSE, 0, 0);
    for (int attempt = 0; attempt < 600 && IsWindow(window); ++attempt) {
        Sleep(50);
    }
    if (IsWindow(window)) {
        return ::testing::AssertionFailure() << "the folder window did not close";
    }
    return ::testing::AssertionSuccess();
}

void ScratchTest::SetUp() {
    static int counter = 0;
    wchar_t temp[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, temp);
    ASSERT_GT(length, 0u);
    std::u16string base = FromWide(temp).substr(0, length);
    if (base.back() == u'\\') {
        base.pop_back();
    }
    // Process ids come round again (Wine's with every new server): a folder an earlier run could
    // not remove is passed by, never shared.
    for (int attempt = 0;; ++attempt) {
        root_ = base + u"\\vf-fm-" + FromWide(std::to_wstring(GetCurrentProcessId()).c_str()) +
                u"-" + FromWide(std::to_wstring(++counter).c_str());
        RemoveTree(root_);
        if (CreateDirectoryW(Wide(root_), nullptr)) {
            break;
        }
        ASSERT_LT(attempt, 100) << Narrow(root_);
    }
}

void ScratchTest::TearDown() {
    SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", nullptr);
    // A program a test started (the recorder) may still be ending, its image still mapped from
    // here: the bound is only reached when something really holds the folder.
    RemoveTree(root_);
    for (int attempt = 0;
         attempt < 100 && GetFileAttributesW(Wide(root_)) != INVALID_FILE_ATTRIBUTES; ++attempt) {
        Sleep(50);
        RemoveTree(root_);
    }
    EXPECT_EQ(GetFileAttributesW(Wide(root_)), INVALID_FILE_ATTRIBUTES) << "scratch folder left";
}

void ScratchTest::makeFolder(const std::u16string& relative) const {
    ASSERT_TRUE(CreateDirectoryW(Wide(Long(path(relative))), nullptr)) << Narrow(relative);
}

void ScratchTest::writeFile(const std::u16string& relative, const std::string& content) const {
    const HANDLE file = CreateFileW(Wide(Long(path(relative))), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << Narrow(relative);
    DWORD written = 0;
    const BOOL ok =
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    CloseHandle(file);
    ASSERT_TRUE(ok && written == content.size());
}

void ScratchTest::makeSparseFile(const std::u16string& relative, uint64_t size) const {
    const HANDLE file = CreateFileW(Wide(Long(path(relative))), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << Narrow(relative);
    LARGE_INTEGER end;
    end.QuadPart = static_cast<LONGLONG>(size);
    const bool sized = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
    CloseHandle(file);
    ASSERT_TRUE(sized);
}

std::optional<std::string> ScratchTest::readFile(const std::u16string& relative) const {
    const HANDLE file = CreateFileW(Wide(Long(path(relative))), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    std::string content;
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(file, buffer, sizeof(buffer), &got, nullptr) && got > 0) {
        content.append(buffer, got);
    }
    CloseHandle(file);
    return content;
}

bool ScratchTest::exists(const std::u16string& relative) const {
    return GetFileAttributesW(Wide(Long(path(relative)))) != INVALID_FILE_ATTRIBUTES;
}

std::u16string ScratchTest::installRecorder() {
    makeFolder(u"app dir");
    const std::u16string recorder = path(u"app dir\\rec order.exe");
    EXPECT_TRUE(CopyFileW(Wide(BesideProgram(u"cmdline_recorder.exe")), Wide(recorder), FALSE));
    SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", Wide(path(u"record.txt")));
    return recorder;
}

std::optional<std::u16string> ScratchTest::recorded() const {
    // Started programs are not waited for by the code under test; this bound is only ever
    // reached when nothing was started at all. The recorder's rename keeps a handle with delete
    // access on the record for a moment after it appears, which a reader cannot share: it is
    // read once it can be.
    std::optional<std::string> bytes;
    for (int attempt = 0; attempt < 600 && !(bytes = readFile(u"record.txt")); ++attempt) {
        Sleep(50);
    }
    if (!bytes) {
        return std::nullopt;
    }
    // Gone before the next start, not only pending until the recorder lets go.
    DeleteFileW(Wide(path(u"record.txt")));
    for (int attempt = 0; attempt < 600 && exists(u"record.txt"); ++attempt) {
        Sleep(50);
        DeleteFileW(Wide(path(u"record.txt")));
    }
    return std::u16string(reinterpret_cast<const char16_t*>(bytes->data()), bytes->size() / 2);
}

}  // namespace test
}  // namespace slib
