// VFile_Convert against ImageMagick's `-auto-orient -resize WxH!` on photograph-like pictures
// stored in each EXIF orientation: both results as raw RGB, compared channel by channel.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "exif_segment.h"
#include "picture_io.h"
#include "pictures_e2e.h"

namespace picturetest {
namespace {

// Measured: 0.47 to 0.50 per channel on every case below, shrinking and enlarging, and all of it
// one bias: ImageMagick 6 (Q16) rounds its results down where we round to the nearest level, so
// ours read half a level higher on average (the spread beyond that is a few hundredths). Both
// shrink with Lanczos-3 widened by the factor and enlarge with Mitchell, over the same source
// pixels. The faults this catches cost more: a triangle filter 0.6 to 1.9, a one-pixel slip 4.9,
// nearest-pixel sampling 3.3 to 3.9, a missed mirror 37.
constexpr double kMeanErrorBound = 0.6;

// The stored picture whose orientation's turn gives the upright one.
const char* const kStoredFromUpright[9] = {"",          "",           "-flop",       "-rotate 180",
                                           "-flip",     "-transpose", "-rotate 270", "-transverse",
                                           "-rotate 90"};

std::u16string Digits(int number) {
    const std::string text = std::to_string(number);
    return std::u16string(text.begin(), text.end());
}

class ImageMagickComparison : public PicturesTest {
  protected:
    // ImageMagick's convert (the one the build found) with `arguments`.
    bool run(const std::string& arguments) {
        return std::system((std::string(VF_CONVERT) + " " + arguments).c_str()) == 0;
    }
    std::string at(const std::u16string& relative) const {
        return "'" + Narrow(path(relative)) + "'";
    }

    // The mean absolute difference per channel of two pictures as ImageMagick reads them.
    double meanError(const std::u16string& ours, const std::u16string& theirs) {
        EXPECT_TRUE(run(at(ours) + " -depth 8 rgb:" + at(u"ours.rgb")));
        EXPECT_TRUE(run(at(theirs) + " -depth 8 rgb:" + at(u"theirs.rgb")));
        const std::optional<std::string> a = readFile(u"ours.rgb");
        const std::optional<std::string> b = readFile(u"theirs.rgb");
        if (!a || !b || a->size() != b->size() || a->empty()) {
            ADD_FAILURE() << "sizes differ";
            return 1e9;
        }
        double sum = 0;
        for (size_t i = 0; i < a->size(); ++i) {
            sum += std::abs(int(uint8_t((*a)[i])) - int(uint8_t((*b)[i])));
        }
        return sum / double(a->size());
    }
};

TEST_F(ImageMagickComparison, ScalesAndTurnsLikeImageMagickWithinTheBound) {
    const struct {
        const char* picture;  // ImageMagick's generator, upright
        int width, height;    // asked for, upright
    } cases[] = {
        {"-seed 5 -size 600x400 plasma:fractal -sharpen 0x2", 250, 170},
        {"-seed 11 -size 480x360 plasma:fractal -blur 0x1", 317, 211},
        {"-size 400x300 gradient:navy-orange -swirl 270", 96, 240},
        {"-seed 3 -size 160x120 plasma:fractal", 413, 301},
    };
    for (const auto& c : cases) {
        // A red marker in the upright top left corner, to see the turn at a glance.
        ASSERT_TRUE(run(std::string(c.picture) + " -fill red -draw 'rectangle 0,0 39,29' " +
                        at(u"upright.png")));
        for (uint16_t orientation = 1; orientation <= 8; ++orientation) {
            SCOPED_TRACE(std::string(c.picture) + ", orientation " + std::to_string(orientation));
            ASSERT_TRUE(run(at(u"upright.png") + " " + kStoredFromUpright[orientation] +
                            " -strip -quality 92 " + at(u"plain.jpg")));
            writeFile(u"in.jpg", SpliceAfterStart(*readFile(u"plain.jpg"),
                                                  ExifApp1(orientation, orientation % 2 == 0)));
            const std::string size = std::to_string(c.width) + "x" + std::to_string(c.height);
            ASSERT_TRUE(
                run(at(u"in.jpg") + " -auto-orient -resize " + size + "! " + at(u"theirs.png")));
            ASSERT_EQ(call(u"VFile_Convert( \"in.jpg\" ; \"ours.png\" ; \"exif-rotate\" ; 1 ; "
                           u"\"output-format\" ; \"png\" ; \"width\" ; " +
                           Digits(c.width) + u" ; \"height\" ; " + Digits(c.height) + u" )"),
                      Succeeded());
            const std::optional<Pixels> ours = DecodePixels(*readFile(u"ours.png"));
            ASSERT_TRUE(ours);
            ASSERT_EQ(ours->width, uint32_t(c.width));
            const uint32_t corner = ours->at(1, 1);
            EXPECT_TRUE((corner >> 16 & 0xFF) > 200 && (corner >> 8 & 0xFF) < 60 &&
                        (corner & 0xFF) < 60)
                << std::hex << corner;
            const double error = meanError(u"ours.png", u"theirs.png");
            EXPECT_LE(error, kMeanErrorBound);
            std::printf("  %s %s orientation %u: mean error %.3f\n", c.picture, size.c_str(),
                        orientation, error);
        }
    }
}

}  // namespace
}  // namespace picturetest
