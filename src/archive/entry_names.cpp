#include "archive/entry_names.h"

#include <array>
#include <cstdint>

#include "foundation/item_name_rules.h"
#include "foundation/utf_conversion.h"

namespace archive {

namespace {

bool IsSeparator(char16_t unit) {
    return unit == u'\\' || unit == u'/';
}

char16_t FoldAsciiLetter(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

}  // namespace

std::u16string StoredNameFromRelativePath(std::u16string_view relativePath, slib::PathStyle style) {
    const char16_t separator = slib::SeparatorOf(style);
    const size_t first = relativePath.find(separator);
    std::u16string name(relativePath.substr(first == std::u16string_view::npos ? 0 : first + 1));
    for (char16_t& unit : name) {
        if (unit == separator) {
            unit = u'/';
        }
    }
    return name;
}

bool IsStoredWithoutCompression(std::u16string_view entryName) {
    static constexpr std::array<std::u16string_view, 8> kExtensions = {
        u".z", u".zip", u".zoo", u".arc", u".lzh", u".arj", u".gz", u".tgz"};
    const size_t dot = entryName.rfind(u'.');
    if (dot == std::u16string_view::npos) {
        return false;
    }
    std::u16string extension(entryName.substr(dot));
    for (char16_t& unit : extension) {
        unit = FoldAsciiLetter(unit);
    }
    for (std::u16string_view candidate : kExtensions) {
        if (extension == candidate) {
            return true;
        }
    }
    return false;
}

std::u16string SanitiseEntryName(std::u16string name) {
    static constexpr std::array<std::u16string_view, 4> kParentSteps = {u"\\..\\", u"\\../",
                                                                        u"/../", u"/..\\"};
    for (;;) {
        if (name.size() >= 2 && name[1] == u':') {
            name.erase(0, 2);
            continue;
        }
        if (!name.empty() && IsSeparator(name[0])) {
            name.erase(0, 1);
            continue;
        }
        bool stripped = false;
        for (std::u16string_view step : kParentSteps) {
            // Its last occurrence: "x\..\..\evil.txt" must not leave "..\evil.txt" behind.
            const size_t at = name.rfind(step);
            if (at != std::u16string::npos) {
                name.erase(0, at + step.size());
                stripped = true;
                break;
            }
        }
        if (!stripped) {
            return name;
        }
    }
}

std::optional<std::vector<std::u16string>> ResolveInsideFolder(std::u16string_view name) {
    std::vector<std::u16string> components;
    size_t start = 0;
    while (start <= name.size()) {
        size_t end = start;
        while (end < name.size() && !IsSeparator(name[end])) {
            ++end;
        }
        const std::u16string_view part = name.substr(start, end - start);
        if (part == u"..") {
            if (components.empty()) {
                return std::nullopt;
            }
            components.pop_back();
        } else if (!part.empty() && part != u".") {
            components.push_back(slib::MakeNameComponentUsable(part));
        }
        start = end + 1;
    }
    return components;
}

bool IsUtf8(std::string_view bytes) {
    static constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    for (size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        size_t length = 0;
        uint32_t value = 0;
        if (lead < 0x80) {
            ++at;
            continue;
        } else if (lead >= 0xC2 && lead <= 0xDF) {
            length = 2;
            value = lead & 0x1F;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            length = 3;
            value = lead & 0x0F;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            length = 4;
            value = lead & 0x07;
        } else {
            return false;
        }
        if (bytes.size() - at < length) {
            return false;
        }
        for (size_t i = 1; i < length; ++i) {
            const auto next = static_cast<unsigned char>(bytes[at + i]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            value = (value << 6) | (next & 0x3F);
        }
        if (value < kSmallest[length] || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) {
            return false;
        }
        at += length;
    }
    return true;
}

std::u16string DecodeStoredName(std::string_view bytes, bool utf8, OemDecoder decodeOem) {
    return utf8 ? slib::Utf8ToUtf16(bytes) : decodeOem(bytes);
}

}  // namespace archive
