#include "process_usage.h"

#include <string>

namespace fmhost::cli {

namespace {

std::string Change(uint64_t now, uint64_t before) {
    const int64_t change = static_cast<int64_t>(now) - static_cast<int64_t>(before);
    return " (" + std::string(change >= 0 ? "+" : "") + std::to_string(change) + ")";
}

std::string Count(const std::optional<uint32_t>& now, const std::optional<uint32_t>* before,
                  const char* what, uint32_t error) {
    if (!now) {
        return std::string(what) + " not counted here (system error " + std::to_string(error) + ")";
    }
    std::string text = std::to_string(*now) + " " + what;
    if (before != nullptr && *before) {
        text += Change(*now, **before);
    }
    return text;
}

}  // namespace

std::string DescribeUsage(const ProcessUsage& now, const ProcessUsage* before) {
    std::string text = Count(now.handles, before ? &before->handles : nullptr, "handles", 0);
    text += ", " + Count(now.gdiObjects, before ? &before->gdiObjects : nullptr, "GDI objects",
                         now.guiError);
    text += ", " + Count(now.userObjects, before ? &before->userObjects : nullptr, "USER objects",
                         now.guiError);
    text += ", " + std::to_string(now.privateBytes) + " private bytes";
    if (before != nullptr) {
        text += Change(now.privateBytes, before->privateBytes);
    }
    return text;
}

}  // namespace fmhost::cli
