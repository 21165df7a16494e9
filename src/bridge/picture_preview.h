// A PNG rendering of a picture the host cannot show by itself (TIFF), through the system's
// picture engine (GDI+ on Windows, the codec libraries on Linux).
#pragma once

#include <cstdint>
#include <vector>

#include "foundation/data.h"

namespace bridge {

// Empty when the system cannot decode the picture: the caller then stores it without one.
std::vector<uint8_t> PngPreview(const slib::Data& picture);

}  // namespace bridge
