#include "exif_segment.h"

namespace picturetest {

std::string ExifApp1(uint16_t orientation, bool bigEndian, int entriesBefore) {
    std::string tiff = bigEndian ? "MM" : "II";
    const auto put = [&](uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            const int shift = 8 * (bigEndian ? bytes - 1 - i : i);
            tiff += static_cast<char>((value >> shift) & 0xFF);
        }
    };
    put(42, 2);
    put(8, 4);  // IFD0 right after the header
    put(static_cast<uint32_t>(entriesBefore + 1), 2);
    for (int i = 0; i < entriesBefore; ++i) {
        put(0x010F + static_cast<uint32_t>(i), 2);  // make, model, ...: one LONG each
        put(4, 2);
        put(1, 4);
        put(0, 4);
    }
    put(0x0112, 2);
    put(3, 2);  // SHORT
    put(1, 4);
    put(orientation, 2);
    put(0, 2);  // the rest of the value field
    put(0, 4);  // no next IFD
    const std::string payload = std::string("Exif\0\0", 6) + tiff;
    const size_t length = payload.size() + 2;
    return std::string("\xFF\xE1", 2) + static_cast<char>(length >> 8) +
           static_cast<char>(length & 0xFF) + payload;
}

std::string SpliceAfterStart(const std::string& jpeg, const std::string& segment) {
    return jpeg.substr(0, 2) + segment + jpeg.substr(2);
}

}  // namespace picturetest
