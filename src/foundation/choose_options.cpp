#include "foundation/choose_options.h"

#include <string>

#include "foundation/case_fold.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/utf_conversion.h"

namespace slib {
namespace {

bool IsListSeparator(char16_t unit) {
    return unit == u' ' || unit == u',' || unit == u';' || unit == u'\r' || unit == u'\n' ||
           unit == u'\t';
}

[[noreturn]] void ThrowUnknownOption(const std::u16string& name) {
    Throw(kBadParameter, "Unknown option: " + Utf16ToUtf8(name));
}

}  // namespace

std::vector<std::u16string> SplitExtensionList(const std::u16string& list) {
    std::vector<std::u16string> extensions;
    size_t at = 0;
    while (at < list.size()) {
        while (at < list.size() && IsListSeparator(list[at])) {
            ++at;
        }
        size_t end = at;
        while (end < list.size() && !IsListSeparator(list[end])) {
            ++end;
        }
        std::u16string piece = list.substr(at, end - at);
        const size_t kept = piece.find_first_not_of(u"*.");
        if (kept != std::u16string::npos) {
            extensions.push_back(piece.substr(kept));
        }
        at = end;
    }
    return extensions;
}

ChooseOptions ParseChooseOptions(const std::vector<std::u16string>& pairs) {
    ChooseOptions options;
    for (size_t at = 0; at + 1 < pairs.size(); at += 2) {
        const std::u16string& name = pairs[at];
        const std::u16string& value = pairs[at + 1];
        if (EqualsIgnoringCase(name, u"title")) {
            options.title = value.empty() ? std::nullopt : std::optional(value);
        } else if (EqualsIgnoringCase(name, u"folder")) {
            options.folderValue = value.empty() ? std::nullopt : std::optional(at + 1);
        } else if (EqualsIgnoringCase(name, u"extensions")) {
            options.extensions = SplitExtensionList(value);
        } else {
            ThrowUnknownOption(name);
        }
    }
    return options;
}

}  // namespace slib
