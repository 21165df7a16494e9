#pragma once
// Little-endian fields as the zip format stores them, read from and appended to byte buffers.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace archive {

inline uint16_t LoadLe16(const uint8_t* p) {
    return static_cast<uint16_t>(p[0] | (p[1] << 8));
}
inline uint32_t LoadLe32(const uint8_t* p) {
    return static_cast<uint32_t>(p[0]) | (static_cast<uint32_t>(p[1]) << 8) |
           (static_cast<uint32_t>(p[2]) << 16) | (static_cast<uint32_t>(p[3]) << 24);
}
inline uint64_t LoadLe64(const uint8_t* p) {
    return static_cast<uint64_t>(LoadLe32(p)) | (static_cast<uint64_t>(LoadLe32(p + 4)) << 32);
}

inline void StoreLe16(uint8_t* p, uint16_t value) {
    p[0] = static_cast<uint8_t>(value);
    p[1] = static_cast<uint8_t>(value >> 8);
}
inline void StoreLe32(uint8_t* p, uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        p[i] = static_cast<uint8_t>(value >> (8 * i));
    }
}
inline void StoreLe64(uint8_t* p, uint64_t value) {
    StoreLe32(p, static_cast<uint32_t>(value));
    StoreLe32(p + 4, static_cast<uint32_t>(value >> 32));
}

inline void AppendLe16(std::vector<uint8_t>& out, uint16_t value) {
    out.resize(out.size() + 2);
    StoreLe16(out.data() + out.size() - 2, value);
}
inline void AppendLe32(std::vector<uint8_t>& out, uint32_t value) {
    out.resize(out.size() + 4);
    StoreLe32(out.data() + out.size() - 4, value);
}
inline void AppendLe64(std::vector<uint8_t>& out, uint64_t value) {
    out.resize(out.size() + 8);
    StoreLe64(out.data() + out.size() - 8, value);
}

}  // namespace archive
