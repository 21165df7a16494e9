#include "foundation/font.h"

#include "foundation/utf16_string.h"

namespace slib {

std::shared_ptr<const String> Font::description() const {
    return std::make_shared<String>(name_);
}

}  // namespace slib
