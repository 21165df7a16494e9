#include "cli_options.h"

#include <limits>

#include "core/wide_text.h"
#include "value_format.h"

namespace fmhost::cli {
namespace {

using driver::ToUtf8;

bool ParseInteger(const std::u16string& text, int64_t low, int64_t high, int64_t& out) {
    if (text.empty() || text.size() > 12)
        return false;
    size_t i = 0;
    const bool negative = text[0] == u'-';
    if (negative)
        ++i;
    if (i == text.size())
        return false;
    int64_t value = 0;
    for (; i < text.size(); ++i) {
        if (text[i] < u'0' || text[i] > u'9')
            return false;
        value = value * 10 + (text[i] - u'0');
    }
    out = negative ? -value : value;
    return out >= low && out <= high;
}

// "A:B" with both parts integers; ":B" may be left out (b keeps its value) when `bOptional`.
bool ParsePair(const std::u16string& text, int64_t lowA, int64_t highA, int64_t lowB, int64_t highB,
               int64_t& a, int64_t& b, bool bOptional) {
    const size_t colon = text.find(u':');
    if (colon == std::u16string::npos)
        return bOptional && ParseInteger(text, lowA, highA, a);
    return ParseInteger(text.substr(0, colon), lowA, highA, a) &&
           ParseInteger(text.substr(colon + 1), lowB, highB, b);
}

}  // namespace

ParsedOptions ParseOptions(const std::vector<std::u16string>& args) {
    ParsedOptions parsed;
    Options& o = parsed.options;
    auto fail = [&](const std::string& message) {
        parsed.error = message;
        return parsed;
    };
    constexpr int64_t kShortMax = std::numeric_limits<int16_t>::max();
    constexpr int64_t kShortMin = std::numeric_limits<int16_t>::min();
    constexpr int64_t kSessionMax = 999999999999;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::u16string& arg = args[i];
        const bool hasValue = i + 1 < args.size();
        auto value = [&]() -> const std::u16string& { return args[++i]; };
        auto wide = [](const std::u16string& s) { return WideFromUtf16(s); };
        int64_t a = 0;
        int64_t b = 2;

        if (arg == u"-h" || arg == u"--help") {
            o.help = true;
        } else if (arg == u"-v" || arg == u"--verbose") {
            o.verbose = true;
        } else if (arg == u"--no-plugin") {
            o.noPlugin = true;
        } else if (arg == u"--no-file") {
            o.file = FileChoice::kNone;
        } else if (arg == u"--prompt") {
            o.prompt = true;
        } else if (arg == u"--preferences") {
            o.preferences = true;
        } else if (arg == u"--echo") {
            o.echo = true;
        } else if (!hasValue && arg.size() > 1 && arg[0] == u'-') {
            return fail("option " + ToUtf8(arg) + " needs a value (or is unknown)");
        } else if (arg == u"--plugin") {
            o.plugins.push_back(wide(value()));
        } else if (arg == u"--file") {
            o.file = FileChoice::kLocal;
            o.fileLocation = wide(value());
        } else if (arg == u"--network-file") {
            o.file = FileChoice::kNetwork;
            o.fileLocation = wide(value());
        } else if (arg == u"-e" || arg == u"--evaluate") {
            o.inputs.push_back({Input::Kind::kCalculation, value(), 0});
        } else if (arg == u"--script") {
            o.inputs.push_back({Input::Kind::kScript, value(), 0});
        } else if (arg == u"--session" || arg == u"--end-session") {
            if (!ParseInteger(value(), 1, kSessionMax, a))
                return fail(ToUtf8(arg) + " takes a session number from 1 to 999999999999");
            o.inputs.push_back(
                {arg == u"--session" ? Input::Kind::kSession : Input::Kind::kEndSession, u"",
                 static_cast<uint64_t>(a)});
        } else if (arg == u"--extension-version") {
            if (!ParseInteger(value(), kShortMin, kShortMax, a)) {
                return fail("--extension-version takes a number");
            }
            o.extensionVersion = static_cast<int16_t>(a);
        } else if (arg == u"--application-kind") {
            if (!ParseInteger(value(), 0, 255, a))
                return fail("--application-kind takes 0..255");
            o.applicationKind = static_cast<uint8_t>(a);
        } else if (arg == u"--application-version") {
            o.applicationVersion = value();
        } else if (arg == u"--threads") {
            if (!ParseInteger(value(), 1, 64, a))
                return fail("--threads takes 1..64");
            o.threads = static_cast<int>(a);
        } else if (arg == u"--warm-up") {
            if (!ParseInteger(value(), 0, 1000000, a))
                return fail("--warm-up takes 0..1000000");
            o.warmUp = static_cast<uint32_t>(a);
        } else if (arg == u"--fail-call" || arg == u"--fail-call-from-load") {
            if (!ParsePair(value(), 1, 1000000, 1, 2, a, b, true)) {
                return fail(ToUtf8(arg) + " takes N or N:CODE (CODE 1 or 2)");
            }
            o.callFault = {static_cast<uint32_t>(a), static_cast<int32_t>(b),
                           arg == u"--fail-call-from-load"};
        } else if (arg == u"--fail-register") {
            if (!ParsePair(value(), kShortMin, kShortMax, 1, kShortMax, a, b, false)) {
                return fail("--fail-register takes ID:ERROR (ERROR not 0)");
            }
            o.registrationFaults.emplace_back(static_cast<int16_t>(a), static_cast<int16_t>(b));
        } else if (arg == u"--fail-file-path") {
            if (!ParseInteger(value(), 1, kShortMax, a)) {
                return fail("--fail-file-path takes a host error number");
            }
            o.filePathFault = static_cast<int16_t>(a);
        } else {
            return fail("unknown argument " + ToUtf8(arg) + " (try --help)");
        }
    }
    if (o.noPlugin && !o.plugins.empty())
        return fail("--no-plugin and --plugin exclude each other");
    return parsed;
}

