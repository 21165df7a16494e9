#include "e2e/soak_run.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <regex>
#include <set>

#include "e2e/soak_files.h"
#include "e2e/soak_generator.h"
#include "file_manager/scratch_folder.h"
#include "support/fmhost_process.h"

namespace vf::soak {

namespace {

using slib::test::Narrow;
using slib::test::RemoveTree;

const char kPictureBase64[] =
    "Qk1GAAAAAAAAADYAAAAoAAAAAgAAAAIAAAABABgAAAAAABAAAAATCwAAEwsAAAAAAAAAAAAAAAD/AAAA/wAAAP8AAAD/"
    "AA==";
const char kZipBase64[] =
    "UEsDBBQAAAAIADtid12Lc5WsCwAAAAkAAAAIAAAAaW4vYS50eHTLSM3JyVeoyiwAAFBLAQIUAxQAAAAIADtid12Lc5Ws"
    "CwAAAAkAAAAIAAAAAAAAAAAAAACAAQAAAABpbi9hLnR4dFBLBQYAAAAAAQABADYAAAAxAAAAAAA=";

std::string Decoded(const std::string& base64) {
    static const std::string kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    uint32_t bits = 0;
    int count = 0;
    for (const char c : base64) {
        const size_t value = kDigits.find(c);
        if (value == std::string::npos) {
            break;  // "=" ends the data
        }
        bits = (bits << 6) | static_cast<uint32_t>(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>((bits >> count) & 0xFF);
        }
    }
    return bytes;
}

// The items the calls find waiting, laid out again before every batch: the calls delete and
// move them. "deep" reaches past the shell's path limit.
void Seed(const std::u16string& database) {
    MakeFolder(database);
    WriteBytes(Join(database, u"x.txt"), "hello soak");
    WriteBytes(Join(database, u"pic.bmp"), Decoded(kPictureBase64));
    WriteBytes(Join(database, u"arch.zip"), Decoded(kZipBase64));
    MakeFolder(Join(database, u"sub"));
    WriteBytes(Join(Join(database, u"sub"), u"x.txt"), "inner");
    std::u16string deep = Join(database, u"deep");
    while (deep.size() < 300) {
        MakeFolder(deep);
        deep = Join(deep, std::u16string(60, u'd'));
    }
    MakeFolder(deep);
    WriteBytes(Join(deep, u"x.txt"), "deep");
}

// Calls that do, before the measured part of each host run, the work a plug-in sets up once: the
// zip writer's and the picture engine's memory stays with the heap after the first few calls and
// would otherwise read as growth. Paths are relative to the database folder Seed() fills.
const char* const kWarmUp[] = {
    "VFile_Compress( \"sub\" ; \"warm.zip\" ) & VFile_Delete( \"warm.zip\" )",
    "VFile_DeCompress( \"arch.zip\" ; \"warm\" ) & VFile_Delete( \"warm\" )",
    "VFile_Convert( \"pic.bmp\" ; \"warm.png\" ) & VFile_Delete( \"warm.png\" )",
    "VFile_Get( \"picture-pixels\" ; \"pic.bmp\" )",
    // Large enough that the scaler spreads it over threads: their first start is no growth.
    "VFile_Convert( \"pic.bmp\" ; \"warm.jpg\" ; \"width\" ; 2000 ; \"height\" ; 2000 ) & "
    "VFile_Delete( \"warm.jpg\" )",
};
constexpr size_t kWarmUpRounds = 8;

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
    EndCrashesAtOnce();
    const std::u16string temp = TempFolder();
    const std::string seedText = std::to_string(seed);
    const std::u16string outer = Join(
        temp, u"vf-soak-" + ProcessTag() + u"-" + std::u16string(seedText.begin(), seedText.end()));
    const std::u16string scratch = Join(outer, u"s");
    const std::u16string database = Join(scratch, u"db");
    RemoveTree(outer);
    MakeFolder(outer);
    MakeFolder(scratch);
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
        for (size_t round = 0; round < kWarmUpRounds; ++round) {
            for (const char* call : kWarmUp) {
                script += std::string(call) + "\n\n";
            }
        }
        for (size_t i = 0; i < count; ++i) {
            script += generator.next() + "\n\n";
        }
        const std::u16string scriptPath = Join(outer, u"calls.fmcalc");
        WriteBytes(scriptPath, script);

        vf::test::ProcessOptions options;
        options.workingDirectory = Narrow(database);
        const vf::test::ProcessResult run = vf::test::RunFmhost(
            {"--verbose", "--warm-up", std::to_string(kWarmUpRounds * std::size(kWarmUp)),
             "--plugin", PluginBesideTest(), "--file", Narrow(Join(database, u"Solution.fmp12")),
             "--script", Narrow(scriptPath)},
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
        RemoveFile(scriptPath);
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
