// Bytes that are no picture, a picture cut short or damaged, a format Linux has no decoder for,
// and headers declaring sizes beyond the converter's limits: each gets its defined answer from
// both the decoder and the header reader, and a huge size is refused before memory is taken.
#include <gtest/gtest.h>
#include <zlib.h>

#include <string>
#include <vector>

#include "codec_test_support.h"
#include "picture/posix/picture_codecs.h"

namespace {

using codectest::Failure;
using Bytes = std::vector<uint8_t>;

constexpr char kNotAPicture[] = "-50 This is not a picture.";
constexpr char kDamaged[] = "-50 Picture data is damaged";
constexpr char kTooLarge[] = "-50 Cannot create a picture of that size";

Bytes FromText(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

Bytes Encoded(slib::PictureFormat format) {
    return slib::EncodePictureBytes(codectest::Pattern(16, 12, false), format);
}

Bytes CutTo(Bytes bytes, size_t size) {
    bytes.resize(size);
    return bytes;
}

Bytes Patched(Bytes bytes, size_t at, const std::string& with) {
    for (size_t i = 0; i < with.size(); ++i) {
        bytes.at(at + i) = static_cast<uint8_t>(with[i]);
    }
    return bytes;
}

void PutBig32(Bytes& bytes, size_t at, uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes.at(at + i) = static_cast<uint8_t>(value >> (24 - 8 * i));
    }
}

// A PNG whose header chunk (with a correct CRC) declares this size, and nothing after it.
Bytes PngDeclaring(uint32_t width, uint32_t height) {
    Bytes bytes = FromText(std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16));
    bytes.resize(16 + 13 + 4);
    PutBig32(bytes, 16, width);
    PutBig32(bytes, 20, height);
    bytes[24] = 8;  // depth
    bytes[25] = 6;  // RGBA
    PutBig32(bytes, 29, static_cast<uint32_t>(crc32(0, bytes.data() + 12, 17)));
    return bytes;
}

// Our own JPEG with its frame header claiming another size.
Bytes JpegDeclaring(uint16_t width, uint16_t height) {
    Bytes bytes = Encoded(slib::PictureFormat::kJpeg);
    for (size_t i = 2; i + 9 < bytes.size(); ++i) {
        if (bytes[i] == 0xFF && bytes[i + 1] == 0xC0) {
            bytes[i + 5] = static_cast<uint8_t>(height >> 8);
            bytes[i + 6] = static_cast<uint8_t>(height);
            bytes[i + 7] = static_cast<uint8_t>(width >> 8);
            bytes[i + 8] = static_cast<uint8_t>(width);
            return bytes;
        }
    }
    ADD_FAILURE() << "no frame header";
    return bytes;
}

Bytes GifDeclaring(uint16_t width, uint16_t height) {
    Bytes bytes = FromText("GIF89a");
    for (const uint16_t side : {width, height}) {
        bytes.push_back(static_cast<uint8_t>(side));
        bytes.push_back(static_cast<uint8_t>(side >> 8));
    }
    bytes.insert(bytes.end(), {0, 0, 0, ';'});
    return bytes;
}

Bytes BmpDeclaring(int32_t width, int32_t height) {
    Bytes bytes = Encoded(slib::PictureFormat::kBmp);
    for (int i = 0; i < 4; ++i) {
        bytes[18 + i] = static_cast<uint8_t>(static_cast<uint32_t>(width) >> (8 * i));
        bytes[22 + i] = static_cast<uint8_t>(static_cast<uint32_t>(height) >> (8 * i));
    }
    return bytes;
}

// Our own (little-endian) TIFF with the width and length entries of its directory changed.
Bytes TiffDeclaring(uint32_t width, uint32_t height) {
    Bytes bytes = Encoded(slib::PictureFormat::kTiff);
    const auto le = [&](size_t at, int count) {
        uint32_t value = 0;
        for (int i = count - 1; i >= 0; --i) {
            value = (value << 8) | bytes.at(at + i);
        }
        return value;
    };
    const size_t directory = le(4, 4);
    const uint32_t entries = le(directory, 2);
    for (uint32_t e = 0; e < entries; ++e) {
        const size_t entry = directory + 2 + e * 12;
        const uint32_t tag = le(entry, 2);
        if (tag == 256 || tag == 257) {
            const uint32_t value = tag == 256 ? width : height;
            bytes[entry + 2] = 4;  // LONG
            for (int i = 0; i < 4; ++i) {
                bytes[entry + 8 + i] = static_cast<uint8_t>(value >> (8 * i));
            }
        }
    }
    return bytes;
}

struct BadCase {
    const char* name;
    Bytes bytes;
    std::string expected;
};

