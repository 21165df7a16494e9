// Inflating the compressed file stream (ZLIB) of a container.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bridge {

// zlib or gzip framing, told apart by the header. Damaged or truncated data throws -50
// "Compressed data in container is damaged"; more than 4 GiB - 1 bytes throws -50 as well.
std::vector<uint8_t> InflateStream(const uint8_t* bytes, size_t size);

}  // namespace bridge
