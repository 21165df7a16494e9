// fmhost's command line.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform_defaults.h"

namespace fmhost::cli {

enum class FileChoice { kDefault, kLocal, kNone, kNetwork };

// What the command line asks for, in its order: a calculation (-e), a script file (--script),
// a switch of session (--session) or the end of one (--end-session).
struct Input {
    enum class Kind { kCalculation, kScript, kSession, kEndSession };
    Kind kind = Kind::kCalculation;
    std::u16string value;
    uint64_t session = 0;
};

struct CallFault {
    uint32_t n = 0;  // 0: none
    int32_t code = 2;
    bool fromLoad = false;  // counted once from before the plug-ins load, else in every call
};

struct Options {
    std::vector<std::wstring> plugins;
    bool noPlugin = false;
    FileChoice file = FileChoice::kDefault;
    std::wstring fileLocation;
    int16_t extensionVersion = 77;
    uint8_t applicationKind = DefaultApplicationKind();
    std::u16string applicationVersion = DefaultApplicationVersion();
    std::vector<Input> inputs;
    bool prompt = false;
    int threads = 1;
    // Calculations evaluated before the --verbose resource report takes its starting figures.
    uint32_t warmUp = 0;
    bool preferences = false;
    bool echo = false;
    bool verbose = false;
    bool help = false;
    CallFault callFault;
    std::vector<std::pair<int16_t, int16_t>> registrationFaults;  // function id, host error
    int16_t filePathFault = 0;
};

struct ParsedOptions {
    Options options;
    std::string error;  // empty when the command line is valid
};

ParsedOptions ParseOptions(const std::vector<std::u16string>& args);
const char* UsageText();

}  // namespace fmhost::cli
