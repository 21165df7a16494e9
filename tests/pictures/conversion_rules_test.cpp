// The portable rules of a conversion: target sizes, options, file types, picture signatures and
// the palette for indexed formats.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "foundation/exception.h"
#include "foundation/number.h"
#include "picture/file_converter.h"
#include "picture/palette_quantizer.h"
#include "picture/picture_signature.h"
#include "picture/target_size.h"

namespace {

using slib::ComputeTargetSize;
using slib::SizeRequest;

std::string Size(double w, double h, const SizeRequest& request) {
    const slib::PixelSize size = ComputeTargetSize(w, h, request);
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::string Failure(const std::function<void()>& action) {
    try {
        action();
    } catch (const slib::Exception& e) {
        return std::to_string(e.error()->code()) + " " + e.what();
    }
    return "none";
}

TEST(TargetSize, FollowsTheRequestedSidesAndTheBox) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    const struct {
        double w, h;
        SizeRequest request;
        const char* expected;
    } cases[] = {
        {400, 300, {100.0, std::nullopt, true}, "100x75"},
        {400, 300, {100.0, 100.0, true}, "100x75"},  // the smaller factor keeps the box
        {400, 300, {100.0, 100.0, false}, "100x100"},
        {400, 300, {std::nullopt, 150.0, true}, "200x150"},
        {400, 300, {1000.0, 150.0, true}, "200x150"},
        {400, 300, {100.0, std::nullopt, false}, "100x300"},
        {400, 300, {std::nullopt, std::nullopt, true}, "400x300"},
        {400, 300, {133.5, 99.4, false}, "134x99"},        // nearest pixel
        {400, 300, {0.0, -5.0, false}, "1x1"},             // never below one pixel
        {3, 1000, {std::nullopt, 10.0, true}, "1x10"},     // 0.03 wide
        {0, 300, {100.0, std::nullopt, true}, "100x300"},  // a zero side scales by 1
        {400, 300, {kNaN, 1e12, false}, "1x2147483647"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Size(c.w, c.h, c.request), c.expected)
            << c.w << "x" << c.h << " asked " << c.request.width.value_or(-1) << ","
            << c.request.height.value_or(-1) << " proportional " << c.request.proportional;
    }
}

// Exposes the options as a conversion would read them.
class RecordingConverter : public slib::FileConverter {
  public:
    void convert(const slib::String&, uint32_t sourceType, const slib::String&,
                 uint32_t targetType) override {
        slib::RequireConvertibleTypes(sourceType, targetType);
        seen = settings();
    }
    slib::ConversionSettings seen;
};

TEST(FileConverter, ReadsOptionsByKeyAndRefusesOthers) {
    RecordingConverter converter;
    converter.setOption(slib::kOptionWidth, slib::MakeNumberOption(120.25));
    converter.setOption(slib::kOptionWidth, slib::MakeNumberOption(100));  // replaces
    converter.setOption(slib::kOptionProportional, slib::MakeNumberOption(-1));
    converter.setOption(slib::kOptionExifRotate, slib::MakeNumberOption(0));
    converter.convert(slib::String(u"a"), 0, slib::String(u"b"), slib::FileType::kPng);
    EXPECT_EQ(converter.seen.size.width, 100.0);
    EXPECT_EQ(converter.seen.size.height, std::nullopt);
    EXPECT_TRUE(converter.seen.size.proportional);
    EXPECT_FALSE(converter.seen.exifRotate);

    EXPECT_EQ(Failure([&] { converter.setOption(4, slib::MakeNumberOption(1)); }),
              "-50 Wrong parameter");
    EXPECT_EQ(Failure([&] { converter.setOption(-1, slib::MakeNumberOption(1)); }),
              "-50 Wrong parameter");
}

TEST(FileConverter, AcceptsOnlyTheKnownFileTypes) {
    const struct {
        uint32_t source, target;
        bool accepted;
    } cases[] = {
        {0, 0, true},
        {0, slib::FileType::kJpeg, true},
        {0, slib::FileType::kPng, true},
        {slib::FileType::kJpeg, 0, false},
        {0, 0x050301, false},
        {0, 1, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Failure([&] { slib::RequireConvertibleTypes(c.source, c.target); }),
                  c.accepted ? "none" : "-50 Cannot convert these file types")
            << c.source << " -> " << c.target;
    }
}

TEST(FileConverter, NumberOptionsKeepSixDecimalsAndRefuseNonNumbers) {
    const auto text = [](double value) {
        return dynamic_cast<const slib::Number&>(*slib::MakeNumberOption(value)).decimalText();
    };
    EXPECT_EQ(text(120.25), "120.25");
    EXPECT_EQ(text(-3), "-3");
    EXPECT_EQ(text(std::nan("")), "0");
    EXPECT_EQ(text(1e300), "1000000000000000");
}

TEST(PictureSignature, KnowsTheFormatsGdiplusDecodes) {
    std::string emf(44, '\0');
    std::memcpy(&emf[40], " EMF", 4);
    const struct {
        std::string bytes;
        bool picture;
    } cases[] = {
        {"\xFF\xD8\xFF\xE0", true},
        {"\x89PNG\r\n\x1A\n", true},
        {"GIF89a", true},
        {"BM", true},
        {std::string("II*\0", 4), true},
        {std::string("MM\0*", 4), true},
        {std::string("\0\0\1\0", 4), true},
        {emf, true},
        {"\xD7\xCD\xC6\x9A", true},
        {"", false},
        {"\x89PNG", false},
        {"hello", false},
        {"%PDF-1.4", false},
        {emf.substr(0, 43), false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(slib::HasPictureSignature(reinterpret_cast<const uint8_t*>(c.bytes.data()),
                                            c.bytes.size()),
                  c.picture)
            << c.bytes;
    }
}

TEST(PaletteQuantizer, KeepsFewColoursExactlyAndMapsManyToTheNearestCubeColour) {
    // Two rows of three pixels, with padding at the end of each row.
    const uint32_t few[] = {0xFFFF0000, 0xFF00FF00, 0xFFFF0000, 0xDEADBEEF,
                            0x800000FF, 0xFF00FF00, 0xFF123456, 0xDEADBEEF};
    const slib::IndexedPixels exact =
        slib::QuantizeToPalette(reinterpret_cast<const uint8_t*>(few), 3, 2, 16);
    ASSERT_EQ(exact.indices.size(), 6u);
    std::vector<uint32_t> back;
    for (const uint8_t index : exact.indices) {
        back.push_back(exact.palette.at(index));
    }
    EXPECT_EQ(back, (std::vector<uint32_t>{0xFFFF0000, 0xFF00FF00, 0xFFFF0000, 0x800000FF,
                                           0xFF00FF00, 0xFF123456}));
    EXPECT_EQ(exact.palette.size(), 4u);

    std::vector<uint32_t> many(300);
    for (uint32_t i = 0; i < many.size(); ++i) {
        many[i] = 0xFF000000u | (i * 0x010203u);
    }
    many[299] = 0xFFFA0A05;  // nearly pure red
    const slib::IndexedPixels cube = slib::QuantizeToPalette(
        reinterpret_cast<const uint8_t*>(many.data()), many.size(), 1, many.size() * 4);
    EXPECT_LE(cube.palette.size(), 256u);
    EXPECT_EQ(cube.palette.at(cube.indices[299]), 0xFFFF0000u);
    for (size_t i = 0; i < many.size(); ++i) {
        const uint32_t got = cube.palette.at(cube.indices[i]);
        for (int shift = 0; shift <= 16; shift += 8) {
            const int d = static_cast<int>((got >> shift) & 0xFF) -
                          static_cast<int>((many[i] >> shift) & 0xFF);
            ASSERT_LE(std::abs(d), 26) << i;  // half a cube step at most
        }
    }
}

}  // namespace
