// Text conversions of the file manager that need no system call.

#include "foundation/file_manager.h"

namespace slib {

std::shared_ptr<const String> FileManager::smbUrlToUncPath(const String& url) const {
    const std::u16string& text = url.units();
    if (text.compare(0, 4, u"smb:") != 0) {
        return std::make_shared<String>(text);
    }
    std::u16string unc = text.substr(4);
    for (char16_t& unit : unc) {
        if (unit == u'/') {
            unit = u'\\';
        }
    }
    return std::make_shared<String>(std::move(unc));
}

namespace {

// The letter that follows the backslash for characters that are escaped; 0 for the rest.
char16_t EscapeLetter(char16_t unit) {
    switch (unit) {
        case 7:
            return u'a';
        case 8:
            return u'b';
        case 9:
            return u't';
        case 10:
            return u'n';
        case 11:
            return u'v';
        case 12:
            return u'f';
        case 13:
            return u'r';
        case u' ':
        case u'"':
        case u'\\':
            return unit;
        default:
            return 0;
    }
}

}  // namespace

std::shared_ptr<const String> FileManager::escapeForCommandLine(const String& text) const {
    std::u16string escaped(1, u' ');
    escaped.reserve(1 + 2 * text.size());
    for (const char16_t unit : text.units()) {
        const char16_t letter = EscapeLetter(unit);
        if (letter != 0) {
            escaped += u'\\';
            escaped += letter;
        } else {
            escaped += unit;
        }
    }
    return std::make_shared<String>(std::move(escaped));
}

}  // namespace slib
