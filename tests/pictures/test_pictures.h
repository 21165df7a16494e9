// Test support: pictures made for the tests, and what a written picture holds.
//
// Every test picture shows four coloured quadrants when seen upright: red top left, green top
// right, blue bottom left, yellow bottom right, i.e. "RGBY" read row by row. A picture stored
// with an EXIF orientation has its pixels laid out, one by one, so that only that orientation's
// turn shows "RGBY" again; the layout is computed here, not with GDI+'s own turns.
#pragma once

#include <cstdint>
#include <string>

namespace picturetest {

// "image/jpeg", "image/png", ... `orientation` 0 writes no EXIF block; 1 to 8 lay the pixels
// out accordingly and (JPEG only) splice in an EXIF block in either byte order.
std::string MakePicture(const wchar_t* mimeType, int width, int height, uint16_t orientation = 0,
                        bool bigEndianExif = false);

// "<format> <width>x<height> <quadrants>", e.g. "png 100x75 RGBY": the format by signature, the
// nearest of R, G, B, Y at each quadrant's centre ("?" for none), "no picture" when undecodable.
std::string Describe(const std::string& bytes);

// A PNG, white with a black square in its middle half: the border is white all round.
std::string MakeFramedPicture(int width, int height);
// The lowest channel (0 to 255; alpha counts too: a border faded towards transparent is no
// longer white) among the outermost pixels of a picture; -1 when undecodable.
int DarkestEdgeChannel(const std::string& bytes);

// Base64 of the bytes, for building containers with Base64Decode in a calculation.
std::u16string Base64(const std::string& bytes);

}  // namespace picturetest
