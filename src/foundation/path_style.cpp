#include "foundation/path_style.h"

namespace slib {

char16_t SeparatorOf(PathStyle style) {
    return style == PathStyle::kWindows ? u'\\' : u'/';
}

size_t LastSeparator(std::u16string_view path, PathStyle style) {
    return path.rfind(SeparatorOf(style));
}

}  // namespace slib
