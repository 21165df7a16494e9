#include "foundation/item_name_rules.h"

#include <array>

namespace slib {

namespace {

char16_t AsciiUpper(char16_t c) {
    return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

bool EqualsIgnoringAsciiCase(std::u16string_view text, std::u16string_view upper) {
    if (text.size() != upper.size()) {
        return false;
    }
    for (size_t i = 0; i < text.size(); ++i) {
        if (AsciiUpper(text[i]) != upper[i]) {
            return false;
        }
    }
    return true;
}

// COM and LPT take the digits 1 to 9 and, since the system maps them too, superscript 1 to 3.
bool IsPortDigit(char16_t c) {
    return (c >= u'1' && c <= u'9') || c == u'\u00B9' || c == u'\u00B2' || c == u'\u00B3';
}

bool IsDeviceStem(std::u16string_view stem) {
    static constexpr std::array<std::u16string_view, 6> kNames = {u"CON", u"PRN",    u"AUX",
                                                                  u"NUL", u"CONIN$", u"CONOUT$"};
    for (const auto name : kNames) {
        if (EqualsIgnoringAsciiCase(stem, name)) {
            return true;
        }
    }
    return stem.size() == 4 &&
           (EqualsIgnoringAsciiCase(stem.substr(0, 3), u"COM") ||
            EqualsIgnoringAsciiCase(stem.substr(0, 3), u"LPT")) &&
           IsPortDigit(stem[3]);
}

bool IsForbiddenCharacter(char16_t c) {
    return c < 0x20 || c == u'<' || c == u'>' || c == u'"' || c == u'|' || c == u'?' || c == u'*';
}

// Where the root of an absolute path ends: after "C:", or after "\\server\share" (prefixed
// forms included). The root's own text is the system's, not a name of ours to judge.
size_t RootLength(std::u16string_view path) {
    constexpr std::u16string_view kUncPrefix = u"\\\\?\\UNC\\";
    constexpr std::u16string_view kLongPrefix = u"\\\\?\\";
    size_t start = 0;
    bool unc = false;
    if (path.substr(0, kUncPrefix.size()) == kUncPrefix) {
        start = kUncPrefix.size();
        unc = true;
    } else if (path.substr(0, kLongPrefix.size()) == kLongPrefix) {
        start = kLongPrefix.size();
    } else if (path.substr(0, 2) == u"\\\\") {
        start = 2;
        unc = true;
    }
    if (unc) {
        const size_t serverEnd = path.find(u'\\', start);
        if (serverEnd == std::u16string_view::npos) {
            return path.size();
        }
        const size_t shareEnd = path.find(u'\\', serverEnd + 1);
        return shareEnd == std::u16string_view::npos ? path.size() : shareEnd;
    }
    if (path.size() >= start + 2 && path[start + 1] == u':') {
        return start + 2;
    }
    return start;
}

}  // namespace

size_t ReservedDeviceStem(std::u16string_view component) {
    // The system reads the name up to its first "." (or ":"), less trailing spaces, as the stem:
    // "aux.txt", "AUX .log" and "aux" all open the device.
    size_t stemEnd = component.find_first_of(u".:");
    if (stemEnd == std::u16string_view::npos) {
        stemEnd = component.size();
    }
    size_t trimmed = stemEnd;
    while (trimmed > 0 && component[trimmed - 1] == u' ') {
        --trimmed;
    }
    return IsDeviceStem(component.substr(0, trimmed)) ? trimmed : 0;
}

NameProblem CheckNameComponent(std::u16string_view component) {
    if (component.empty()) {
        return NameProblem::kEmpty;
    }
    if (component.find(u'\0') != std::u16string_view::npos) {
        return NameProblem::kNul;
    }
    for (const char16_t c : component) {
        if (IsForbiddenCharacter(c)) {
            return NameProblem::kForbiddenCharacter;
        }
    }
    if (component.find(u':') != std::u16string_view::npos) {
        return NameProblem::kColon;
    }
    if (component.back() == u'.' || component.back() == u' ') {
        return NameProblem::kTrailingDotOrSpace;
    }
    if (ReservedDeviceStem(component) != 0) {
        return NameProblem::kReservedDevice;
    }
    return NameProblem::kNone;
}

std::optional<UnusableComponent> FindUnusableComponent(std::u16string_view path) {
    size_t start = RootLength(path);
    while (start < path.size()) {
        if (path[start] == u'\\') {
            ++start;
            continue;
        }
        size_t end = path.find(u'\\', start);
        if (end == std::u16string_view::npos) {
            end = path.size();
        }
        const std::u16string_view component = path.substr(start, end - start);
        const NameProblem problem = CheckNameComponent(component);
        if (problem != NameProblem::kNone) {
            return UnusableComponent{std::u16string(component), problem};
        }
        start = end;
    }
    return std::nullopt;
}

std::u16string MakeNameComponentUsable(std::u16string_view component) {
    std::u16string usable(component);
    for (char16_t& c : usable) {
        if (c != u'\0' && (IsForbiddenCharacter(c) || c == u':')) {
            c = u'_';
        }
    }
    for (size_t i = usable.size(); i > 0 && (usable[i - 1] == u'.' || usable[i - 1] == u' '); --i) {
        usable[i - 1] = u'_';
    }
    if (const size_t stem = ReservedDeviceStem(usable); stem != 0) {
        usable.insert(stem, 1, u'_');
    }
    return usable;
}

}  // namespace slib
