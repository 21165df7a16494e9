#include "foundation/path_style.h"

namespace slib {

PathStyle NativePathStyle() {
    return PathStyle::kWindows;
}

}  // namespace slib
