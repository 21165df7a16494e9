// VFile_Copy while VFile_Set has staged picture options: the source picture is converted into
// the target instead of copied.
#pragma once

#include "bridge/staged_picture_options.h"
#include "shell/call_frame.h"

namespace functions {

// Arguments 0 and 1 are the source and target paths. One staged side scales proportionally,
// both give that exact size; "exif-rotate" turns the picture upright and fails with -43 "Picture
// has no exif" when it records no orientation. The target's extension picks the format (".png"
// PNG, ".jpg"/".jpeg" JPEG, anything else the source's own).
void CopyPicture(const fmlib::FunctionCall& call, const bridge::PictureOptionMap& options);

}  // namespace functions
