// VFile_Get( itemSelector ; path ): an attribute or a path form of an item. Not implemented in
// this build: the path argument is checked, then it fails with -4.
#include "functions/get_selectors.h"
#include "functions/not_implemented.h"
#include "shell/host_data.h"

namespace functions {

void GetItemAttribute(const fmlib::FunctionCall& call) {
    fmlib::RequireTextParameter(call.args, 1);
    ThrowNotImplemented();
}

}  // namespace functions
