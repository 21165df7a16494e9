#include "foundation/data.h"

#include <string>

#include "foundation/utf16_string.h"

namespace slib {

Data::Data(const void* bytes, size_t size) {
    if (bytes != nullptr && size != 0) {
        const auto* first = static_cast<const uint8_t*>(bytes);
        bytes_.assign(first, first + size);
    }
}

std::shared_ptr<const String> Data::description() const {
    return String::FromUtf8(std::to_string(bytes_.size()) + " bytes");
}

}  // namespace slib
