// BMP layouts no encoder at hand writes (top-down rows, 16-bit and 32-bit bit fields, the core
// header, a 32-bit BI_RGB fourth byte, indices past a short palette), built byte by byte.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "codec_test_support.h"
#include "picture/posix/picture_codecs.h"

namespace {

using Bytes = std::vector<uint8_t>;

void Put(Bytes& out, uint32_t value, int count) {
    for (int i = 0; i < count; ++i) {
        out.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }
}

struct BmpSpec {
    uint32_t headerSize;
    uint16_t bits;
    uint32_t compression;
    int32_t width;
    int32_t height;
    std::vector<uint32_t> masks;    // after a 40-byte header, or inside a larger one
    std::vector<uint32_t> palette;  // 0x00RRGGBB
    Bytes rows;                     // as stored, padding included
};

Bytes Build(const BmpSpec& spec) {
    Bytes info;
    if (spec.headerSize == 12) {
        Put(info, 12, 4);
        Put(info, static_cast<uint32_t>(spec.width), 2);
        Put(info, static_cast<uint32_t>(spec.height), 2);
        Put(info, 1, 2);
        Put(info, spec.bits, 2);
    } else {
        Put(info, spec.headerSize, 4);
        Put(info, static_cast<uint32_t>(spec.width), 4);
        Put(info, static_cast<uint32_t>(spec.height), 4);
        Put(info, 1, 2);
        Put(info, spec.bits, 2);
        Put(info, spec.compression, 4);
        Put(info, static_cast<uint32_t>(spec.rows.size()), 4);
        Put(info, 2835, 4);
        Put(info, 2835, 4);
        Put(info, static_cast<uint32_t>(spec.palette.size()), 4);
        Put(info, 0, 4);
        for (const uint32_t mask : spec.masks) {
            Put(info, mask, 4);
        }
        info.resize(std::max<size_t>(info.size(), spec.headerSize), 0);
    }
    for (const uint32_t colour : spec.palette) {
        Put(info, colour, spec.headerSize == 12 ? 3 : 4);
    }
    Bytes out{'B', 'M'};
    Put(out, static_cast<uint32_t>(14 + info.size() + spec.rows.size()), 4);
    Put(out, 0, 4);
    Put(out, static_cast<uint32_t>(14 + info.size()), 4);
    out.insert(out.end(), info.begin(), info.end());
    out.insert(out.end(), spec.rows.begin(), spec.rows.end());
    return out;
}

struct LayoutCase {
    const char* name;
    BmpSpec spec;
    std::vector<uint32_t> expected;  // 0xRRGGBBAA, top row first
};

TEST(BmpLayouts, DecodeToTheirPixels) {
    const LayoutCase cases[] = {
        {"24-bit top-down",
         {40, 24, 0, 2, -2, {}, {}, {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0}},
         {0xFF0000FF, 0x00FF00FF, 0x0000FFFF, 0xFFFFFFFF}},
        {"24-bit bottom-up",
         {40, 24, 0, 2, 2, {}, {}, {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255, 0, 0}},
         {0x0000FFFF, 0xFFFFFFFF, 0xFF0000FF, 0x00FF00FF}},
        {"16-bit 5-6-5 bit fields after the header",
         {40, 16, 3, 2, -1, {0xF800, 0x07E0, 0x001F}, {}, {0x00, 0xF8, 0xE0, 0x07}},
         {0xFF0000FF, 0x00FF00FF}},
        {"16-bit BI_RGB is 5-5-5",
         {40, 16, 0, 2, -1, {}, {}, {0x00, 0x7C, 0x1F, 0x00}},
         {0xFF0000FF, 0x0000FFFF}},
        {"32-bit BI_RGB ignores the fourth byte",
         {40, 32, 0, 1, 1, {}, {}, {0x10, 0x20, 0x30, 0x00}},
         {0x302010FF}},
        {"32-bit alpha bit fields in a V4 header",
         {108, 32, 3, 1, 1, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, {}, {0x10, 0x20, 0x30, 0x40}},
         {0x30201040}},
        {"32-bit bit fields in a V3 header without an alpha mask",
         {56, 32, 3, 1, 1, {0xFF0000, 0xFF00, 0xFF, 0}, {}, {0x10, 0x20, 0x30, 0x40}},
         {0x302010FF}},
        {"32-bit BI_ALPHABITFIELDS after a 40-byte header",
         {40, 32, 6, 1, 1, {0xFF00, 0xFF0000, 0xFF000000, 0xFF}, {}, {0x80, 0x10, 0x20, 0x30}},
         {0x102030 << 8 | 0x80}},
        {"core header, 8-bit palette of three-byte entries",
         {12, 8, 0, 2, 1, {}, {0x0000FF, 0xFF0000}, {1, 0, 0, 0}},
         {0xFF0000FF, 0x0000FFFF}},
        {"4-bit, an index past the palette is black",
         {40, 4, 0, 3, 1, {}, {0xFFFFFF, 0x00FF00}, {0x10, 0x50, 0, 0}},
         {0x00FF00FF, 0xFFFFFFFF, 0x000000FF}},
        {"1-bit, odd width with padding",
         {40, 1, 0, 9, 1, {}, {0x000000, 0xFFFFFF}, {0x80, 0x80, 0, 0}},
         {0xFFFFFFFF, 0x000000FF, 0x000000FF, 0x000000FF, 0x000000FF, 0x000000FF, 0x000000FF,
          0x000000FF, 0xFFFFFFFF}},
    };
    for (const LayoutCase& c : cases) {
        SCOPED_TRACE(c.name);
        const Bytes bytes = Build(c.spec);
        codectest::SaveSeed(std::string("bmp-") + c.name, bytes);
        const slib::DecodedPicture picture = slib::DecodePictureBytes(bytes);
        const uint32_t width = static_cast<uint32_t>(c.spec.width);
        ASSERT_EQ(picture.raster.width, width);
        ASSERT_EQ(picture.raster.height, c.expected.size() / width);
        for (size_t i = 0; i < c.expected.size(); ++i) {
            EXPECT_EQ(codectest::PixelAt(picture.raster, static_cast<uint32_t>(i % width),
                                         static_cast<uint32_t>(i / width)),
                      c.expected[i])
                << "pixel " << i;
        }
    }
}

TEST(BmpLayouts, RowsCutShortOrBitFieldsOnPalettesAreDamaged) {
    const BmpSpec cases[] = {
        {40, 24, 0, 2, 2, {}, {}, {0, 0, 255, 0, 255, 0, 0, 0}},  // one row of two
        {40, 8, 3, 1, 1, {1, 2, 4}, {0}, {0, 0, 0, 0}},           // bit fields need 16 or 32
        {40, 8, 1, 1, 1, {}, {0}, {1, 0, 0, 1}},                  // RLE8
        {40, 8, 0, 1, 1, {}, {}, {}},                             // no palette, no rows
    };
    for (const BmpSpec& spec : cases) {
        EXPECT_EQ(codectest::Failure([&] { slib::DecodePictureBytes(Build(spec)); }),
                  "-50 Picture data is damaged");
    }
}

}  // namespace
