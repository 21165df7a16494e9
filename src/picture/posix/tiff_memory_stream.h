#pragma once
// A TIFF "file" in memory for TIFFClientOpen: read from untrusted bytes (every offset checked), or
// written into a growing buffer that libtiff may also seek and read back.

#include <tiffio.h>

#include <cstdint>
#include <vector>

#include "foundation/unique_resource.h"
#include "picture/posix/format_codecs.h"

namespace slib {

struct TiffMemoryStream {
    const uint8_t* source = nullptr;  // reading
    uint64_t sourceSize = 0;
    std::vector<uint8_t>* sink = nullptr;  // writing
    uint64_t offset = 0;
    bool failed = false;  // libtiff reported an error: its answer cannot be trusted
};

void CloseTiff(TIFF* tiff);
using TiffOwner = UniqueResource<TIFF*, &CloseTiff>;

// libtiff over `stream` in `mode` ("r" or "w"), with errors and warnings kept off stderr (an
// error marks the stream failed). Empty when libtiff refuses the bytes.
TiffOwner OpenTiffStream(TiffMemoryStream& stream, PictureBytes bytes, const char* mode,
                         uint64_t maxSingleAllocation);

}  // namespace slib
