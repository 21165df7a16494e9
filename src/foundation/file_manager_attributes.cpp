// Item attributes by id: the dispatch both systems share; dates, free space and the security
// attributes are each system's.

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/item_dates.h"
#include "foundation/number.h"

namespace slib {

namespace {

[[noreturn]] void ThrowUnknownAttribute() {
    Throw(kBadParameter, "Unknown file attribute requested");
}

uint32_t RightsArgument(const Object& value) {
    const auto* number = dynamic_cast<const Number*>(&value);
    if (number == nullptr) {
        Throw(kBadParameter, "Wrong parameter");
    }
    return static_cast<uint32_t>(number->asInt64() & 7);
}

}  // namespace

std::shared_ptr<Object> FileManager::getAttribute(const String& path, uint32_t id) const {
    switch (id) {
        case AttributeId::kCreated:
        case AttributeId::kModified:
            return file_manager_detail::GetItemDate(path, id);
        case AttributeId::kSize:
        case AttributeId::kDataSize:
            return std::make_shared<Number>(static_cast<int64_t>(getItemSize(path)));
        case AttributeId::kResourceSize:
            return std::make_shared<Number>(0);
        case AttributeId::kAvailableSpace:
            return std::make_shared<Number>(static_cast<int64_t>(getFreeSpace(path)));
        case AttributeId::kOwner:
            return std::const_pointer_cast<String>(getOwnerName(path));
        case AttributeId::kGroup:
            return std::const_pointer_cast<String>(getGroupName(path));
        case AttributeId::kOwnerRights:
            return std::make_shared<Number>(getOwnerRights(path));
        case AttributeId::kGroupRights:
            return std::make_shared<Number>(getGroupRights(path));
        case AttributeId::kEveryoneRights:
            return std::make_shared<Number>(getEveryoneRights(path));
        default:
            ThrowUnknownAttribute();
    }
}

void FileManager::setAttribute(const String& path, uint32_t id, const Object& value) const {
    switch (id) {
        case AttributeId::kCreated:
        case AttributeId::kModified:
            file_manager_detail::SetItemDate(path, id, value);
            return;
        case AttributeId::kOwner:
            setOwner(path, *value.description());
            return;
        case AttributeId::kGroup:
            setGroup(path, *value.description());
            return;
        case AttributeId::kOwnerRights:
            setOwnerRights(path, RightsArgument(value));
            return;
        case AttributeId::kGroupRights:
            setGroupRights(path, RightsArgument(value));
            return;
        case AttributeId::kEveryoneRights:
            setEveryoneRights(path, RightsArgument(value));
            return;
        default:
            ThrowUnknownAttribute();
    }
}

}  // namespace slib
