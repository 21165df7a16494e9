// The JPEG EXIF orientation reader on well-formed, unusual and broken blocks.
#include <gtest/gtest.h>

#include <string>

#include "exif_segment.h"
#include "picture/jpeg_exif.h"

namespace {

using picturetest::ExifApp1;
using picturetest::SpliceAfterStart;

// Start of image, a JFIF APP0, then start of scan and some scan data.
const std::string kJpeg = std::string("\xFF\xD8", 2) + "\xFF\xE0" + std::string("\x00\x07", 2) +
                          "JFIF\0" + std::string("\xFF\xDA\x00\x04\x01\x02", 6) + "data";

std::optional<uint16_t> Read(const std::string& bytes) {
    return slib::FindJpegExifOrientation(reinterpret_cast<const uint8_t*>(bytes.data()),
                                         bytes.size());
}

TEST(JpegExif, ReadsEveryOrientationInBothByteOrders) {
    for (const bool bigEndian : {false, true}) {
        for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
            SCOPED_TRACE(std::to_string(orientation) + (bigEndian ? " MM" : " II"));
            EXPECT_EQ(Read(SpliceAfterStart(kJpeg, ExifApp1(orientation, bigEndian, 3))),
                      orientation);
        }
    }
}

TEST(JpegExif, FindsTheBlockBehindOtherSegmentsAndFillBytes) {
    const std::string comment = std::string("\xFF\xFE\x00\x05", 4) + "abc";
    const std::string xmp = std::string("\xFF\xE1\x00\x08", 4) + "http:";  // APP1, not EXIF
    const std::string jpeg =
        SpliceAfterStart(kJpeg, comment + xmp + "\xFF\xFF" + ExifApp1(6, false));
    EXPECT_EQ(Read(jpeg), 6);
}

TEST(JpegExif, AnswersNothingForMissingOrBrokenData) {
    const std::string exif = ExifApp1(6, true, 2);
    const std::string good = SpliceAfterStart(kJpeg, exif);
    std::string badMagic = good;
    badMagic[2 + 4 + 6 + 3] = 41;  // 42 is TIFF's magic number (big-endian: second byte)
    std::string farIfd = good;
    farIfd[2 + 4 + 6 + 4] = '\x7F';  // IFD0 offset beyond the block
    std::string manyEntries = good;
    manyEntries[2 + 4 + 6 + 8] = '\x40';  // 16k entries in a block of a few dozen bytes ...
    manyEntries[2 + 4 + 6 + 10 + 2 * 12 + 1] = '\x13';  // ... and none of them the orientation
    std::string wrongType = SpliceAfterStart(kJpeg, ExifApp1(6, false, 0));
    wrongType[2 + 4 + 6 + 8 + 2 + 2] = 4;        // the orientation entry claims type LONG
    const std::string afterScan = kJpeg + exif;  // metadata after the image data is not read

    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {
        {"empty", ""},
        {"no JPEG", "GIF89a" + exif},
        {"JPEG without EXIF", kJpeg},
        {"after the scan", afterScan},
        {"TIFF magic wrong", badMagic},
        {"IFD beyond the block", farIfd},
        {"entries beyond the block", manyEntries},
        {"orientation not a short", wrongType},
        {"segment longer than the file", good.substr(0, 2 + exif.size() - 10)},
        {"cut in the length field", good.substr(0, 5)},
        {"byte order unknown",
         SpliceAfterStart(kJpeg, std::string("\xFF\xE1\x00\x10", 4) +
                                     std::string("Exif\0\0XX*\0\0\0\0\x08", 14))},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Read(c.bytes), std::nullopt) << c.name;
    }
    // Every truncation of a good file is safe (the sanitizers watch the reads).
    for (size_t length = 0; length < good.size(); ++length) {
        const std::optional<uint16_t> found = Read(good.substr(0, length));
        EXPECT_TRUE(!found || *found == 6) << length;
    }
    EXPECT_EQ(slib::FindJpegExifOrientation(nullptr, 100), std::nullopt);
}

}  // namespace
