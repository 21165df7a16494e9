#include "foundation/file_contents_rules.h"

#include <algorithm>

#include "foundation/error_codes.h"
#include "foundation/exception.h"

namespace slib {

int64_t AbsoluteOffset(FilePosition position, uint64_t size, bool forReading) {
    int64_t offset = position.offset;
    if (position.fromEnd == 1) {
        offset += static_cast<int64_t>(size) - (forReading ? 1 : 0);
    }
    return std::max<int64_t>(offset, 0);
}

void ThrowTooLargeToRead() {
    Throw(kBadParameter, "File is too large to read into one value (4 GiB or more)");
}

}  // namespace slib
