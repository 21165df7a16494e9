#include "exif_segment.h"

namespace picturetest {
namespace {

class Writer {
  public:
    explicit Writer(bool bigEndian) : bigEndian_(bigEndian) {}
    void u16(uint32_t value) {
        const char high = static_cast<char>((value >> 8) & 0xFF);
        const char low = static_cast<char>(value & 0xFF);
        bytes_ += bigEndian_ ? std::string{high, low} : std::string{low, high};
    }
    void u32(uint32_t value) {
        bigEndian_ ? (u16(value >> 16), u16(value & 0xFFFF))
                   : (u16(value & 0xFFFF), u16(value >> 16));
    }
    std::string& bytes() { return bytes_; }

  private:
    bool bigEndian_;
    std::string bytes_;
};

}  // namespace

std::string ExifApp1(uint16_t orientation, bool bigEndian, int entriesBefore) {
    Writer tiff(bigEndian);
    tiff.bytes() = bigEndian ? "MM" : "II";
    tiff.u16(42);
    tiff.u32(8);  // IFD0 right after the header
    tiff.u16(static_cast<uint32_t>(entriesBefore + 1));
    for (int i = 0; i < entriesBefore; ++i) {
        tiff.u16(0x010F + static_cast<uint32_t>(i));  // make, model, ...: a long value each
        tiff.u16(4);
        tiff.u32(1);
        tiff.u32(0);
    }
    tiff.u16(0x0112);
    tiff.u16(3);  // SHORT
    tiff.u32(1);
    tiff.u16(orientation);
    tiff.u16(0);  // the rest of the 4-byte value field
    tiff.u32(0);  // no next IFD
    const std::string payload = std::string("Exif\0\0", 6) + tiff.bytes();
    const size_t length = payload.size() + 2;
    return std::string("\xFF\xE1", 2) + static_cast<char>(length >> 8) +
           static_cast<char>(length & 0xFF) + payload;
}

std::string SpliceAfterStart(const std::string& jpeg, const std::string& segment) {
    return jpeg.substr(0, 2) + segment + jpeg.substr(2);
}

}  // namespace picturetest
