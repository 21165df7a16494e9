#pragma once
// The two date attributes, each system's body behind one call each, so that the attribute-id
// dispatch (file_manager_attributes.cpp) is shared.

#include <cstdint>
#include <memory>

#include "foundation/object.h"
#include "foundation/utf16_string.h"

namespace slib {
namespace file_manager_detail {

// AttributeId::kCreated or kModified of the item, as a local Date.
std::shared_ptr<Object> GetItemDate(const String& path, uint32_t id);
// Sets one of them from a Date; anything else is -50 with the date's message.
void SetItemDate(const String& path, uint32_t id, const Object& value);

}  // namespace file_manager_detail
}  // namespace slib
