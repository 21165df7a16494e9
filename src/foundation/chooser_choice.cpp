// Which chooser an item kind asks for, and its filter text: the same on every system, whatever
// dialogs (if any) the system has.
#include <vector>

#include "foundation/chooser_filter.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"

namespace slib {

using ChosenPaths = std::vector<std::shared_ptr<const String>>;

std::shared_ptr<const String> FileManager::buildAllowedFilesFilter(
    const std::vector<std::shared_ptr<const String>>& extensions) const {
    std::vector<std::u16string> units;
    for (const std::shared_ptr<const String>& extension : extensions) {
        units.push_back(extension->units());
    }
    return std::make_shared<const String>(AllowedFilesFilter(units));
}

ChosenPaths FileManager::choose(
    int32_t kindPosition, bool several, const std::shared_ptr<const String>& folder,
    const std::shared_ptr<const String>& title,
    const std::vector<std::shared_ptr<const String>>& extensions) const {
    switch (kindPosition) {
        case CreateKind::kFile:
            return chooseFiles(several, folder, title,
                               extensions.empty() ? nullptr : buildAllowedFilesFilter(extensions));
        case CreateKind::kFolder:
            return chooseFolder(folder, title);
        case CreateKind::kNew:
            return chooseSaveFile(folder, title);
        default:
            Throw(kBadParameter, "Wrong parameter");
    }
}

}  // namespace slib
