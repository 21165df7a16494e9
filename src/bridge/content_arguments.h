// The optional arguments of VFile_Read and VFile_Write, told apart by count and by host type.
#pragma once

#include <cstdint>
#include <optional>

#include "bridge/encoding_keywords.h"
#include "fmx_functions.h"
#include "foundation/file_manager.h"

namespace bridge {

struct ReadRequest {
    int64_t startIndex = 0;
    uint64_t maxLength = slib::kReadToEnd;
    int32_t encoding = encoding::kNone;
};

// VFile_Read( path { ; startIndex { ; maxLength } } { ; encoding } ):
//   path ; x                 x a number: startIndex; text: an encoding keyword; else ignored
//   path ; i ; x             i startIndex; x a number: maxLength; "all": unlimited; other text:
//                            an encoding keyword
//   path ; i ; n ; e ...     e an encoding keyword; n a number, or "all"
// A keyword that matches nothing, or other text where only "all" may stand: -50 "Invalid
// parameters". A negative maxLength means unlimited.
ReadRequest ParseReadArguments(const FmxDataVect& args);

struct WriteRequest {
    std::optional<int64_t> startIndex;  // none: the file is replaced
    int32_t encoding = encoding::kNone;
};

// VFile_Write( path ; data { ; startIndex } { ; encoding } ): with three arguments the third is
// startIndex when it is a number, else an encoding keyword; with four, the third is startIndex
// and the fourth the keyword. An unknown keyword is no error: it leaves the encoding at none.
WriteRequest ParseWriteArguments(const FmxDataVect& args);

}  // namespace bridge
