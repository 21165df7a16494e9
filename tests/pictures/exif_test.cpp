// The JPEG EXIF orientation reader on unusual and broken blocks. Good blocks in both byte orders
// are read in every orientation test of VFile_Convert; crash safety on arbitrary bytes is the
// fuzzer's job (fuzz/jpeg_exif.cpp).
#include <gtest/gtest.h>

#include <string>

#include "exif_segment.h"
#include "picture/jpeg_exif.h"

namespace {

using picturetest::ExifApp1;

TEST(JpegExif, FindsTheBlockBehindOtherSegmentsAndNothingInBrokenOnes) {
    // Start of image, a JFIF APP0, a comment, a non-EXIF APP1 and a fill byte; later the scan.
    const std::string head = std::string("\xFF\xD8\xFF\xE0\x00\x07JFIF\0\xFF\xFE\x00\x03x", 16) +
                             std::string("\xFF\xE1\x00\x07http:\xFF", 10);
    const std::string scan("\xFF\xDA\x00\x02xx", 6);
    const size_t tiff = head.size() + 4 + 6;
    const std::string good = head + ExifApp1(6, true, 2) + scan;
    const auto broken = [&](size_t at, char value) {
        std::string bytes = good;
        bytes[at] = value;
        return bytes;
    };
    std::string noOrientation = broken(tiff + 8, '\x40');  // 16k entries in a short block...
    noOrientation[tiff + 10 + 2 * 12 + 1] = '\x13';        // ... none of them the orientation
    const struct {
        const char* name;
        std::string bytes;
        std::optional<uint16_t> expected;
    } cases[] = {
        {"good", good, 6},
        {"no JPEG", "GIF89a" + ExifApp1(6, false), std::nullopt},
        {"EXIF after the scan", head + scan + ExifApp1(6, false), std::nullopt},
        {"TIFF magic wrong", broken(tiff + 3, 41), std::nullopt},
        {"byte order unknown", broken(tiff, 'X'), std::nullopt},
        {"IFD beyond the block", broken(tiff + 4, '\x7F'), std::nullopt},
        {"directory beyond the block", noOrientation, std::nullopt},
        {"orientation not a short", broken(tiff + 10 + 2 * 12 + 3, 4), std::nullopt},
        {"segment beyond the file", good.substr(0, tiff + 20), std::nullopt},
        {"cut in a length", good.substr(0, 5), std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::FindJpegExifOrientation(reinterpret_cast<const uint8_t*>(c.bytes.data()),
                                                c.bytes.size()),
                  c.expected)
            << c.name;
    }
}

}  // namespace
