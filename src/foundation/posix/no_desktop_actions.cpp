// A server engine on Linux has no desktop: the choosers, opening and revealing fail at once with
// the no-desktop answer, before anything is shown or started.
#include "foundation/file_manager.h"
#include "foundation/no_desktop.h"

namespace slib {

using ChosenPaths = std::vector<std::shared_ptr<const String>>;

ChosenPaths FileManager::chooseFiles(bool, const std::shared_ptr<const String>&,
                                     const std::shared_ptr<const String>&,
                                     const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

ChosenPaths FileManager::chooseFolder(const std::shared_ptr<const String>&,
                                      const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

ChosenPaths FileManager::chooseSaveFile(const std::shared_ptr<const String>&,
                                        const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

void FileManager::openFile(const String&) const {
    ThrowNoInteractiveDesktop();
}

void FileManager::openFileWithApplication(const String&, const String&) const {
    ThrowNoInteractiveDesktop();
}

void FileManager::revealItem(const String&) const {
    ThrowNoInteractiveDesktop();
}

}  // namespace slib
