#include "shell/arguments.h"

#include "fmx_constants.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "shell/host_data.h"

namespace fmlib {

void RequireParameters(const FmxDataVect& args, uint32_t count) {
    if (DataVectSize(args) < count) {
        slib::Throw(slib::kBadParameter, "Not enough parameters");
    }
}

void RequireTextParameter(const FmxDataVect& args, uint32_t index) {
    // A missing argument is not text either; the host's behaviour past the end is unknown, so
    // it is never asked.
    if (index >= DataVectSize(args) || DataGetNativeType(DataVectAt(args, index)) != fmx::kDTText) {
        slib::Throw(slib::kBadParameter, "Path parameter must be text");
    }
}

}  // namespace fmlib
