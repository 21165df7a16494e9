// A host process in miniature that has not loaded libFMWrapper.so itself: it loads the plug-in
// as the server does (every symbol bound at once) and asks it for its name and options through
// the Linux form of the record. Prints what the loader or the plug-in said; exit code 0 only
// when both strings came back.
#include <dlfcn.h>

#include <cstdio>
#include <string>

#include "fmx_constants.h"
#include "fmx_record.h"

namespace {

std::string AskString(FmxExternCallProcFn entry, uint8_t id) {
    char16_t buffer[256] = {};
    FmxExternCallRecord record{};
    record.extnVersion = 55;
    record.unusedID = -1;
    record.entryPoint = entry;
    record.whichCall = fmx::kMsgGetString;
    record.parm1 = id;
    record.parm3 = sizeof(buffer) / sizeof(buffer[0]);
    record.result = reinterpret_cast<uintptr_t>(buffer);
    entry(&record);
    std::string text;
    for (const char16_t* unit = buffer; *unit != 0; ++unit) {
        text += *unit < 0x80 ? static_cast<char>(*unit) : '?';
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: bare_load PLUGIN\n");
        return 2;
    }
    void* plugin = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        std::printf("not loaded: %s\n", dlerror());
        return 1;
    }
    auto entry = reinterpret_cast<FmxExternCallProcFn>(dlsym(plugin, "FMExternCallProc"));
    if (entry == nullptr) {
        std::printf("no FMExternCallProc\n");
        return 1;
    }
    const std::string name = AskString(entry, fmx::kStrName);
    const std::string options = AskString(entry, fmx::kStrOptions);
    std::printf("name=%s;options=%s\n", name.c_str(), options.c_str());
    return name.empty() || options.empty() ? 1 : 0;
}
