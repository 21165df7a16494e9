// zip_floor.exe: what packing and unpacking a tree cost with no codec and no container, as plainly
// as Win32 does it, one file at a time on one thread. run_bench.py times it under Wine beside
// VFile_Compress and VFile_DeCompress: the time a call cannot go below on this file system.
//
//   zip_floor idle                                    start-up alone
//   zip_floor read FOLDER OUTPUT OUTPUT_BYTES TREE_BYTES
//       walks FOLDER (FindFirstFileExW) and reads each file as it is found (1 MiB ReadFile
//       calls); after each read it writes to the new file OUTPUT its share of OUTPUT_BYTES
//       (OUTPUT_BYTES * bytes read so far / TREE_BYTES), so OUTPUT ends OUTPUT_BYTES long.
//   zip_floor create LISTING CONTENTS FOLDER
//       LISTING is UTF-8, one item a line, folders before what they hold: "D\tpath" or
//       "F\tsize\tpath" (paths relative to FOLDER, '/' between parts); CONTENTS is every file's
//       bytes in listing order. Creates FOLDER, each folder, and each file (CREATE_ALWAYS) with
//       its bytes copied from CONTENTS in 1 MiB ReadFile/WriteFile calls.
// Paths are used in the long-path form. Exit status 0, or 1 with the failing call on stderr.
#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/utf_conversion.h"
#include "foundation/windows/unique_handles.h"

namespace {

constexpr DWORD kChunk = 1 << 20;

struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void Fail(const char* call, const std::wstring& path) {
    const DWORD code = GetLastError();
    const std::u16string wide(path.begin(), path.end());
    throw Failure(std::string(call) + " failed (" + std::to_string(code) + ") on " +
                  slib::Utf16ToUtf8(wide));
}

std::wstring LongForm(const std::wstring& path) {
    return path.rfind(L"\\\\?\\", 0) == 0 ? path : L"\\\\?\\" + path;
}

slib::UniqueFileHandle Open(const std::wstring& path, DWORD access, DWORD disposition) {
    slib::UniqueFileHandle file(CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr,
                                            disposition, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) {
        Fail("CreateFileW", path);
    }
    return file;
}

DWORD ReadSome(HANDLE file, std::vector<char>& buffer, DWORD wanted, const std::wstring& path) {
    DWORD got = 0;
    if (!ReadFile(file, buffer.data(), wanted, &got, nullptr)) {
        Fail("ReadFile", path);
    }
    return got;
}

void WriteAll(HANDLE file, const char* bytes, DWORD count, const std::wstring& path) {
    DWORD written = 0;
    if (!WriteFile(file, bytes, count, &written, nullptr) || written != count) {
        Fail("WriteFile", path);
    }
}

// Writes the output's share as the reading goes, so both happen in the one pass.
class ShareWriter {
  public:
    ShareWriter(const std::wstring& path, uint64_t outputBytes, uint64_t treeBytes)
        : path_(path),
          file_(Open(path, GENERIC_WRITE, CREATE_ALWAYS)),
          outputBytes_(outputBytes),
          treeBytes_(std::max<uint64_t>(treeBytes, 1)) {}

    void Read(const std::vector<char>& buffer, DWORD got) {
        read_ += got;
        WriteUpTo(std::min(outputBytes_, outputBytes_ * read_ / treeBytes_), buffer);
    }
    void Finish(const std::vector<char>& buffer) { WriteUpTo(outputBytes_, buffer); }

  private:
    void WriteUpTo(uint64_t target, const std::vector<char>& buffer) {
        while (written_ < target) {
            const DWORD count = static_cast<DWORD>(std::min<uint64_t>(target - written_, kChunk));
            WriteAll(file_.get(), buffer.data(), count, path_);
            written_ += count;
        }
    }

