// Copy, move and delete, handed to the shell's file operation so folders go with their whole
// contents. Our part: the checks, in order, before anything on disk changes (never a volume root,
// never into the source's own tree, compared by what the items are), and keeping from the shell
// what it does not do as promised: a transfer with a path it cannot hold and every move of a
// folder (across volumes the shell follows links and may leave a partial copy behind) run on the
// long-path walk, with the same checks and the same results.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <string>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/kept_items.h"
#include "foundation/windows/long_path_walk.h"
#include "foundation/windows/open_items.h"
#include "foundation/windows/replacement_file.h"
#include "foundation/windows/shell_file_operation.h"

namespace slib {

using file_manager_detail::Wide;

namespace {

// A failed operation is never reported as success: its code is the shell's own answer's.
[[noreturn]] void ThrowShellFailure(const char* message, const ShellOutcome& outcome) {
    Throw(ShellOutcomeCode(outcome), message);
}

// A shell that reports success for what it did not do (Wine's does, for a move it could not
// make) must not have it reported as done: the item is checked where the operation put it.
void RequireShellDid(bool done, const char* message) {
    if (!done) {
        Throw(kIoError, message);
    }
}

// Removes an item our own failed operation made; a failure to do so changes nothing reported.
void RemoveQuietly(const std::u16string& path) {
    try {
        long_path::DeleteTree(path, "Cannot copy item");
    } catch (const Exception&) {
    }
}

// The source's last component: the text after its last "\", or all of it when it has none.
std::u16string LastComponent(const std::u16string& path) {
    const size_t separator = path.rfind(u'\\');
    return separator == std::u16string::npos ? path : path.substr(separator + 1);
}

// The path as the checks and the shell see it: up to its first zero.
std::u16string Plain(const String& path) {
    return reinterpret_cast<const char16_t*>(path.wide());
}

// getItemKind, but able to see a path the plain form cannot reach (the system refuses one of
// MAX_PATH or more unprefixed): the checks must not call a long path missing or unreadable.
uint32_t TransferKind(const FileManager& manager, const String& path) {
    if (Plain(path).size() < long_path::kShellLimit) {
        return manager.getItemKind(path);
    }
    return long_path::KindOf(Plain(path));
}

// What a path named before a shell operation, to tell afterwards whether it is gone: deleted,
// replaced by another item, or with its delete pending (it goes when the last program holding it
// lets go, and nobody can open it meanwhile), which counts as deleted. Nothing is held open across
// the operation: a handle of ours would keep the item from going.
class GoneWatch {
  public:
    explicit GoneWatch(const std::u16string& path)
        : path_(long_path::LongForm(path)), identity_(IdentityOfPath(path_)) {}

    bool gone() const {
        if (IsGoneOrDeletePending(path_)) {
            return true;
        }
        const std::optional<ItemIdentity> now = IdentityOfPath(path_);
        return identity_ && now && *now != *identity_;
    }

