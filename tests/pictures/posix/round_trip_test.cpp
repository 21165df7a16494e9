// Our encoders against our decoders: what each format keeps (every pixel for the lossless ones,
// the colours within JPEG's loss), what it drops (JPEG's alpha, GIF's partial transparency) and
// the settings each writes by default.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "codec_test_support.h"
#include "exif_segment.h"
#include "picture/posix/picture_codecs.h"

namespace {

using codectest::Failure;
using codectest::Pattern;
using codectest::PixelAt;
using slib::PictureFormat;
using slib::Raster;

enum class Keeps {
    kEverything,
    kColourWithinLoss,     // JPEG: close colours, no alpha
    kOpaqueOrTransparent,  // GIF: exact opaque pixels, below half opacity fully transparent
    kAlphaWithinRounding,  // TIFF: libtiff's reader premultiplies and we undo it
};

struct RoundTripCase {
    const char* name;
    PictureFormat format;
    Keeps keeps;
};

const RoundTripCase kCases[] = {
    {"JPEG", PictureFormat::kJpeg, Keeps::kColourWithinLoss},
    {"PNG", PictureFormat::kPng, Keeps::kEverything},
    {"GIF", PictureFormat::kGif, Keeps::kOpaqueOrTransparent},
    {"BMP", PictureFormat::kBmp, Keeps::kEverything},
    {"TIFF", PictureFormat::kTiff, Keeps::kAlphaWithinRounding},
};

// What `keeps` promises for one pixel written as `in` and read back as `out` (0xRRGGBBAA).
bool Kept(Keeps keeps, uint32_t in, uint32_t out) {
    const auto channel = [](uint32_t pixel, int i) { return int((pixel >> (24 - 8 * i)) & 0xFF); };
    switch (keeps) {
        case Keeps::kEverything:
            return in == out;
        case Keeps::kColourWithinLoss:
            return (out & 0xFF) == 0xFF;  // colours are checked on a smooth picture below
        case Keeps::kOpaqueOrTransparent:
            return channel(in, 3) < 0x80 ? (out & 0xFF) == 0 : out == (in | 0xFF);
        case Keeps::kAlphaWithinRounding: {
            if (channel(in, 3) != channel(out, 3)) {
                return false;
            }
            if (channel(in, 3) == 0) {
                return true;  // no colour survives premultiplying by zero
            }
            const int tolerance = 255 / channel(in, 3) + 1;
            for (int i = 0; i < 3; ++i) {
                if (std::abs(channel(in, i) - channel(out, i)) > tolerance) {
                    return false;
                }
            }
            return true;
        }
    }
    return false;
}

TEST(RoundTrip, EachFormatKeepsWhatItPromises) {
    for (const RoundTripCase& c : kCases) {
        for (const bool alpha : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (alpha ? " with alpha" : " opaque"));
            const Raster in = Pattern(13, 7, alpha);
            const std::vector<uint8_t> bytes = slib::EncodePictureBytes(in, c.format);
            codectest::SaveSeed(std::string("ours-") + c.name + (alpha ? "-alpha" : ""), bytes);
            const slib::DecodedPicture out = slib::DecodePictureBytes(bytes);
            EXPECT_EQ(out.format, c.format);
            EXPECT_FALSE(out.orientation && *out.orientation != 1);
            ASSERT_EQ(out.raster.width, 13u);
            ASSERT_EQ(out.raster.height, 7u);
            EXPECT_EQ(out.raster.hasAlpha, alpha && c.format != PictureFormat::kJpeg);
            int wrong = 0;
            for (uint32_t y = 0; y < 7; ++y) {
                for (uint32_t x = 0; x < 13; ++x) {
                    wrong += Kept(c.keeps, PixelAt(in, x, y), PixelAt(out.raster, x, y)) ? 0 : 1;
                }
            }
            EXPECT_EQ(wrong, 0);
        }
    }
}

TEST(RoundTrip, JpegKeepsSmoothColoursCloseAndDropsAlpha) {
    Raster in = codectest::Plain(32, 16, 0x3C8CDC80);  // half transparent
    for (uint32_t x = 0; x < 32; ++x) {
        for (uint32_t y = 0; y < 16; ++y) {
            in.row(y)[x * 4] = static_cast<uint8_t>(x * 8);
        }
    }
    const slib::DecodedPicture out =
        slib::DecodePictureBytes(slib::EncodePictureBytes(in, PictureFormat::kJpeg));
    for (uint32_t x = 0; x < 32; x += 5) {
        SCOPED_TRACE(x);
        const uint32_t pixel = PixelAt(out.raster, x, 8);
        EXPECT_NEAR(int(pixel >> 24), int(x * 8), 8);
        EXPECT_NEAR(int((pixel >> 16) & 0xFF), 0x8C, 8);
        EXPECT_NEAR(int((pixel >> 8) & 0xFF), 0xDC, 8);
        EXPECT_EQ(pixel & 0xFF, 0xFFu);
    }
}

