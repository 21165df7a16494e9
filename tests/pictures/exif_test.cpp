// The JPEG EXIF orientation reader on good, unusual and broken blocks (its crash safety on
// arbitrary bytes is the fuzzer's job: fuzz/jpeg_exif.cpp).
#include <gtest/gtest.h>

#include <string>

#include "exif_segment.h"
#include "picture/jpeg_exif.h"

namespace {

using picturetest::ExifApp1;
using picturetest::SpliceAfterStart;

// Start of image, a JFIF APP0, then the start of scan and some scan data.
const std::string kJpeg = std::string("\xFF\xD8\xFF\xE0\x00\x07JFIF\0\xFF\xDA\x00\x02xx", 17);
constexpr size_t kTiff = 2 + 4 + 6;  // where the TIFF header starts once spliced in

std::optional<uint16_t> Read(const std::string& bytes) {
    return slib::FindJpegExifOrientation(reinterpret_cast<const uint8_t*>(bytes.data()),
                                         bytes.size());
}

TEST(JpegExif, ReadsEveryOrientationInBothByteOrdersBehindOtherSegments) {
    const std::string others = std::string(
                                   "\xFF\xFE\x00\x05"
                                   "abc",
                                   7) +  // a comment
                               std::string(
                                   "\xFF\xE1\x00\x07"
                                   "http:",
                                   9) +     // APP1, no EXIF
                               "\xFF\xFF";  // a fill byte
    for (const bool bigEndian : {false, true}) {
        for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
            EXPECT_EQ(Read(SpliceAfterStart(kJpeg, others + ExifApp1(orientation, bigEndian, 3))),
                      orientation);
        }
    }
}

TEST(JpegExif, AnswersNothingForMissingOrBrokenData) {
    const std::string good = SpliceAfterStart(kJpeg, ExifApp1(6, true, 2));
    const auto broken = [&](size_t at, char value) {
        std::string bytes = good;
        bytes[at] = value;
        return bytes;
    };
    std::string noOrientation = broken(kTiff + 8, '\x40');  // 16k entries in a short block...
    noOrientation[kTiff + 10 + 2 * 12 + 1] = '\x13';        // ... none of them the orientation
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"no JPEG", "GIF89a" + ExifApp1(6, false)},
        {"no EXIF", kJpeg},
        {"EXIF after the scan", kJpeg + ExifApp1(6, false)},
        {"TIFF magic wrong", broken(kTiff + 3, 41)},
        {"byte order unknown", broken(kTiff, 'X')},
        {"IFD beyond the block", broken(kTiff + 4, '\x7F')},
        {"directory beyond the block", noOrientation},
        {"orientation not a short", broken(kTiff + 10 + 2 * 12 + 3, 4)},
        {"segment beyond the file", good.substr(0, kTiff + 20)},
        {"cut in a length", good.substr(0, 5)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Read(c.bytes), std::nullopt) << c.name;
    }
}

}  // namespace