  private:
    std::u16string path_;
    std::optional<ItemIdentity> identity_;
};

// The folder a copy or move of `source` to `target` writes into: the target's parent.
std::u16string ReceivingFolder(const std::u16string& target) {
    const size_t separator = target.rfind(u'\\');
    return separator == std::u16string::npos ? target : target.substr(0, separator);
}

// A copy or move onto itself or into its own tree would never end; the shell refuses it too, but
// only when the two texts show it: aliases of one folder are caught by what they are.
void RefuseOwnTree(const std::u16string& source, const std::u16string& target,
                   const char* message) {
    if (IsOrHolds(source, ReceivingFolder(target))) {
        ThrowLastError(message, ERROR_INVALID_PARAMETER);
    }
}

// Whether the item at `systemPath` carries its last name exactly as written (case included).
bool NamedExactly(const std::u16string& systemPath) {
    WIN32_FIND_DATAW found;
    const UniqueFindHandle search(FindFirstFileW(Wide(systemPath), &found));
    return search.valid() &&
           reinterpret_cast<const char16_t*>(found.cFileName) == LastComponent(systemPath);
}

// A system that takes a case-only rename for "nothing to do" (Wine on a case-sensitive file
// system) and still says done: the item goes by way of a name of its own, then to the new one.
void RenameThroughTemporaryName(HANDLE item, const std::u16string& from, const std::u16string& to) {
    const std::string process = std::to_string(GetCurrentProcessId());
    const std::u16string temporary = ReceivingFolder(to) + u"\\~vf-rename-" +
                                     std::u16string(process.begin(), process.end()) + u".tmp";
    if (!RenameOpenItem(item, temporary, false)) {
        ThrowLastError("Cannot move item", GetLastError());
    }
    if (!RenameOpenItem(item, to, false)) {
        const DWORD error = GetLastError();
        RenameOpenItem(item, from, false);
        ThrowLastError("Cannot move item", error);
    }
}

// When `destination` names the source item itself under another spelling (only the case
// differs, a short name or another alias of the same folder), renames it in place and says so.
bool RenamedInPlace(const std::u16string& source, const std::u16string& destination) {
    if (LastComponent(source) == LastComponent(destination)) {
        return false;
    }
    const UniqueFileHandle item =
        OpenItemItself(long_path::LongForm(source), DELETE | FILE_READ_ATTRIBUTES);
    const UniqueFileHandle named = OpenItemItself(long_path::LongForm(destination));
    if (!item.valid() || !named.valid()) {
        return false;
    }
    const std::optional<ItemIdentity> identity = IdentityOf(item.get());
    const std::optional<ItemIdentity> namedIdentity = IdentityOf(named.get());
    // A hard link is another name of the same file: not a rename of this one.
    if (!identity || !namedIdentity || *identity != *namedIdentity || !HasSingleName(item.get())) {
        return false;
    }
    const std::u16string to = long_path::LongForm(destination);
    if (!RenameOpenItem(item.get(), to, false)) {
        ThrowLastError("Cannot move item", GetLastError());
    }
    if (!NamedExactly(to)) {
        RenameThroughTemporaryName(item.get(), long_path::LongForm(source), to);
    }
    return true;
}

// A new item takes its name only when whole: it is copied under a name of ours beside the target,
// then renamed through a handle, so a copy cut short (a full disk, a killed process) is never
// found under the target's name, only under one that says it is ours.
void CopyUnderNameOfOurs(const String& source, const std::u16string& target) {
    const std::u16string staging = TemporaryNameBeside(target);
    try {
        if (long_path::NeedsWalk(Plain(source), staging)) {
            long_path::CopyTree(Plain(source), staging, "Cannot copy item");
        } else {
            const String stagingPath(staging);
            const ShellOutcome outcome = RunShellOperation(FO_COPY, source, &stagingPath);
            if (outcome.failed()) {
                ThrowShellFailure("Cannot copy item", outcome);
            }
            RequireShellDid(long_path::KindOf(staging) != ItemKind::kNone, "Cannot copy item");
        }
        const UniqueFileHandle copy = OpenItemItself(long_path::LongForm(staging), kRemovalAccess);
        if (!copy.valid() || !RenameOpenItem(copy.get(), long_path::LongForm(target), false)) {
            ThrowLastError("Cannot copy item", GetLastError());
        }
    } catch (...) {
        RemoveQuietly(staging);
        throw;
    }
}

}  // namespace

void FileManager::refuseHolderOf(const String& path, const String& folder,
                                 const char* message) const {
    if (IsOrHolds(Plain(path), Plain(folder))) {
        Throw(kBadParameter, message);
    }
}

void FileManager::copyItem(const String& source, const String& destination) const {
    if (TransferKind(*this, source) == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    if (TransferKind(*this, destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::u16string target = long_path::TransferTarget(Plain(source), Plain(destination));
    RefuseOwnTree(Plain(source), target, "Cannot copy item");
    if (long_path::NeedsWalk(Plain(source), target)) {
        long_path::CopyTree(Plain(source), target, "Cannot copy item");
        return;
    }
    if (TransferKind(*this, String(target)) == ItemKind::kNone) {
        CopyUnderNameOfOurs(source, target);
        return;
    }
    // An existing folder is merged into, item by item, as the shell does.
    const ShellOutcome outcome = RunShellOperation(FO_COPY, source, &destination);
    if (outcome.failed()) {
        ThrowShellFailure("Cannot copy item", outcome);
    }
}

void FileManager::moveItem(const String& source, const String& destination) const {
    const uint32_t sourceKind = TransferKind(*this, source);
    if (sourceKind == ItemKind::kNone) {
        Throw(kItemNotFound, "Source item does not exist");
    }
    if (IsVolumeRoot(Plain(source))) {
        Throw(kBadParameter, "Cannot move a volume root");
    }
    if (RenamedInPlace(Plain(source), Plain(destination))) {
        return;
    }
    if (TransferKind(*this, destination) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    // Into an existing folder the shell would overwrite a same-named file without asking; refuse
    // that here. A same-named folder is merged, as the shell does.
    const String candidate(destination.units() + u"\\" + LastComponent(source.units()));
    if (TransferKind(*this, candidate) == ItemKind::kFile) {
        Throw(kItemExists, "Destination item already exists");
    }
    const std::u16string target = long_path::TransferTarget(Plain(source), Plain(destination));
    RefuseOwnTree(Plain(source), target, "Cannot move item");
    if (sourceKind == ItemKind::kFolder || long_path::NeedsWalk(Plain(source), target)) {
        long_path::MoveTree(Plain(source), target, "Cannot move item");
        return;
    }
    const GoneWatch moved(Plain(source));
    const ShellOutcome outcome = RunShellOperation(FO_MOVE, source, &destination);
    // Across volumes the source is deleted last; held open elsewhere, its delete is pending and
    // the move is done.
    if (outcome.failed() &&
        !(moved.gone() && TransferKind(*this, String(target)) == ItemKind::kFile)) {
        ThrowShellFailure("Cannot move item", outcome);
    }
    RequireShellDid(moved.gone(), "Cannot move item");
}

void FileManager::deleteItem(const String& path) const {
    if (TransferKind(*this, path) == ItemKind::kNone) {
        Throw(kItemNotFound, "Item does not exist");
    }
    if (IsVolumeRoot(Plain(path))) {
        Throw(kBadParameter, "Cannot delete a volume root");
    }
    if (long_path::NeedsWalk(Plain(path), u"")) {
        long_path::DeleteTree(Plain(path), "Cannot delete item");
        return;
    }
    const GoneWatch deleted(Plain(path));
    const ShellOutcome outcome = RunShellOperation(FO_DELETE, path, nullptr);
    // A file another program holds with delete sharing is deleted once it lets go: that is done.
    if (outcome.failed() && !deleted.gone()) {
        ThrowShellFailure("Cannot delete item", outcome);
    }
    RequireShellDid(deleted.gone(), "Cannot delete item");
}

}  // namespace slib
