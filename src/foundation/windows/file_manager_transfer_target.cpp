#include "foundation/file_manager.h"
#include "foundation/windows/long_path_walk.h"

namespace slib {

std::shared_ptr<const String> FileManager::transferTarget(const String& source,
                                                          const String& destination) const {
    return std::make_shared<const String>(
        long_path::TransferTarget(source.units(), destination.units()));
}

}  // namespace slib