std::vector<BadCase> BadCases() {
    std::vector<BadCase> cases = {
        {"nothing", {}, kNotAPicture},
        {"text", FromText("just some words"), kNotAPicture},
        {"PDF", FromText("%PDF-1.4\n%\xE2\xE3"), kNotAPicture},
        {"PNG signature one byte short", FromText("\x89PNG\r\n\x1A"), kNotAPicture},
        {"BigTIFF", FromText(std::string("II+\0\x08\0\0\0", 8)), kNotAPicture},
        {"icon", FromText(std::string("\0\0\1\0\1\0\x10\x10", 8)),
         "-4 ICO pictures are not available on Linux"},
        {"enhanced metafile", FromText(std::string(40, '\1') + " EMF" + std::string(8, '\0')),
         "-4 EMF pictures are not available on Linux"},
        {"placeable metafile", FromText("\xD7\xCD\xC6\x9A\0\0\0\0\0\0"),
         "-4 WMF pictures are not available on Linux"},
        {"JPEG signature only", FromText("\xFF\xD8\xFF"), kDamaged},
        {"JPEG without a frame", FromText("\xFF\xD8\xFF\xD9"), kDamaged},
        {"PNG signature only", FromText("\x89PNG\r\n\x1A\n"), kDamaged},
        {"PNG header with a wrong CRC", Patched(PngDeclaring(4, 4), 29, "CRC!"), kDamaged},
        {"PNG of zero width", PngDeclaring(0, 4), kDamaged},
        {"GIF signature only", FromText("GIF89a"), kDamaged},
        {"GIF screen without a frame", GifDeclaring(4, 4), kDamaged},
        {"BMP signature only", FromText("BM"), kDamaged},
        {"BMP of an unknown header size", Patched(Encoded(slib::PictureFormat::kBmp), 14, "\x63"),
         kDamaged},
        {"BMP of 7 bits", Patched(Encoded(slib::PictureFormat::kBmp), 28, "\x07"), kDamaged},
        {"BMP of zero width", BmpDeclaring(0, 4), kDamaged},
        {"BMP run-length compressed (not read on Linux)",
         codectest::Convert("-size 20x1 gradient:red-blue -type Palette bmp3:"), kDamaged},
        {"TIFF signature only", FromText(std::string("II*\0", 4)), kDamaged},
        {"TIFF directory beyond the end",
         Patched(Encoded(slib::PictureFormat::kTiff), 4, "\xF0\xFF\xFF\x0F"), kDamaged},
        {"PNG 70,000 wide", PngDeclaring(70000, 1), kTooLarge},
        {"PNG of 20,000 x 20,000", PngDeclaring(20000, 20000), kTooLarge},
        {"JPEG of 30,000 x 30,000", JpegDeclaring(30000, 30000), kTooLarge},
        {"GIF of 65,535 x 65,535", GifDeclaring(65535, 65535), kTooLarge},
        {"BMP 70,000 wide", BmpDeclaring(70000, 1), kTooLarge},
        {"BMP top-down 70,000 high", BmpDeclaring(1, -70000), kTooLarge},
        {"BMP of 30,000 x 30,000", BmpDeclaring(30000, 30000), kTooLarge},
        {"TIFF of 100,000 x 100,000", TiffDeclaring(100000, 100000), kTooLarge},
        {"TIFF of 17,000 x 17,000", TiffDeclaring(17000, 17000), kTooLarge},
    };
    // Every format cut short: in its header, and halfway through its pixels.
    const struct {
        const char* name;
        slib::PictureFormat format;
        size_t header;
    } formats[] = {
        {"JPEG", slib::PictureFormat::kJpeg, 40}, {"PNG", slib::PictureFormat::kPng, 20},
        {"GIF", slib::PictureFormat::kGif, 9},    {"BMP", slib::PictureFormat::kBmp, 30},
        {"TIFF", slib::PictureFormat::kTiff, 6},
    };
    for (const auto& f : formats) {
        const Bytes whole = Encoded(f.format);
        cases.push_back({f.name, CutTo(whole, f.header), kDamaged});
        cases.push_back({f.name, CutTo(whole, whole.size() / 2), kDamaged});
    }
    return cases;
}

TEST(BadPictureBytes, GetTheirDefinedAnswerFromDecoderAndHeaderReader) {
    for (const BadCase& c : BadCases()) {
        SCOPED_TRACE(c.name);
        codectest::SaveSeed(std::string("bad-") + c.name, c.bytes);
        EXPECT_EQ(Failure([&] { slib::DecodePictureBytes(c.bytes); }), c.expected);
        // The header reader sees no pixels, so a picture cut short there may still measure.
        const std::string measured = Failure([&] { slib::MeasurePictureHeader(c.bytes); });
        if (c.expected != kDamaged || !measured.empty()) {
            EXPECT_EQ(measured, c.expected);
        }
    }
}

// A small PNG with a side chunk declaring 2 GB: the library's chunk buffer is bounded too.
Bytes PngWithHugeSideChunk() {
    Bytes bytes = PngDeclaring(3, 3);
    bytes.insert(bytes.end(), {0x77, 0x77, 0x77, 0x77, 't', 'E', 'X', 't', 'd', 'a', 't', 'e'});
    return bytes;
}

TEST(BadPictureBytes, ASideChunkDeclaringGigabytesTakesNoMemory) {
    std::string answer;
    const size_t largest = codectest::LargestAllocationDuring(
        [&] { answer = Failure([] { slib::DecodePictureBytes(PngWithHugeSideChunk()); }); });
    EXPECT_EQ(answer, kDamaged);
    EXPECT_LT(largest, size_t{16} << 20);
}

TEST(BadPictureBytes, HugeDeclaredSizesAreRefusedBeforeThePixelsAreAllocated) {
    for (const BadCase& c : BadCases()) {
        if (c.expected != kTooLarge) {
            continue;
        }
        SCOPED_TRACE(c.name);
        std::string answer;
        const size_t largest = codectest::LargestAllocationDuring(
            [&] { answer = Failure([&] { slib::DecodePictureBytes(c.bytes); }); });
        EXPECT_EQ(answer, kTooLarge);
        EXPECT_LT(largest, size_t{8} << 20);
    }
}

}  // namespace
