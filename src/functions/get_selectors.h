// The three families of VFile_Get selectors beyond the last error, each in a file of its own.
// Each runs after the licence check; argument 0 is the selector, already matched.
#pragma once

#include "shell/call_frame.h"

namespace functions {

// The position of VFile_Get's own selectors ("lastError", "lastErrorMessage", "type",
// "picture-width", "picture-height", "analyze-container", "picture-pixels").
enum GetOwnSelector {
    kGetLastError = 0,
    kGetLastErrorMessage = 1,
    kGetType = 2,
    kGetPictureWidth = 3,
    kGetPictureHeight = 4,
    kGetAnalyzeContainer = 5,
    kGetPicturePixels = 6,
};

// "type", "picture-width", "picture-height", "analyze-container": facts about argument 1 itself.
void GetValueFact(const fmlib::FunctionCall& call, GetOwnSelector selector);
// "picture-pixels": the pixel size of a container picture or a picture file.
void GetPicturePixels(const fmlib::FunctionCall& call);
// Any other selector: an attribute or a path form of the item at the path in argument 1.
void GetItemAttribute(const fmlib::FunctionCall& call);

}  // namespace functions
