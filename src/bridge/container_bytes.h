// The file a container holds, as bytes to write: for VFile_Write with container data.
#pragma once

#include <cstdint>
#include <memory>

#include "bridge/path_context.h"
#include "fmx_functions.h"
#include "foundation/data.h"

namespace bridge {

// With no encoding, "file", or a picture keyword whose kind the bytes really are ("image": any
// picture): the bytes of the container's main stream (a compressed ZLIB stream inflated), or,
// for a container that only links to a file, that file's bytes; no bytes for a container that
// holds a plain file name and no stream (an empty file, as VFile_Read makes it). Failures, all -50:
//   "Wrong encoding specified for binary data"  any other encoding, or the wrong picture kind
//   "No link to file in container"              neither a data stream nor a file link
//   "Linked file in container does not exist"   the link names no file
std::shared_ptr<const slib::Data> ContainerFileBytes(const FmxBinaryData& container,
                                                     int32_t encoding, PathContext& paths);

}  // namespace bridge
