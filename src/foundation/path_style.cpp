#include "foundation/path_style.h"

namespace slib {

size_t LastSeparator(std::u16string_view path, PathStyle style) {
    return path.rfind(style == PathStyle::kWindows ? u'\\' : u'/');
}

}  // namespace slib
