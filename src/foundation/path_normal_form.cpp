#include "foundation/path_normal_form.h"

#include <vector>

namespace slib {

namespace {

bool IsSeparator(char16_t c) {
    return c == u'\\' || c == u'/';
}

bool IsDriveLetter(char16_t c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

bool StartsWithDrive(std::u16string_view text) {
    return text.size() >= 2 && IsDriveLetter(text[0]) && text[1] == u':';
}

bool IsUncMarker(std::u16string_view text) {
    return text.size() == 3 && (text[0] == u'U' || text[0] == u'u') &&
           (text[1] == u'N' || text[1] == u'n') && (text[2] == u'C' || text[2] == u'c');
}

// The components of `text` between separators, empty ones left out.
std::vector<std::u16string_view> SplitComponents(std::u16string_view text) {
    std::vector<std::u16string_view> components;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = start;
        while (end < text.size() && !IsSeparator(text[end])) {
            ++end;
        }
        if (end > start) {
            components.push_back(text.substr(start, end - start));
        }
        start = end + 1;
    }
    return components;
}

// "." and ".." resolved within the components; a ".." with nothing left to remove is dropped.
std::vector<std::u16string_view> Resolve(const std::vector<std::u16string_view>& components) {
    std::vector<std::u16string_view> kept;
    for (const std::u16string_view component : components) {
        if (component == u".") {
            continue;
        }
        if (component == u"..") {
            if (!kept.empty()) {
                kept.pop_back();
            }
            continue;
        }
        kept.push_back(component);
    }
    return kept;
}

std::u16string Joined(std::u16string root, const std::vector<std::u16string_view>& components) {
    for (size_t i = 0; i < components.size(); ++i) {
        if (i > 0) {
            root += u'\\';
        }
        root.append(components[i]);
    }
    return root;
}

}  // namespace

std::u16string NormalizePath(std::u16string_view path) {
    std::vector<std::u16string_view> components = SplitComponents(path);
    const bool leadingSeparator = !path.empty() && IsSeparator(path[0]);
    const bool doubleSeparator = leadingSeparator && path.size() > 1 && IsSeparator(path[1]);

    if (doubleSeparator) {
        // "\\?\..." and "\\.\..." name the system's own namespace: a drive, "UNC", or a device.
        if (!components.empty() && (components[0] == u"?" || components[0] == u".")) {
            const std::u16string_view marker = components[0];
            components.erase(components.begin());
            if (!components.empty() && StartsWithDrive(components[0]) &&
                components[0].size() == 2) {
                const std::u16string drive(components[0]);
                components.erase(components.begin());
                return Joined(drive + u'\\', Resolve(components));
            }
            if (!components.empty() && IsUncMarker(components[0])) {
                components.erase(components.begin());
            } else {
                std::u16string device = u"\\\\" + std::u16string(marker) + u"\\";
                if (!components.empty()) {
                    device.append(components[0]);
                    device += u'\\';
                    components.erase(components.begin());
                }
                return Joined(device, Resolve(components));
            }
        }
        // UNC: the server and the share are the root; ".." never climbs above them.
        std::u16string root = u"\\\\";
        for (int part = 0; part < 2 && !components.empty(); ++part) {
            root.append(components[0]);
            root += u'\\';
            components.erase(components.begin());
        }
        return Joined(root, Resolve(components));
    }
    if (StartsWithDrive(path)) {
        const bool absolute = path.size() > 2 && IsSeparator(path[2]);
        std::u16string root(path.substr(0, 2));
        // The first component holds the drive ("C:" or, drive-relative, "C:name").
        if (components[0].size() == 2) {
            components.erase(components.begin());
        } else {
            components[0].remove_prefix(2);
        }
        return Joined(absolute ? root + u'\\' : root, Resolve(components));
    }
    return Joined(leadingSeparator ? u"\\" : u"", Resolve(components));
}

PathRoot PathRootOf(std::u16string_view normalized) {
    const std::u16string_view text = normalized;
    if (text.size() >= 2 && text[0] == u'\\' && text[1] == u'\\') {
        const bool device = text.size() >= 3 && (text[2] == u'?' || text[2] == u'.') &&
                            (text.size() == 3 || text[3] == u'\\');
        // The root ends at the separator after the share, or after the device's name.
        size_t end = device ? 3 : 1;
        for (int part = device ? 1 : 0; part < 2; ++part) {
            end = text.find(u'\\', end + 1);
            if (end == std::u16string_view::npos) {
                return {device ? PathRootKind::kDevice : PathRootKind::kUnc, text.size()};
            }
        }
        return {device ? PathRootKind::kDevice : PathRootKind::kUnc, end + 1};
    }
    if (StartsWithDrive(text)) {
        if (text.size() > 2 && text[2] == u'\\') {
            return {PathRootKind::kDrive, 3};
        }
        return {PathRootKind::kDriveRelative, 2};
    }
    if (!text.empty() && text[0] == u'\\') {
        return {PathRootKind::kRooted, 1};
    }
    return {PathRootKind::kRelative, 0};
}

bool IsAbsolutePath(std::u16string_view normalized) {
    const PathRootKind kind = PathRootOf(normalized).kind;
    return kind == PathRootKind::kDrive || kind == PathRootKind::kUnc ||
           kind == PathRootKind::kDevice;
}

std::u16string WithLongPathPrefix(const std::u16string& path) {
    const std::u16string normal = NormalizePath(path);
    switch (PathRootOf(normal).kind) {
        case PathRootKind::kDrive:
            return u"\\\\?\\" + normal;
        case PathRootKind::kUnc:
            return u"\\\\?\\UNC\\" + normal.substr(2);
        default:
            return normal;
    }
}

}  // namespace slib
