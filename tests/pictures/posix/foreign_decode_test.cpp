// Pictures another encoder (ImageMagick) wrote, in the variants our encoders never write: each
// decodes to its size, its format, its recorded orientation and its pixels, and the header alone
// gives the same size.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "codec_test_support.h"
#include "picture/posix/picture_codecs.h"

namespace {

using codectest::Convert;
using codectest::PixelAt;
using slib::PictureFormat;

struct Probe {
    uint32_t x;
    uint32_t y;
    uint32_t rgba;
};

struct ForeignCase {
    const char* name;
    const char* arguments;
    PictureFormat format;
    uint32_t width;
    uint32_t height;
    std::optional<uint16_t> orientation;
    int tolerance;  // per channel: lossy formats and colour conversions
    std::vector<Probe> probes;
};

bool Near(uint32_t actual, uint32_t expected, int tolerance) {
    for (int shift = 0; shift < 32; shift += 8) {
        const int a = static_cast<int>((actual >> shift) & 0xFF);
        const int e = static_cast<int>((expected >> shift) & 0xFF);
        if (std::abs(a - e) > tolerance) {
            return false;
        }
    }
    return true;
}

const std::vector<ForeignCase>& ForeignCases() {
    static const std::vector<ForeignCase> cases = {
        // JPEG
        {"CMYK JPEG (Adobe, inverted)",
         "-size 8x6 xc:red -colorspace CMYK -quality 95 jpg:",
         PictureFormat::kJpeg,
         8,
         6,
         std::nullopt,
         6,
         {{0, 0, 0xFF0000FF}, {7, 5, 0xFF0000FF}}},
        {"grey JPEG",
         "-size 6x4 xc:gray50 -colorspace Gray jpg:",
         PictureFormat::kJpeg,
         6,
         4,
         std::nullopt,
         2,
         {{3, 2, 0x7F7F7FFF}}},
        {"progressive JPEG",
         "-size 17x9 xc:blue -interlace JPEG jpg:",
         PictureFormat::kJpeg,
         17,
         9,
         std::nullopt,
         2,
         {{16, 8, 0x0000FEFF}}},
        // PNG
        {"16-bit PNG",
         "-size 5x3 'xc:rgb(0,128,255)' -depth 16 png48:",
         PictureFormat::kPng,
         5,
         3,
         std::nullopt,
         0,
         {{4, 2, 0x0080FFFF}}},
        {"1-bit grey PNG",
         "-size 9x2 xc:black -fill white -draw 'point 0 0' -type Bilevel png:",
         PictureFormat::kPng,
         9,
         2,
         std::nullopt,
         0,
         {{0, 0, 0xFFFFFFFF}, {8, 1, 0x000000FF}}},
        {"palette PNG with tRNS",
         "-size 4x4 xc:none -fill red -draw 'point 1 1' png8:",
         PictureFormat::kPng,
         4,
         4,
         std::nullopt,
         0,
         {{1, 1, 0xFF0000FF}, {0, 0, 0x00000000}}},
        {"16-bit PNG with alpha",
         "-size 3x3 'xc:rgba(255,0,0,0.5)' -depth 16 png64:",
         PictureFormat::kPng,
         3,
         3,
         std::nullopt,
         1,
         {{2, 2, 0xFF000080}}},
        {"grey PNG with alpha",
         "-size 3x3 'xc:graya(50%,0.25)' png:",
         PictureFormat::kPng,
         3,
         3,
         std::nullopt,
         1,
         {{1, 1, 0x80808040}}},
        // GIF
        {"GIF with a transparent index",
         "-size 4x4 xc:none -fill blue -draw 'point 2 2' gif:",
         PictureFormat::kGif,
         4,
         4,
         std::nullopt,
         0,
         {{2, 2, 0x0000FFFF}, {0, 0, 0x00000000}}},
        {"GIF frame placed on a larger screen",
         "-size 3x2 xc:red -page 10x8+4+5 gif:",
         PictureFormat::kGif,
         10,
         8,
         std::nullopt,
         0,
         {{4, 5, 0xFF0000FF}, {6, 6, 0xFF0000FF}, {3, 5, 0x00000000}, {0, 0, 0x00000000}}},
        // BMP
        {"24-bit BMP, bottom-up",
         "-size 3x4 xc:red -fill blue -draw 'point 0 3' -type TrueColor bmp3:",
         PictureFormat::kBmp,
         3,
         4,
         std::nullopt,
         0,
         {{0, 3, 0x0000FFFF}, {0, 0, 0xFF0000FF}}},
        {"1-bit BMP",
         "-size 3x4 xc:red -fill blue -draw 'point 0 3' -type Palette bmp3:",
         PictureFormat::kBmp,
         3,
         4,
         std::nullopt,
         0,
         {{0, 3, 0x0000FFFF}, {2, 3, 0xFF0000FF}}},
        {"4-bit BMP",
         "-size 3x4 xc:red -fill blue -draw 'point 0 3' -fill lime "
         "-draw 'point 2 0' -type Palette bmp3:",
         PictureFormat::kBmp,
         3,
         4,
         std::nullopt,
         0,
         {{0, 3, 0x0000FFFF}, {2, 0, 0x00FF00FF}, {1, 1, 0xFF0000FF}}},
        {"8-bit BMP",
         "-size 20x1 gradient:red-blue -type Palette -compress None bmp3:",
         PictureFormat::kBmp,
         20,
         1,
         std::nullopt,
         0,
         {{0, 0, 0xFF0000FF}, {19, 0, 0x0000FFFF}}},
        {"32-bit BMP with alpha (V5 bit fields)",
         "-size 3x4 'xc:rgba(255,0,0,0.5)' bmp:",
         PictureFormat::kBmp,
         3,
         4,
         std::nullopt,
         1,
         {{2, 3, 0xFF000080}}},
        // TIFF
        {"TIFF with orientation 6, rows as stored",
         "-size 4x2 xc:red -fill blue -draw 'point 3 0' -orient RightTop tiff:",
         PictureFormat::kTiff,
         4,
         2,
         6,
         0,
         {{3, 0, 0x0000FFFF}, {0, 1, 0xFF0000FF}}},
        {"TIFF with orientation 3, rows as stored",
         "-size 4x2 xc:red -fill blue -draw 'point 3 0' -orient BottomRight tiff:",
         PictureFormat::kTiff,
         4,
         2,
         3,
         0,
         {{3, 0, 0x0000FFFF}, {0, 0, 0xFF0000FF}}},
        {"16-bit TIFF",
         "-size 6x4 'xc:rgb(10,200,30)' -depth 16 tiff:",
         PictureFormat::kTiff,
         6,
         4,
         1,
         0,
         {{5, 3, 0x0AC81EFF}}},
        {"CMYK TIFF",
         "-size 6x4 xc:red -colorspace CMYK -depth 8 tiff:",
         PictureFormat::kTiff,
         6,
         4,
         1,
         1,
         {{5, 3, 0xFF0000FF}}},
        {"big-endian TIFF",
         "-size 3x3 xc:lime -endian MSB tiff:",
         PictureFormat::kTiff,
         3,
         3,
         1,
         0,
         {{1, 1, 0x00FF00FF}}},
        {"JPEG-compressed TIFF",
         "-size 16x16 xc:blue -compress JPEG tiff:",
         PictureFormat::kTiff,
         16,
         16,
         1,
         3,
         {{8, 8, 0x0000FFFF}}},
        {"TIFF with unassociated alpha",
         "-size 3x3 'xc:rgba(0,0,255,0.5)' tiff:",
         PictureFormat::kTiff,
         3,
         3,
         1,
         2,
         {{1, 1, 0x0000FF80}}},
    };
    return cases;
}

TEST(ForeignPictures, DecodeToTheirSizeFormatOrientationAndPixels) {
    for (const ForeignCase& c : ForeignCases()) {
        SCOPED_TRACE(c.name);
        const std::vector<uint8_t> bytes = Convert(c.arguments);
        codectest::SaveSeed(std::string("foreign-") + c.name, bytes);
        const slib::DecodedPicture picture = slib::DecodePictureBytes(bytes);
        EXPECT_EQ(picture.format, c.format);
        ASSERT_EQ(picture.raster.width, c.width);
        ASSERT_EQ(picture.raster.height, c.height);
        ASSERT_EQ(picture.raster.rgba.size(), size_t{c.width} * c.height * 4);
        EXPECT_EQ(picture.orientation, c.orientation);
        bool translucent = false;
        for (const Probe& probe : c.probes) {
            const uint32_t actual = PixelAt(picture.raster, probe.x, probe.y);
            EXPECT_TRUE(Near(actual, probe.rgba, c.tolerance))
                << "at " << probe.x << "," << probe.y << ": " << std::hex << actual << " not "
                << probe.rgba;
            translucent = translucent || (probe.rgba & 0xFF) != 0xFF;
        }
        if (translucent) {
            EXPECT_TRUE(picture.raster.hasAlpha);
        }
        const slib::PictureDimensions header = slib::MeasurePictureHeader(bytes);
        EXPECT_EQ(header.width, c.width);
        EXPECT_EQ(header.height, c.height);
    }
}

TEST(ForeignPictures, InterlacedAndProgressiveGiveTheSamePixelsAsPlain) {
    const struct {
        const char* name;
        const char* picture;
        const char* plain;
        const char* interlaced;
    } cases[] = {
        {"PNG Adam7", "-size 13x11 gradient:red-blue ", "png24:", "-interlace PNG png24:"},
        {"GIF four passes", "-size 13x11 gradient:red-blue -colors 64 ",
         "gif:", "-interlace GIF gif:"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const slib::DecodedPicture plain =
            slib::DecodePictureBytes(Convert(std::string(c.picture) + c.plain));
        const std::vector<uint8_t> interlacedBytes = Convert(std::string(c.picture) + c.interlaced);
        codectest::SaveSeed(std::string("interlaced-") + c.name, interlacedBytes);
        const slib::DecodedPicture interlaced = slib::DecodePictureBytes(interlacedBytes);
        ASSERT_EQ(interlaced.raster.width, 13u);
        ASSERT_EQ(interlaced.raster.height, 11u);
        EXPECT_EQ(interlaced.raster.rgba, plain.raster.rgba);
        // A gradient: the rows must differ, or a wrong row order would pass unseen.
        EXPECT_NE(PixelAt(plain.raster, 0, 0), PixelAt(plain.raster, 0, 10));
    }
}

}  // namespace
