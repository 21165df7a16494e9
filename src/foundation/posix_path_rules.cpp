#include "foundation/posix_path_rules.h"

#include <vector>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

namespace {

bool StartsWith(std::u16string_view text, std::u16string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// The path below `anchor`, text that may not climb out of it.
std::u16string BelowAnchor(const Path& anchor, const std::u16string& relative) {
    if (anchor.isDefaultAnchor()) {
        Throw(kBadParameter, "Relative paths are not supported in Webdirect.");
    }
    const std::u16string below = NormalizePosixPath(relative);
    if (below.empty() || below == u".") {
        return NormalizePosixPath(anchor.text());
    }
    return NormalizePosixPath(anchor.text() + u"/" + below);
}

}  // namespace

std::u16string NormalizePosixPath(std::u16string_view path) {
    const bool absolute = StartsWith(path, u"/");
    std::vector<std::u16string_view> names;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find(u'/', start);
        if (end == std::u16string_view::npos) {
            end = path.size();
        }
        const std::u16string_view name = path.substr(start, end - start);
        if (name == u"..") {
            if (!names.empty()) {
                names.pop_back();
            }
        } else if (!name.empty() && name != u".") {
            names.push_back(name);
        }
        start = end + 1;
    }
    std::u16string normal = absolute ? u"/" : u"";
    for (size_t index = 0; index < names.size(); ++index) {
        normal += names[index];
        if (index + 1 < names.size()) {
            normal += u'/';
        }
    }
    return normal.empty() ? std::u16string(u".") : normal;
}

std::u16string ParsePosixPath(const std::u16string& text, const Path& anchor,
                              const PathSystem& system) {
    if (StartsWith(text, u"~")) {
        return NormalizePosixPath(system.profileFolder() + u"/" + text.substr(1));
    }
    constexpr std::u16string_view kUrlPrefix = u"file://";
    if (StartsWith(text, kUrlPrefix)) {
        return NormalizePosixPath(u"/" + text.substr(kUrlPrefix.size()));
    }
    if (StartsWith(text, u"/")) {
        return NormalizePosixPath(text);
    }
    return BelowAnchor(anchor, text);
}

std::u16string FormatPosixPath(const std::u16string& path, int style, const Path& anchor,
                               const PathSystem& system) {
    if ((style & PathStyle::kRelative) != 0 && !anchor.isDefaultAnchor()) {
        const std::u16string base = NormalizePosixPath(anchor.text());
        if (path == base) {
            return u".";
        }
        const std::u16string prefix = base == u"/" ? base : base + u"/";
        if (StartsWith(path, prefix)) {
            // Fed back, "~name" would mean the home folder: "./" keeps it a name below the anchor.
            const std::u16string below = path.substr(prefix.size());
            return below[0] == u'~' ? u"./" + below : below;
        }
    }
    switch (style & 0x0F) {
        case PathStyle::kUrl:
            return u"file://" + path;
        case PathStyle::kHost: {
            const bool folder = path != u"/" && system.isExistingFolder(path);
            return u"filelinux:" + path + (folder ? u"/" : u"");
        }
        default:
            return path;
    }
}

}  // namespace slib
