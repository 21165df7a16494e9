#include "foundation/path.h"

#include <algorithm>

#include "foundation/case_fold.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/path_normal_form.h"
#include "foundation/utf16_string.h"

namespace slib {

namespace {

bool StartsWith(const std::u16string& text, std::u16string_view prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

bool IsDriveAt(const std::u16string& text, size_t at) {
    return text.size() >= at + 2 && text[at + 1] == u':' &&
           ((text[at] >= u'A' && text[at] <= u'Z') || (text[at] >= u'a' && text[at] <= u'z'));
}

// The path a "file://" URL names, given what follows "file://" (separators already "\"):
// "C:\x" and "\C:\x" a drive path, "\\server\share" (from "file:////server/share") a UNC path,
// "\x" a rooted one, and "server\share\x" the host form "file://server/share/x" of a UNC path.
std::u16string UrlTarget(const std::u16string& rest) {
    if (rest.size() == 2 && IsDriveAt(rest, 0)) {
        return rest + u"\\";  // "file://C:", a root that lost its "/" as results do
    }
    if (StartsWith(rest, u"\\\\") || IsDriveAt(rest, 0)) {
        return rest;
    }
    if (StartsWith(rest, u"\\")) {
        return IsDriveAt(rest, 1) ? rest.substr(1) : rest;
    }
    return u"\\\\" + rest;
}

// The root ("C:\", "\\server\share\") of the anchor's drive or share; drive C: without one.
std::u16string AnchorRoot(const Path& anchor) {
    if (!anchor.isDefaultAnchor()) {
        const std::u16string normal = NormalizePath(anchor.text());
        if (IsAbsolutePath(normal)) {
            return normal.substr(0, PathRootOf(normal).length);
        }
    }
    return u"C:\\";
}

// A relative text (normal form, so no leading "..") below the anchor folder. The anchor's own
// ".." steps never apply to it: a relative path always stays inside the anchor.
std::u16string JoinToAnchor(const Path& anchor, const std::u16string& relative) {
    if (anchor.isDefaultAnchor()) {
        Throw(kBadParameter, "Relative paths are not supported in Webdirect.");
    }
    return NormalizePath(anchor.text() + u"\\" + relative);
}

}  // namespace

std::shared_ptr<Path> Path::Parse(const std::u16string& text, const Path& anchor,
                                  const PathSystem& system) {
    if (StartsWith(text, u"~")) {
        return std::make_shared<Path>(
            NormalizePath(system.profileFolder() + u"\\" + text.substr(1)));
    }
    std::u16string native = text;
    std::replace(native.begin(), native.end(), u'/', u'\\');

    constexpr std::u16string_view kShortPrefix = u"fsspec:";
    if (StartsWith(native, kShortPrefix)) {
        const std::u16string shortForm = NormalizePath(native.substr(kShortPrefix.size()));
        const auto longForm = system.longPathName(shortForm);
        return std::make_shared<Path>(longForm ? NormalizePath(*longForm) : std::u16string());
    }
    constexpr std::u16string_view kUrlPrefix = u"file:\\\\";
    constexpr std::u16string_view kHostPrefix = u"file:\\";
    if (StartsWith(native, kUrlPrefix)) {
        native = UrlTarget(native.substr(kUrlPrefix.size()));
    } else if (StartsWith(native, kHostPrefix) && IsDriveAt(native, kHostPrefix.size())) {
        // The host's own form of a drive that is not mounted here: still that drive's path.
        native.erase(0, kHostPrefix.size());
    }
    const std::u16string normal = NormalizePath(native);
    const PathRoot root = PathRootOf(normal);
    switch (root.kind) {
        case PathRootKind::kRooted:
            return std::make_shared<Path>(AnchorRoot(anchor) + normal.substr(1));
        case PathRootKind::kDriveRelative: {
            // "C:a.txt": below the anchor when it lies on that drive, else below the drive's root.
            const std::u16string rest = normal.substr(2);
            const std::u16string anchorRoot = AnchorRoot(anchor);
            if (!anchor.isDefaultAnchor() &&
                EqualsIgnoringCase(anchorRoot, normal.substr(0, 2) + u"\\")) {
                return std::make_shared<Path>(JoinToAnchor(anchor, rest));
            }
            return std::make_shared<Path>(NormalizePath(normal.substr(0, 2) + u"\\" + rest));
        }
        case PathRootKind::kRelative:
            return std::make_shared<Path>(JoinToAnchor(anchor, normal));
        default:
            return std::make_shared<Path>(normal);
    }
}

std::shared_ptr<const String> Path::description() const {
    return std::make_shared<String>(text_);
}

}  // namespace slib
