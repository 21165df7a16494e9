#include "picture/posix/format_codecs.h"

namespace slib {

bool AnyTranslucentPixel(const Raster& raster) {
    for (size_t i = 3; i < raster.rgba.size(); i += 4) {
        if (raster.rgba[i] != 0xFF) {
            return true;
        }
    }
    return false;
}

}  // namespace slib
