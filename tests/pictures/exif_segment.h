// Test support: EXIF blocks written by hand, since GDI+ under Wine cannot write property items.
#pragma once

#include <cstdint>
#include <string>

namespace picturetest {

// An APP1 segment (marker included) whose IFD0 holds `entriesBefore` unrelated entries, then
// the orientation.
std::string ExifApp1(uint16_t orientation, bool bigEndian, int entriesBefore = 0);
// `jpeg` with `segment` inserted right after its start-of-image marker.
std::string SpliceAfterStart(const std::string& jpeg, const std::string& segment);

}  // namespace picturetest
