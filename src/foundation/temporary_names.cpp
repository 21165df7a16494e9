#include "foundation/temporary_names.h"

#include <algorithm>
#include <atomic>
#include <cstdint>

#include "foundation/process_number.h"

namespace slib {

namespace {

constexpr char16_t kPrefix[] = u"~vf-";

std::atomic<uint32_t> nameCount{0};

std::u16string Digits(uint32_t value) {
    const std::string text = std::to_string(value);
    return std::u16string(text.begin(), text.end());
}

bool AllDigits(const std::u16string& text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

std::u16string NameBeside(const std::u16string& path, const std::u16string& suffix,
                          PathStyle style) {
    const size_t separator = LastSeparator(path, style);
    const std::u16string folder =
        separator == std::u16string::npos ? std::u16string() : path.substr(0, separator + 1);
    return folder + kPrefix + Digits(CurrentProcessNumber()) + u"-" + Digits(nameCount++) + suffix;
}

bool IsNameOfOurs(const std::u16string& name, const std::u16string& suffix) {
    const std::u16string prefix(kPrefix);
    if (name.size() <= prefix.size() + suffix.size() || name.compare(0, prefix.size(), prefix) ||
        name.compare(name.size() - suffix.size(), suffix.size(), suffix)) {
        return false;
    }
    const std::u16string middle =
        name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    const size_t dash = middle.find(u'-');
    return dash != std::u16string::npos && AllDigits(middle.substr(0, dash)) &&
           AllDigits(middle.substr(dash + 1));
}

std::u16string TemporaryNameBeside(const std::u16string& target, PathStyle style) {
    return NameBeside(target, kTemporarySuffix, style);
}

bool IsTemporaryName(const std::u16string& name) {
    return IsNameOfOurs(name, kTemporarySuffix);
}

}  // namespace slib
