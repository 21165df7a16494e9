#include <dirent.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "foundation/unique_resource.h"
#include "process_usage.h"

namespace fmhost::cli {
namespace {

using UniqueDir = slib::UniqueResource<DIR*, &closedir>;

void CloseFile(std::FILE* file) {
    std::fclose(file);
}
using UniqueFile = slib::UniqueResource<std::FILE*, &CloseFile>;

// Open descriptors: the entries of /proc/self/fd, less the one reading it.
std::optional<uint32_t> CountDescriptors() {
    const UniqueDir folder(opendir("/proc/self/fd"));
    if (!folder)
        return std::nullopt;
    uint32_t count = 0;
    while (const dirent* entry = readdir(folder.get())) {
        if (entry->d_name[0] != '.')
            ++count;
    }
    return count > 0 ? count - 1 : 0;
}

// Private_Clean plus Private_Dirty: the pages of this process alone, as Windows counts private
// bytes.
uint64_t PrivateBytes() {
    const UniqueFile rollup(std::fopen("/proc/self/smaps_rollup", "r"));
    if (!rollup)
        return 0;
    uint64_t total = 0;
    char line[256];
    while (std::fgets(line, sizeof line, rollup.get()) != nullptr) {
        unsigned long long kilobytes = 0;
        if (std::strncmp(line, "Private_", 8) == 0 &&
            std::sscanf(std::strchr(line, ':') + 1, "%llu", &kilobytes) == 1) {
            total += kilobytes * 1024;
        }
    }
    return total;
}

}  // namespace

// Linux has no GDI or USER objects: they are reported as not counted.
ProcessUsage MeasureProcessUsage() {
    ProcessUsage usage;
    usage.handles = CountDescriptors();
    usage.guiError = ENOSYS;
    usage.privateBytes = PrivateBytes();
    return usage;
}

}  // namespace fmhost::cli
