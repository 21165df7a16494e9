#include "archive/folder_walk.h"

#include "foundation/path_style.h"

namespace archive {

std::u16string WithoutTrailingSeparators(std::u16string path) {
    const char16_t separator = slib::SeparatorOf(slib::NativePathStyle());
    while (!path.empty() && path.back() == separator) {
        path.pop_back();
    }
    return path;
}

}  // namespace archive
