// The members that have no meaning on a server engine: there is no one at a screen to show a
// dialog or a window to, no drive letters and no short names. Each fails with a defined code and
// message, before touching anything.

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/no_desktop.h"

namespace slib {

namespace {

[[noreturn]] void ThrowAdministratorMounts() {
    Throw(kUnclassified, "On the server, the administrator mounts network shares");
}

}  // namespace

void FileManager::openFile(const String&) const {
    ThrowNoInteractiveDesktop();
}

void FileManager::openFileWithApplication(const String&, const String&) const {
    ThrowNoInteractiveDesktop();
}

void FileManager::revealItem(const String&) const {
    ThrowNoInteractiveDesktop();
}

std::vector<std::shared_ptr<const String>> FileManager::chooseFiles(
    bool, const std::shared_ptr<const String>&, const std::shared_ptr<const String>&,
    const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

std::vector<std::shared_ptr<const String>> FileManager::chooseFolder(
    const std::shared_ptr<const String>&, const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

std::vector<std::shared_ptr<const String>> FileManager::chooseSaveFile(
    const std::shared_ptr<const String>&, const std::shared_ptr<const String>&) const {
    ThrowNoInteractiveDesktop();
}

std::shared_ptr<const String> FileManager::mountVolume(const String&,
                                                       const std::shared_ptr<const String>&,
                                                       const std::shared_ptr<const String>&,
                                                       const std::shared_ptr<const String>&) const {
    ThrowAdministratorMounts();
}

void FileManager::unmountVolume(const String&) const {
    ThrowAdministratorMounts();
}

std::vector<std::shared_ptr<const String>> FileManager::listVolumes() const {
    ThrowAdministratorMounts();
}

// No text names a drive here. Host paths are told from native ones by asking this, so it
// answers rather than fails.
bool FileManager::isMountedVolume(const String&) const {
    return false;
}

std::shared_ptr<const String> FileManager::toShortPath(const String&) const {
    Throw(kUnclassified, "Linux has no short path form");
}

}  // namespace slib
