#pragma once
// getItemKind on a system path, for the bodies that already hold one.

#include <cstdint>
#include <string>

namespace slib {

// ItemKind's answers, following links; a link leading nowhere is a file (it can be deleted,
// moved and replaced like one). -54 "Insufficent file permissions" when the system cannot tell.
uint32_t ItemKindAt(const std::string& path);

}  // namespace slib
