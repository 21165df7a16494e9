#include "foundation/path.h"

#include <algorithm>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/utf16_string.h"

namespace slib {

namespace {

bool StartsWith(const std::u16string& text, std::u16string_view prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

// Joins a relative text to the anchor folder. Leading "..\" steps cut the base at the last "\"
// found searching backwards from index 1 only, so a drive-rooted base such as "C:\Data\" is never
// cut and the step is simply dropped; callers rely on relative paths staying inside the anchor.
std::u16string JoinToAnchor(std::u16string base, std::u16string relative,
                            const PathSystem& system) {
    if (base.empty() || base.back() != u'\\') {
        base += u'\\';
    }
    for (;;) {
        if (StartsWith(relative, u"..\\")) {
            relative.erase(0, 3);
            const size_t cut = base.rfind(u'\\', 1);
            if (cut != std::u16string::npos) {
                base.erase(cut);
            }
        } else if (StartsWith(relative, u".\\")) {
            relative.erase(0, 2);
        } else {
            break;
        }
    }
    std::u16string joined = base + relative;
    // A result beyond the classic limit cannot be canonicalised; keep it whole rather than lose it.
    return system.canonicalize(joined).value_or(joined);
}

}  // namespace

std::shared_ptr<Path> Path::Parse(const std::u16string& text, const Path& anchor,
                                  const PathSystem& system) {
    if (text == u".") {
        return std::make_shared<Path>(anchor.text());
    }
    if (StartsWith(text, u"~")) {
        return std::make_shared<Path>(system.profileFolder() + text.substr(1));
    }
    std::u16string native = text;
    std::replace(native.begin(), native.end(), u'/', u'\\');

    const bool driveAbsolute = native.size() >= 3 && native[1] == u':' && native[2] == u'\\';
    if (driveAbsolute) {
        return std::make_shared<Path>(std::move(native));
    }
    if (StartsWith(native, u"\\")) {
        return std::make_shared<Path>(u"C:" + native);
    }
    constexpr std::u16string_view kUrlPrefix = u"file:\\\\";
    if (StartsWith(native, kUrlPrefix)) {
        return std::make_shared<Path>(native.substr(kUrlPrefix.size()));
    }
    constexpr std::u16string_view kShortPrefix = u"fsspec:";
    if (StartsWith(native, kShortPrefix)) {
        const std::u16string shortForm = native.substr(kShortPrefix.size());
        return std::make_shared<Path>(system.longPathName(shortForm).value_or(std::u16string()));
    }
    if (anchor.isDefaultAnchor()) {
        Throw(kBadParameter, "Relative paths are not supported in Webdirect.");
    }
    return std::make_shared<Path>(JoinToAnchor(anchor.text(), std::move(native), system));
}

std::shared_ptr<const String> Path::description() const {
    return std::make_shared<String>(text_);
}

}  // namespace slib
