// Containers that hold only a reference to a file: their file-name stream is a list of host
// paths, one a line, each with a kind prefix ("file:", "filewin:", "image:", "imagewin:",
// "movie:", ...); lines of other kinds ("size:640,480", ...) are not paths.
#pragma once

#include <string>
#include <vector>

#include "bridge/path_context.h"
#include "fmx_functions.h"
#include "foundation/utf16_string.h"

namespace bridge {

// The host paths the container links to, "file:" forms, in their order; empty when none.
std::vector<std::u16string> FileLinks(const FmxBinaryData& container);

// The first linked path that names an existing file. -50 "No link to file in container" when
// there is no link; -50 "Linked file in container does not exist" when none of them exists.
slib::String LinkedFilePath(const FmxBinaryData& container, PathContext& paths);

}  // namespace bridge
