// What VFile_Write puts into a file: the bytes its data argument stands for.
#pragma once

#include <cstdint>
#include <memory>

#include "bridge/path_context.h"
#include "fmx_functions.h"
#include "foundation/data.h"

namespace bridge {

// A container: the file it holds (ContainerFileBytes). Anything else is taken as text:
//   none          UTF-8 without a byte-order mark
//   0..36         the host's conversion into that encoding
//   utf-16        UTF-16 LE code units, no byte-order mark
//   rtf           the styled text as RTF
//   hex-dump, base64   decoded; malformed text: -50 with what is wrong
//   41..54        -50 "Unknown encoding" (those need container data)
// Nothing is written before the conversion has succeeded.
std::shared_ptr<const slib::Data> BytesToWrite(const FmxData& data, int32_t encoding,
                                               PathContext& paths, const FmxExprEnv& env);

}  // namespace bridge
