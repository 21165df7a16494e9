#include "archive/read_ahead_source.h"

#include <algorithm>
#include <cstring>

namespace archive {

bool ReadAheadSource::readAt(uint64_t offset, uint8_t* buffer, size_t length) {
    const uint64_t size = source_.size();
    if (length > kLargestCachedRead || offset > size || length > size - offset) {
        return source_.readAt(offset, buffer, length);
    }
    const bool inWindow = offset >= windowOffset_ && offset - windowOffset_ <= window_.size() &&
                          length <= window_.size() - (offset - windowOffset_);
    if (!inWindow) {
        window_.resize(static_cast<size_t>(std::min<uint64_t>(kWindowSize, size - offset)));
        windowOffset_ = offset;
        if (!source_.readAt(offset, window_.data(), window_.size())) {
            window_.clear();
            return source_.readAt(offset, buffer, length);
        }
    }
    std::memcpy(buffer, window_.data() + (offset - windowOffset_), length);
    return true;
}

}  // namespace archive