TEST(RoundTrip, OrientationIsReportedAndThePixelsStayAsStored) {
    const slib::Raster in = Pattern(6, 4, false);
    const std::vector<uint8_t> plain = slib::EncodePictureBytes(in, PictureFormat::kJpeg);
    for (const bool bigEndian : {false, true}) {
        for (const uint16_t orientation : {uint16_t{3}, uint16_t{6}, uint16_t{8}}) {
            SCOPED_TRACE(std::to_string(orientation) + (bigEndian ? " big-endian" : ""));
            const std::string spliced =
                picturetest::SpliceAfterStart(std::string(plain.begin(), plain.end()),
                                              picturetest::ExifApp1(orientation, bigEndian, 1));
            const std::vector<uint8_t> bytes(spliced.begin(), spliced.end());
            codectest::SaveSeed("exif-" + std::to_string(orientation), bytes);
            const slib::DecodedPicture out = slib::DecodePictureBytes(bytes);
            EXPECT_EQ(out.orientation, orientation);
            EXPECT_EQ(out.raster.width, 6u);
            EXPECT_EQ(out.raster.rgba, slib::DecodePictureBytes(plain).raster.rgba);
        }
    }
}

TEST(RoundTrip, GifOfManyColoursKeepsItsTransparency) {
    // 64 x 64 distinct colours: beyond a palette, so the quantizer's colour cube is used.
    Raster in = Pattern(64, 64, false);
    for (uint32_t y = 0; y < 64; ++y) {
        for (uint32_t x = 0; x < 64; ++x) {
            in.row(y)[x * 4 + 0] = static_cast<uint8_t>(x * 4);
            in.row(y)[x * 4 + 1] = static_cast<uint8_t>(y * 4);
        }
    }
    in.row(5)[5 * 4 + 3] = 0;
    in.hasAlpha = true;
    const slib::DecodedPicture out =
        slib::DecodePictureBytes(slib::EncodePictureBytes(in, PictureFormat::kGif));
    EXPECT_EQ(PixelAt(out.raster, 5, 5) & 0xFF, 0u);
    EXPECT_EQ(PixelAt(out.raster, 6, 5) & 0xFF, 0xFFu);
    EXPECT_NEAR(int(PixelAt(out.raster, 63, 0) >> 24), 252, 30);
}

// The defaults written, read from the bytes themselves.
TEST(EncoderDefaults, AreTheWindowsBuildsOnes) {
    const Raster opaque = Pattern(16, 16, false);
    const Raster translucent = Pattern(16, 16, true);
    const std::vector<uint8_t> jpeg = slib::EncodePictureBytes(opaque, PictureFormat::kJpeg);
    // Quality 75 scales the first luminance quantizer of the standard table (16) to 8; luminance
    // sampled 2 x 2 is 4:2:0.
    bool sawTable = false;
    bool sawFrame = false;
    for (size_t i = 2; i + 12 < jpeg.size(); ++i) {
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xDB && !sawTable) {
            EXPECT_EQ(jpeg[i + 5], 8);
            sawTable = true;
        }
        if (jpeg[i] == 0xFF && jpeg[i + 1] == 0xC0) {
            EXPECT_EQ(jpeg[i + 9], 3);      // components
            EXPECT_EQ(jpeg[i + 11], 0x22);  // Y sampling
            EXPECT_EQ(jpeg[i + 14], 0x11);  // Cb sampling
            sawFrame = true;
            break;
        }
    }
    EXPECT_TRUE(sawTable && sawFrame);

    const struct {
        const char* name;
        PictureFormat format;
        size_t at;
        uint8_t opaqueValue;
        uint8_t alphaValue;
    } headerFields[] = {
        {"PNG colour type", PictureFormat::kPng, 25, 2, 6},
        {"BMP bits per pixel", PictureFormat::kBmp, 28, 24, 32},
        {"BMP header size", PictureFormat::kBmp, 14, 40, 108},
        {"GIF version", PictureFormat::kGif, 4, '7', '9'},
    };
    for (const auto& f : headerFields) {
        SCOPED_TRACE(f.name);
        EXPECT_EQ(slib::EncodePictureBytes(opaque, f.format).at(f.at), f.opaqueValue);
        EXPECT_EQ(slib::EncodePictureBytes(translucent, f.format).at(f.at), f.alphaValue);
    }
}

TEST(EncoderDefaults, ARasterWithoutPixelsIsNotSaved) {
    Raster empty;
    Raster short_ = Pattern(4, 4, false);
    short_.rgba.pop_back();
    Raster tooWideForGif = codectest::Plain(70000, 1, 0xFF0000FF);
    const struct {
        const char* name;
        const Raster* raster;
        PictureFormat format;
    } cases[] = {
        {"empty", &empty, PictureFormat::kPng},
        {"fewer bytes than pixels", &short_, PictureFormat::kBmp},
        {"wider than GIF can say", &tooWideForGif, PictureFormat::kGif},
        {"wider than JPEG can say", &tooWideForGif, PictureFormat::kJpeg},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Failure([&] { slib::EncodePictureBytes(*c.raster, c.format); }),
                  "2400 Cannot save the picture");
    }
}

}  // namespace
