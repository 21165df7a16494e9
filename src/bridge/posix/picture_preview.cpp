// No picture engine on Linux yet: no preview, so the picture is stored without one, as on
// Windows for a picture the system cannot decode.
#include "bridge/picture_preview.h"

namespace bridge {

std::vector<uint8_t> PngPreview(const slib::Data&) {
    return {};
}

}  // namespace bridge
