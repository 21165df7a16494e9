// Test support: pictures made with GDI+ for the tests, and what a written picture holds.
//
// Every test picture shows four coloured quadrants when seen upright: red top left, green top
// right, blue bottom left, yellow bottom right, i.e. "RGBY" read row by row. A picture stored
// with an EXIF orientation holds its pixels turned so that only the orientation's turn shows
// "RGBY" again; the stored layout is computed here pixel by pixel, not with GDI+'s own turns.
#pragma once

#include <cstdint>
#include <string>

namespace picturetest {

enum class Format { kJpeg, kPng, kGif, kBmp, kTiff };

// A picture of `width` by `height` when upright. `orientation` 0 writes no EXIF block; 1 to 8
// store the pixels accordingly and splice an EXIF block (JPEG only) in either byte order.
std::string MakePicture(Format format, int width, int height, uint16_t orientation = 0,
                        bool bigEndianExif = false);

struct Inspection {
    std::string format;  // "jpeg", "png", "gif", "bmp", "tiff" by signature, or "?"
    int width = 0;       // 0 when GDI+ cannot decode the bytes
    int height = 0;
    std::string quadrants;  // the nearest of R, G, B, Y at each quadrant's centre; "?" for none
    bool hasOrientation = false;  // an EXIF orientation is still recorded
};
Inspection Inspect(const std::string& bytes);

// "<format> <width>x<height> <quadrants>", e.g. "png 100x75 RGBY".
std::string Describe(const Inspection& inspection);

// Base64 of the bytes, for building containers with Base64Decode in a calculation.
std::u16string Base64(const std::string& bytes);

}  // namespace picturetest