const char* UsageText() {
    return R"(usage: fmhost [options] [-e CALCULATION ...] [--script FILE ...]

Loads plug-ins the way the host application does and evaluates calculations that call them.
Each result prints on its own line as UTF-8. Without -e or --script the calculations come from
standard input: a prompt on a terminal, otherwise a script.

Plug-ins and the database:
  --plugin PATH             load this plug-in (repeatable)
  --no-plugin               load none (the ./fmhost launcher otherwise loads the built one)
  --file PATH               the calculating database; Get(FilePath) gives file:/C:/...
                            (filelinux:/... on Linux; default: Untitled.fmp12 in the current
                            folder; need not exist)
  --no-file                 no database: Get(FilePath) fails with error 100
  --network-file URL        a database on a network host: Get(FilePath) gives fmnet:/host/db
  --extension-version N     the host's extension version sent at init (default 77); a plug-in
                            importing an export newer than N is not loaded (system error 127;
                            80 on Linux)
  --application-kind N      the application kind sent at init (default 1, desktop; on Linux
                            7, server-side scripting: 4 web publishing, 9 Data API)
  --application-version V   Get(ApplicationVersion) and the version sent at init
                            (default "Pro 22.0v1"; on Linux "Server 22.0v1")
  --preferences             send the preferences message after loading (if asked for)

Calculations:
  -e, --evaluate CALC       evaluate one calculation (repeatable, in order)
  --script FILE             evaluate the calculations in FILE: blocks separated by blank
                            lines, the lines of a block joined by carriage returns
  --prompt                  read calculations from a prompt even when input is no terminal
  --threads N               evaluate every calculation from N threads at once; each thread's
                            result prints on its own line, in thread order
  --warm-up N               with --verbose, the resource report starts counting after the
                            first N calculations (what a plug-in sets up once is no growth)

Sessions (FileMaker Server keeps one per client; calculations start in session 1):
  --session N               the calculations after this run in session N: its own $$globals,
                            and the session id plug-ins read (FM_ExprEnv_SessionID)
  --end-session N           session N ends: plug-ins that ask for it get file and session
                            shutdown, and its globals go; the id may be used again after

Fault injection:
  --fail-call N[:CODE]      in every plug-in function call, the Nth FM_ call the plug-in
                            makes reports error-slot CODE (1 memory, 2 other; default 2)
                            and does nothing else
  --fail-call-from-load N[:CODE]
                            once: the Nth FM_ call counted from before the plug-ins load
  --fail-register ID:ERROR  registering function id ID fails with host error ERROR
  --fail-file-path ERROR    Get(FilePath) fails with host error ERROR

Output:
  --echo                    print each calculation, its lines prefixed "> ", before its result
  -v, --verbose             on standard error: what each plug-in answered (options, name,
                            description, init result), every register and unregister call in
                            order, the registered functions with their prototypes, shutdown
  -h, --help                this text

A calculation that fails prints "error N" (the host's error number) on standard error and
nothing on standard output; the others still run. Exit status: 0 all calculations succeeded,
1 one or more failed, 2 bad command line or unreadable script, 3 a plug-in did not load.
)";
}

}  // namespace fmhost::cli
