#pragma once
// Pictures for the Linux codec tests: patterns made here, pictures written by ImageMagick (a
// foreign encoder, for the variants ours never writes), and the answer a call gives.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "picture/raster.h"

namespace codectest {

// Every pixel differs from its neighbours; fewer than 256 colours while width * height is below
// 256. With alpha, the pixels cycle through opaque, half and fully transparent.
slib::Raster Pattern(uint32_t width, uint32_t height, bool alpha);

// One colour everywhere.
slib::Raster Plain(uint32_t width, uint32_t height, uint32_t rgba);

// The bytes ImageMagick's convert writes for `arguments` (its input, settings and the output
// format, e.g. "-size 4x4 xc:red png48:"); fails the test when it cannot.
std::vector<uint8_t> Convert(const std::string& arguments);

// "code message" of the slib::Exception `call` throws, "" when it returns.
std::string Failure(const std::function<void()>& call);

// Keeps `bytes` as a seed of the picture decoder's fuzzer.
void SaveSeed(const std::string& name, const std::vector<uint8_t>& bytes);

// The pixel at x, y as 0xRRGGBBAA.
uint32_t PixelAt(const slib::Raster& raster, uint32_t x, uint32_t y);

// The largest single allocation (malloc or new) made during `call`, when the sanitizers let the
// test see allocations; 0 otherwise.
size_t LargestAllocationDuring(const std::function<void()>& call);

}  // namespace codectest
