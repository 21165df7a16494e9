#include "foundation/chooser_filter.h"

namespace slib {

std::u16string AllowedFilesFilter(const std::vector<std::u16string>& extensions) {
    std::u16string filter = u"Allowed files:|";
    for (size_t i = 0; i < extensions.size(); ++i) {
        filter += i == 0 ? u"*." : u";*.";
        filter += extensions[i];
    }
    return filter + u"|";
}

std::u16string DialogFilterBuffer(const std::u16string& filter) {
    std::u16string buffer = filter;
    for (char16_t& unit : buffer) {
        if (unit == u'|') {
            unit = u'\0';
        }
    }
    // The list ends with an empty string: one more zero after the last pattern's own.
    buffer.push_back(u'\0');
    return buffer;
}

}  // namespace slib
