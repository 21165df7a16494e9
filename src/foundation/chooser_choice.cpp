// The choosers' system-independent part: the filter text and the entry that picks a chooser by
// item kind, before any dialog is asked for.

#include "foundation/chooser_filter.h"
#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"

namespace slib {

std::shared_ptr<const String> FileManager::buildAllowedFilesFilter(
    const std::vector<std::shared_ptr<const String>>& extensions) const {
    std::vector<std::u16string> units;
    for (const std::shared_ptr<const String>& extension : extensions) {
        units.push_back(extension->units());
    }
    return std::make_shared<const String>(AllowedFilesFilter(units));
}

std::vector<std::shared_ptr<const String>> FileManager::choose(
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