    std::wstring path_;
    slib::UniqueFileHandle file_;
    uint64_t outputBytes_, treeBytes_, read_ = 0, written_ = 0;
};

void ReadTree(const std::wstring& folder, std::vector<char>& buffer, ShareWriter& output) {
    WIN32_FIND_DATAW found;
    const std::wstring pattern = folder + L"\\*";
    slib::UniqueFindHandle search(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found,
                                                   FindExSearchNameMatch, nullptr,
                                                   FIND_FIRST_EX_LARGE_FETCH));
    if (!search) {
        Fail("FindFirstFileExW", pattern);
    }
    do {
        const std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") {
            continue;
        }
        const std::wstring path = folder + L"\\" + name;
        if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            ReadTree(path, buffer, output);
            continue;
        }
        const slib::UniqueFileHandle file = Open(path, GENERIC_READ, OPEN_EXISTING);
        while (const DWORD got = ReadSome(file.get(), buffer, kChunk, path)) {
            output.Read(buffer, got);
        }
    } while (FindNextFileW(search.get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES) {
        Fail("FindNextFileW", folder);
    }
}

std::wstring ToWide(const std::string& utf8) {
    const std::u16string wide = slib::Utf8ToUtf16(utf8);
    std::wstring path(wide.begin(), wide.end());
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

std::string ReadWhole(const std::wstring& path) {
    const slib::UniqueFileHandle file = Open(path, GENERIC_READ, OPEN_EXISTING);
    std::string text;
    std::vector<char> buffer(kChunk);
    while (const DWORD got = ReadSome(file.get(), buffer, kChunk, path)) {
        text.append(buffer.data(), got);
    }
    return text;
}

void MakeFolder(const std::wstring& path) {
    if (!CreateDirectoryW(path.c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
        Fail("CreateDirectoryW", path);
    }
}

void CreateTree(const std::wstring& listingPath, const std::wstring& contentsPath,
                const std::wstring& folder) {
    const std::string listing = ReadWhole(listingPath);
    const slib::UniqueFileHandle contents = Open(contentsPath, GENERIC_READ, OPEN_EXISTING);
    std::vector<char> buffer(kChunk);
    MakeFolder(folder);
    size_t at = 0;
    while (at < listing.size()) {
        size_t end = listing.find('\n', at);
        end = end == std::string::npos ? listing.size() : end;
        const std::string line = listing.substr(at, end - at);
        at = end + 1;
        const size_t tab = line.find('\t');
        if (line.size() < 3 || tab != 1) {
            throw Failure("bad listing line: " + line);
        }
        if (line[0] == 'D') {
            MakeFolder(folder + L"\\" + ToWide(line.substr(2)));
            continue;
        }
        const size_t nameTab = line.find('\t', 2);
        if (line[0] != 'F' || nameTab == std::string::npos) {
            throw Failure("bad listing line: " + line);
        }
        uint64_t left = std::stoull(line.substr(2, nameTab - 2));
        const std::wstring path = folder + L"\\" + ToWide(line.substr(nameTab + 1));
        const slib::UniqueFileHandle file = Open(path, GENERIC_WRITE, CREATE_ALWAYS);
        while (left > 0) {
            const DWORD wanted = static_cast<DWORD>(std::min<uint64_t>(left, kChunk));
            if (ReadSome(contents.get(), buffer, wanted, contentsPath) != wanted) {
                throw Failure("the contents file ends early");
            }
            WriteAll(file.get(), buffer.data(), wanted, path);
            left -= wanted;
        }
    }
}

int Run(const std::vector<std::wstring>& args) {
    if (args.size() == 1 && args[0] == L"idle") {
        return 0;
    }
    if (args.size() == 5 && args[0] == L"read") {
        std::vector<char> buffer(kChunk);
        ShareWriter output(LongForm(args[2]), std::stoull(args[3]), std::stoull(args[4]));
        ReadTree(LongForm(args[1]), buffer, output);
        output.Finish(buffer);
        return 0;
    }
    if (args.size() == 4 && args[0] == L"create") {
        CreateTree(LongForm(args[1]), LongForm(args[2]), LongForm(args[3]));
        return 0;
    }
    std::fputs(
        "usage: zip_floor idle | read FOLDER OUTPUT OUTPUT_BYTES TREE_BYTES | "
        "create LISTING CONTENTS FOLDER\n",
        stderr);
    return 2;
}

}  // namespace

int main() {
    int argc = 0;
    std::vector<std::wstring> args;
    {
        const slib::UniqueLocalMemory argv(CommandLineToArgvW(GetCommandLineW(), &argc));
        const auto* words = static_cast<wchar_t**>(argv.get());
        for (int i = 1; i < argc; ++i) {
            args.emplace_back(words[i]);
        }
    }
    try {
        return Run(args);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "zip_floor: %s\n", failure.what());
        return 1;
    }
}
