#include "foundation/usable_item_path.h"

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/item_name_rules.h"

namespace slib {

namespace {

const char* RefusalMessage(NameProblem problem) {
    switch (problem) {
        case NameProblem::kReservedDevice:
            return "Name is reserved by Windows for a device";
        case NameProblem::kTrailingDotOrSpace:
            return "Name cannot end with a dot or a space";
        case NameProblem::kColon:
            return "Name cannot contain a colon";
        case NameProblem::kEmpty:
            return "Name is empty";
        default:
            return "Name contains a character Windows does not allow";
    }
}

}  // namespace

void RequireUsableItemPath(std::u16string_view path) {
    if (const auto unusable = FindUnusableComponent(path)) {
        Throw(kBadParameter, RefusalMessage(unusable->problem));
    }
}

}  // namespace slib
