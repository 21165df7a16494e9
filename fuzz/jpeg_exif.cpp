// fuzz-sources: src/picture/jpeg_exif.cpp
// Fuzzes the JPEG EXIF orientation reader with arbitrary bytes. Seeds worth adding to the corpus
// are JPEG files with an EXIF block in either byte order.
#include <cstddef>
#include <cstdint>

#include "picture/jpeg_exif.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    slib::FindJpegExifOrientation(data, size);
    return 0;
}
