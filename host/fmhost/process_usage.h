// What the host process holds: kernel handles (open descriptors on Linux), GDI and USER objects,
// private bytes. fmhost's --verbose report shows it before the first and after the last
// calculation, so a plug-in that leaks shows up as a difference.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace fmhost::cli {

struct ProcessUsage {
    // Empty when this system cannot count them (Wine has no GetGuiResources); the error the
    // system gave is kept for the report.
    std::optional<uint32_t> handles;
    std::optional<uint32_t> gdiObjects;
    std::optional<uint32_t> userObjects;
    uint32_t guiError = 0;
    uint64_t privateBytes = 0;
};

ProcessUsage MeasureProcessUsage();

// "112 handles, 3 GDI objects, 9 USER objects, 4460544 private bytes", each count followed by
// its change since `before` when given: "113 handles (+1), ...".
std::string DescribeUsage(const ProcessUsage& now, const ProcessUsage* before);

}  // namespace fmhost::cli
