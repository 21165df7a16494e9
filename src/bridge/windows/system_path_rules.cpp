#include "bridge/system_path_rules.h"

namespace bridge {

std::shared_ptr<slib::Path> ParseSystemPath(const std::u16string& text, const slib::Path& anchor) {
    return slib::Path::Parse(text, anchor);
}

std::shared_ptr<const slib::String> FormatSystemPath(const slib::Path& path, int style,
                                                     const slib::Path& anchor) {
    return path.format(style, anchor);
}

}  // namespace bridge
