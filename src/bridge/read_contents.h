// What VFile_Read returns for a file: its bytes as a host value of the requested encoding.
#pragma once

#include "bridge/content_arguments.h"
#include "fmx_functions.h"
#include "foundation/utf16_string.h"

namespace bridge {

// Reads the range the request names and stores it into `result`:
//   none          by the file's MIME type: "text..." as text (automatic encoding), "image..." as
//                 a picture container, anything else as a file container
//   0..36, utf-16 text through that encoding
//   hex-dump, base64   their text forms
//   picture keywords   a picture container; bytes that are not that kind of picture: -50
//                      "Wrong encoding specified for binary data"
//   file          a file container
void StoreFileContents(const slib::String& path, const ReadRequest& request, FmxData& result,
                       const FmxExprEnv& env);

// A folder's entry names joined by carriage returns, as text.
void StoreFolderListing(const slib::String& path, FmxData& result);

}  // namespace bridge
