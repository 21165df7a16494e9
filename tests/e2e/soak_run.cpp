#include "e2e/soak_run.h"

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <wincrypt.h>

#include <chrono>
#include <regex>
#include <set>

#include "e2e/soak_generator.h"
#include "file_manager/scratch_folder.h"
#include "support/fmhost_process.h"

namespace vf::soak {

namespace {

using slib::test::FromWide;
using slib::test::Narrow;
using slib::test::RemoveTree;
using slib::test::Wide;

const char kPictureBase64[] =
    "Qk1GAAAAAAAAADYAAAAoAAAAAgAAAAIAAAABABgAAAAAABAAAAATCwAAEwsAAAAAAAAAAAAAAAD/AAAA/wAAAP8AAAD/"
    "AA==";
const char kZipBase64[] =
    "UEsDBBQAAAAIADtid12Lc5WsCwAAAAkAAAAIAAAAaW4vYS50eHTLSM3JyVeoyiwAAFBLAQIUAxQAAAAIADtid12Lc5Ws"
    "CwAAAAkAAAAIAAAAAAAAAAAAAACAAQAAAABpbi9hLnR4dFBLBQYAAAAAAQABADYAAAAxAAAAAAA=";

std::string Decoded(const char* base64) {
    DWORD size = 0;
    CryptStringToBinaryA(base64, 0, CRYPT_STRING_BASE64, nullptr, &size, nullptr, nullptr);
    std::string bytes(size, '\0');
    CryptStringToBinaryA(base64, 0, CRYPT_STRING_BASE64, reinterpret_cast<BYTE*>(&bytes[0]), &size,
                         nullptr, nullptr);
    return bytes;
}

std::u16string Long(const std::u16string& path) {
    return u"\\\\?\\" + path;
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

// The items the calls find waiting, laid out again before every batch: the calls delete and
// move them. "deep" reaches past the shell's path limit.
void Seed(const std::u16string& database) {
    CreateDirectoryW(Wide(Long(database)), nullptr);
    WriteBytes(database + u"\\x.txt", "hello soak");
    WriteBytes(database + u"\\pic.bmp", Decoded(kPictureBase64));
    WriteBytes(database + u"\\arch.zip", Decoded(kZipBase64));
    CreateDirectoryW(Wide(Long(database + u"\\sub")), nullptr);
    WriteBytes(database + u"\\sub\\x.txt", "inner");
    std::u16string deep = database + u"\\deep";
    while (deep.size() < 300) {
        CreateDirectoryW(Wide(Long(deep)), nullptr);
        deep += u"\\" + std::u16string(60, u'd');
    }
    CreateDirectoryW(Wide(Long(deep)), nullptr);
    WriteBytes(deep + u"\\x.txt", "deep");
}

std::u16string TempFolder() {
    wchar_t temp[MAX_PATH] = {};
    const DWORD length = GetTempPathW(MAX_PATH, temp);
    std::u16string base = FromWide(temp).substr(0, length);
    while (!base.empty() && base.back() == u'\\') {
        base.pop_back();
    }
    return base;
}

std::string HostForm(std::u16string path) {
    for (char16_t& unit : path) {
        unit = unit == u'\\' ? u'/' : unit;
    }
    return "file:/" + Narrow(path) + "/";
}

size_t CountMatches(const std::string& text, const std::regex& pattern) {
    return static_cast<size_t>(std::distance(
        std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()));
}

// The change fmhost --verbose reports for `what` ("handles", ...) over the run, if counted.
std::optional<int64_t> Growth(const std::string& err, const std::string& what) {
    const std::regex pattern("after the last calculation:.*?\\d+ " + what + " \\(([+-]\\d+)\\)");
    std::smatch match;
    if (!std::regex_search(err, match, pattern)) {
        return std::nullopt;
    }
    return std::stoll(match[1].str());
}

std::string Tail(const std::string& text) {
    return text.size() > 600 ? text.substr(text.size() - 600) : text;
}

}  // namespace

Figures Run(uint64_t seed, size_t calls, size_t batch, const Bounds& bounds,
            const std::function<void(const std::string&)>& progress) {
    const auto started = std::chrono::steady_clock::now();
    // Inherited by each fmhost: a crash then ends it at once instead of starting the system's
    // debugger (Wine's would hold the process until the safety limit).
    SetErrorMode(GetErrorMode() | SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS);
    const std::u16string temp = TempFolder();
    const std::u16string outer = temp + u"\\vf-soak-" +
                                 FromWide(std::to_wstring(GetCurrentProcessId()).c_str()) + u"-" +
                                 FromWide(std::to_wstring(seed).c_str());
    const std::u16string scratch = outer + u"\\s";
    const std::u16string database = scratch + u"\\db";
    RemoveTree(outer);
    CreateDirectoryW(Wide(outer), nullptr);
    CreateDirectoryW(Wide(scratch), nullptr);
    const std::set<std::u16string> tempBefore = Names(temp);
    const std::set<std::string> itemNames = ItemNames();

    CallGenerator generator(seed, HostForm(scratch));
    const std::regex answer("@@\\d+@@");
    const std::regex hostError("(^|\n)error -?\\d+(?=\n|$)");
    Figures figures;
    while (figures.calls < calls) {
        Seed(database);
        const size_t count = std::min(batch, calls - figures.calls);
        std::string script;
        for (size_t i = 0; i < count; ++i) {
            script += generator.next() + "\n\n";
        }
        const std::u16string scriptPath = outer + u"\\calls.fmcalc";
        WriteBytes(scriptPath, script);

        vf::test::ProcessOptions options;
        options.workingDirectory = Narrow(database);
        const vf::test::ProcessResult run = vf::test::RunFmhost(
            {"--verbose", "--plugin", vf::test::BesideTest("Vantafile.fmx64"), "--file",
             Narrow(database + u"\\Solution.fmp12"), "--script", Narrow(scriptPath)},
            options);
        const std::string where = "batch " + std::to_string(figures.batches + 1) + " (calls " +
                                  std::to_string(figures.calls + 1) + " to " +
                                  std::to_string(figures.calls + count) + ")";
        figures.calls += count;
        ++figures.batches;
        if (run.exitCode != 0 && run.exitCode != 1) {
            figures.problems.push_back(where + ": fmhost ended with " +
                                       std::to_string(run.exitCode) + ": " + Tail(run.err));
        }
        const size_t answered = CountMatches(run.out, answer) + CountMatches(run.err, hostError);
        figures.answered += answered;
        if (answered != count) {
            figures.problems.push_back(where + ": " + std::to_string(answered) + " of " +
                                       std::to_string(count) + " calls answered (exit status " +
                                       std::to_string(run.exitCode) + ")");
        }
        const std::optional<int64_t> handles = Growth(run.err, "handles");
        const std::optional<int64_t> gdi = Growth(run.err, "GDI objects");
        const std::optional<int64_t> memory = Growth(run.err, "private bytes");
        if (!handles || !memory) {
            figures.problems.push_back(where + ": no resource figures in the verbose report");
        } else {
            figures.handleGrowth = std::max(figures.handleGrowth, *handles);
            figures.privateGrowth = std::max(figures.privateGrowth, *memory);
            if (*handles > bounds.handles || *memory > bounds.privateBytes) {
                figures.problems.push_back(where + ": grew by " + std::to_string(*handles) +
                                           " handles and " + std::to_string(*memory) + " bytes");
            }
        }
        if (gdi) {
            figures.gdiGrowth = std::max(figures.gdiGrowth.value_or(0), *gdi);
            if (*gdi > bounds.gdiObjects) {
                figures.problems.push_back(where + ": grew by " + std::to_string(*gdi) +
                                           " GDI objects");
            }
        }
        DeleteFileW(Wide(scriptPath));
        for (const std::u16string& name : Names(outer)) {
            if (name != u"s") {
                figures.problems.push_back(where + ": wrote " + Narrow(name) +
                                           " beside the scratch folder");
            }
        }
        // Other test programs make items of their own here meanwhile: only names the calls use
        // are an escape.
        for (const std::u16string& name : Names(temp)) {
            if (tempBefore.count(name) == 0 && itemNames.count(StoredName(Narrow(name))) != 0) {
                figures.problems.push_back(where + ": wrote " + Narrow(name) +
                                           " in the temporary folder");
            }
        }
        if (progress) {
            progress(where + ": " + std::to_string(answered) + " answered, handles " +
                     (handles ? std::to_string(*handles) : "?") + ", private bytes " +
                     (memory ? std::to_string(*memory) : "?"));
        }
        if (figures.problems.size() > 20) {
            break;
        }
    }
    RemoveTree(outer);
    figures.seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    return figures;
}

}  // namespace vf::soak
