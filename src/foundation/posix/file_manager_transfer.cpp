// Copy, move and delete on our own descriptor walk (tree_walk.h). Our part: the checks, in the
// Windows body's order, before anything on disk changes (never a root or mount point, never into
// the source's own tree, compared by identity), and the promise that a copy appears whole or not
// at all: it is written under a partial name beside its target, fsync'ed, then renamed.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/file_name_bytes.h"
#include "foundation/posix/item_kind.h"
#include "foundation/posix/item_path.h"
#include "foundation/posix/kept_items.h"
#include "foundation/posix/tree_walk.h"
#include "foundation/temporary_names.h"

namespace slib {

namespace {

// An open folder and the name an operation acts on inside it.
struct Place {
    UniqueFd folder;
    std::string name;
};

Place OpenPlace(const std::string& path, const char* message) {
    const PathParts parts = SplitPath(path);
    if (parts.name.empty()) {
        ThrowErrno(message, EINVAL);
    }
    Place place{OpenFolder(parts.folder), parts.name};
    if (!place.folder.valid()) {
        ThrowErrno(message, errno);
    }
    return place;
}

// Where a copy or move lands: inside `destination` under the source's own name when it is an
// existing folder, else `destination` itself.
std::string TransferTarget(const std::string& source, const std::string& destination) {
    struct stat info;
    if (::stat(destination.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
        return destination + "/" + SplitPath(source).name;
    }
    return destination;
}

// A copy or move onto itself or into its own tree would never end.
void RefuseOwnTree(const std::string& source, const std::string& target, const char* message) {
    if (IsOrHolds(source, SplitPath(target).folder)) {
        ThrowErrno(message, EINVAL);
    }
}

// Removes what our own failed copy made; a failure to do so changes nothing reported.
void RemoveQuietly(int folder, const std::string& name) {
    try {
        RemoveEntry(folder, name, "Cannot copy item");
    } catch (const Exception&) {
    }
}

// The copy itself: whole under a partial name, then placed under the target's. A copy takes
// what a named link leads to, as opening the name would; a move takes the link itself.
void CopyWhole(const std::string& source, const std::string& target, bool followTop,
               const char* message) {
    const Place from = OpenPlace(source, message);
    const Place into = OpenPlace(target, message);
    const std::string partial =
        SplitPath(ItemPathBytes(String(TemporaryNameBeside(FileNameBytesToText(target))), message))
            .name;
    try {
        CopyEntry(from.folder.get(), from.name, into.folder.get(), partial, followTop, message);
        PlaceEntry(into.folder.get(), partial, into.folder.get(), into.name, message);
    } catch (const Exception&) {
        RemoveQuietly(into.folder.get(), partial);
        throw;
    }
    ::fsync(into.folder.get());
}

}  // namespace

void FileManager::refuseHolderOf(const String& path, const String& folder,
                                 const char* message) const {
    // Deleting or moving a link takes the link only, whatever it leads to.
    if (ItselfIsOrHolds(ItemPathBytes(path, message), ItemPathBytes(folder, message))) {
        Throw(kBadParameter, message);
    }
}

void FileManager::copyItem(const String& source, const String& destination) const {
    const char* message = "Cannot copy item";
    if (getItemKind(source) == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    if (getItemKind(destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::string from = ItemPathBytes(source, message);
    const std::string target = TransferTarget(from, ItemPathBytes(destination, message));
    RefuseOwnTree(from, target, message);
    CopyWhole(from, target, true, message);
}

void FileManager::moveItem(const String& source, const String& destination) const {
    const char* message = "Cannot move item";
    if (getItemKind(source) == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    const std::string from = ItemPathBytes(source, message);
    if (IsVolumeRoot(from)) {
        Throw(kBadParameter, "Cannot move a volume root");
    }
    if (getItemKind(destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::string to = ItemPathBytes(destination, message);
    // Into an existing folder a same-named file would be replaced without asking; refuse that.
    if (ItemKindAt(to) == ItemKind::kFolder &&
        ItemKindAt(to + "/" + SplitPath(from).name) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::string target = TransferTarget(from, to);
    RefuseOwnTree(from, target, message);
    {
        const Place here = OpenPlace(from, message);
        const Place there = OpenPlace(target, message);
        try {
            PlaceEntry(here.folder.get(), here.name, there.folder.get(), there.name, message);
            return;
        } catch (const Exception& failure) {
            const auto* error = dynamic_cast<const PosixErrno*>(failure.error().get());
            if (error == nullptr || error->value() != EXDEV) {
                throw;
            }
        }
    }
    // Across file systems: the copy completes before the source goes; a failed copy leaves it.
    CopyWhole(from, target, false, message);
    const Place here = OpenPlace(from, message);
    RemoveEntry(here.folder.get(), here.name, message);
}

void FileManager::deleteItem(const String& path) const {
    const char* message = "Cannot delete item";
    if (getItemKind(path) == ItemKind::kNone) {
        Throw(kItemNotFound, "Item does not exist");
    }
    const std::string item = ItemPathBytes(path, message);
    if (IsVolumeRoot(item)) {
        Throw(kBadParameter, "Cannot delete a volume root");
    }
    const Place place = OpenPlace(item, message);
    RemoveEntry(place.folder.get(), place.name, message);
}

}  // namespace slib
