#include "foundation/path.h"

#include <algorithm>
#include <optional>

#include "foundation/case_fold.h"
#include "foundation/path_normal_form.h"
#include "foundation/utf16_string.h"

namespace slib {

namespace {

std::u16string WithSlashes(std::u16string text) {
    std::replace(text.begin(), text.end(), u'\\', u'/');
    return text;
}

// The path below the anchor folder, "." for the anchor itself, none when it lies elsewhere.
std::optional<std::u16string> RelativeToAnchor(const std::u16string& path, const Path& anchor) {
    if (anchor.isDefaultAnchor() || anchor.text().empty()) {
        return std::nullopt;
    }
    std::u16string base = NormalizePath(anchor.text());
    if (base.empty() || base.back() != u'\\') {
        base += u'\\';
    }
    const std::u16string_view baseWithoutSeparator(base.data(), base.size() - 1);
    if (EqualsIgnoringCase(path, base) || EqualsIgnoringCase(path, baseWithoutSeparator)) {
        return u".";
    }
    if (StartsWithIgnoringCase(path, base)) {
        // Fed back, "~name" would mean the profile folder: ".\" keeps it a name below the anchor.
        const std::u16string below = path.substr(base.size());
        return below[0] == u'~' ? u".\\" + below : below;
    }
    return std::nullopt;
}

// The drive is dropped only where the rooted form leads back to it: on the anchor's drive (drive
// C: without an anchor). Other drives and UNC paths keep their root.
std::u16string UnixFull(const std::u16string& native, const Path& anchor) {
    const PathRoot root = PathRootOf(native);
    if (root.kind != PathRootKind::kDrive) {
        return WithSlashes(native);
    }
    std::u16string anchorDrive = u"C:";
    if (!anchor.isDefaultAnchor()) {
        const std::u16string anchorPath = NormalizePath(anchor.text());
        const bool onDrive = PathRootOf(anchorPath).kind == PathRootKind::kDrive;
        anchorDrive = onDrive ? anchorPath.substr(0, 2) : std::u16string();
    }
    if (!EqualsIgnoringCase(std::u16string_view(native).substr(0, 2), anchorDrive)) {
        return WithSlashes(native);
    }
    return WithSlashes(native.substr(2));
}

std::u16string HostSyntax(const std::u16string& native, const PathSystem& system) {
    // A UNC path keeps its own "//": "file://server/share/a.txt".
    std::u16string text = WithSlashes(native);
    if (PathRootOf(native).kind != PathRootKind::kUnc) {
        text.insert(0, 1, u'/');
    }
    if (system.isExistingFolder(native) && text.back() != u'/') {
        text += u'/';
    }
    return u"file:" + text;
}

std::u16string FormText(const std::u16string& native, int style, const Path& anchor,
                        const PathSystem& system) {
    switch (style) {
        case PathStyle::kUnix:
            return UnixFull(native, anchor);
        case PathStyle::kUrl:
            return u"file://" + WithSlashes(native);
        case PathStyle::kShort:
            return system.shortPathName(native).value_or(native);
        case PathStyle::kRelative | PathStyle::kNative:
        case PathStyle::kRelative | PathStyle::kWindows:
            return RelativeToAnchor(native, anchor).value_or(native);
        case PathStyle::kRelative | PathStyle::kUnix:
            return WithSlashes(RelativeToAnchor(native, anchor).value_or(native));
        default:  // kNative, kWindows and any unknown style
            return native;
    }
}

// Results longer than a root lose one trailing "/" and then one trailing "\".
std::u16string WithoutTrailingSeparator(std::u16string text) {
    if (text.size() > 3) {
        if (text.back() == u'/') {
            text.pop_back();
        }
        if (text.back() == u'\\') {
            text.pop_back();
        }
    }
    return text;
}

}  // namespace

std::shared_ptr<const String> Path::format(int style, const Path& anchor,
                                           const PathSystem& system) const {
    if (style == PathStyle::kNative) {
        return std::make_shared<String>(text_);
    }
    if (style == PathStyle::kHost) {
        return std::make_shared<String>(HostSyntax(text_, system));
    }
    return std::make_shared<String>(
        WithoutTrailingSeparator(FormText(text_, style, anchor, system)));
}

}  // namespace slib
