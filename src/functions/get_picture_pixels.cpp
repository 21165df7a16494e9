// VFile_Get( "picture-pixels" ; containerOrPath ). Not implemented in this build.
#include "functions/get_selectors.h"
#include "functions/not_implemented.h"

namespace functions {

void GetPicturePixels(const fmlib::FunctionCall&) {
    ThrowNotImplemented();
}

}  // namespace functions
