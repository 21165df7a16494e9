#include "foundation/rich_text.h"

namespace slib {

// Channels of an unset colour are leftovers, not part of the format.
bool RichFormat::operator==(const RichFormat& other) const {
    return font == other.font && size == other.size && hasColor == other.hasColor &&
           (!hasColor || (red == other.red && green == other.green && blue == other.blue)) &&
           face == other.face;
}

}  // namespace slib
