// A host process in miniature that has not loaded libFMWrapper.so itself: it loads the plug-in
// as the server does (every symbol bound at once) and asks it for its name (whole, and cut to a
// small buffer) and options through the Linux form of the record. Prints what the loader or the
// plug-in said; exit code 0 only when every string came back.
#include <dlfcn.h>

#include <cstdio>
#include <string>

#include "fmx_constants.h"
#include "fmx_record.h"

namespace {

std::string AskString(FmxExternCallProcFn entry, uint8_t id, uint64_t capacity) {
    char16_t buffer[256] = {};
    FmxExternCallRecord record{};
    record.extnVersion = 55;
    record.unusedID = -1;
    record.entryPoint = entry;
    record.whichCall = fmx::kMsgGetString;
    record.parm1 = id;
    record.parm3 = capacity;
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
    const std::string name = AskString(entry, fmx::kStrName, 256);
    // The host's capacity counts the terminating zero.
    const std::string cut = AskString(entry, fmx::kStrName, 8);
    const std::string options = AskString(entry, fmx::kStrOptions, 256);
    std::printf("name=%s;cut=%s;options=%s\n", name.c_str(), cut.c_str(), options.c_str());
    // Out before exit: the leak check that runs then in a sanitizer build can itself crash (its
    // tracer, seen once), and what it ends takes unflushed output with it.
    std::fflush(stdout);
    return name.empty() || cut.empty() || options.empty() ? 1 : 0;
}
