// VFile_Get's facts about a value: "type", "picture-width", "picture-height",
// "analyze-container". Not implemented in this build.
#include "functions/get_selectors.h"
#include "functions/not_implemented.h"

namespace functions {

void GetValueFact(const fmlib::FunctionCall&, GetOwnSelector) {
    ThrowNotImplemented();
}

}  // namespace functions
