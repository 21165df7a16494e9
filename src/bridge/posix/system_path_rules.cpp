#include "bridge/system_path_rules.h"

#include "foundation/posix_path_rules.h"

namespace bridge {

std::shared_ptr<slib::Path> ParseSystemPath(const std::u16string& text, const slib::Path& anchor) {
    return std::make_shared<slib::Path>(
        slib::ParsePosixPath(text, anchor, slib::DefaultPathSystem()));
}

std::shared_ptr<const slib::String> FormatSystemPath(const slib::Path& path, int style,
                                                     const slib::Path& anchor) {
    return std::make_shared<const slib::String>(
        slib::FormatPosixPath(path.text(), style, anchor, slib::DefaultPathSystem()));
}

}  // namespace bridge
