// Containers made from a file's bytes, for VFile_Read.
#pragma once

#include <string>

#include "foundation/data.h"
#include "foundation/picture_sniffing.h"
#include "shell/host_objects.h"

namespace bridge {

// The file as the host itself stores one: where the host can build a container from a file
// (FM_BinaryData_Constructor3) it chooses the streams; an older host gets a FILE stream and the
// name. An empty file is a container with its name only (streams may not be empty).
fmlib::BinaryDataPtr MakeFileContainer(const std::u16string& name, const slib::Data& bytes);

// A picture the host can show: the picture stream of its kind, SIZE when the header gives it,
// and the name. A TIFF gets a PNG preview as well, when the system can decode it.
fmlib::BinaryDataPtr MakePictureContainer(const std::u16string& name, const slib::Data& bytes,
                                          const slib::PictureFacts& facts);

// The name part of a native path (the text after its last separator).
std::u16string FileNameOf(const std::u16string& path);

}  // namespace bridge
