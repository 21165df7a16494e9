#pragma once
// Which separator a path's folders are split by. Portable rules take the style as a parameter, so
// both systems' forms are tested on either; the build's own style comes from NativePathStyle.

#include <cstddef>
#include <string_view>

namespace slib {

enum class PathStyle {
    kWindows,  // "\" (the normal form has no "/" left)
    kPosix,    // "/"; "\" is an ordinary character of a name
};

PathStyle NativePathStyle();

// "\" or "/".
char16_t SeparatorOf(PathStyle style);

// The position of the last separator of `path`, or npos.
size_t LastSeparator(std::u16string_view path, PathStyle style);

}  // namespace slib
