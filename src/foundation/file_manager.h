#pragma once
// slib::FileManager: the one service through which the plug-in touches files, folders, the shell
// and network volumes. It holds no state: each caller makes its own, uses it and lets it go.
// Every failure throws slib::Exception; nothing is cached between calls.
//
// Paths are absolute Windows paths. Every system call that takes a path is handed
// WithLongPathPrefix's normal, prefixed form; only the shell (copy/move/delete through
// SHFileOperationW, the shell actions) refuses the prefix and gets the plain form. A copy, move or
// delete that would reach a path the shell cannot hold runs on our own long-path walk instead.
//
// Linux: paths are absolute POSIX paths, turned into the name bytes by SystemPath. Copy, move,
// delete and sizes run on a descriptor walk that never follows a link inside a tree (a copy
// keeps it as a link); roots, mount points and the database's holders are compared by device and
// inode; rights are the mode's owner, group and other bits; the creation date is read where the
// file system keeps it and never set. The members a server has no use for (dialogs, shell
// windows, mounts, short names) fail with defined errors: posix/file_manager_server.cpp.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "foundation/data.h"
#include "foundation/object.h"
#include "foundation/path_normal_form.h"  // WithLongPathPrefix: the form system calls are given
#include "foundation/utf16_string.h"

namespace slib {

// Result of FileManager::getItemKind.
struct ItemKind {
    static constexpr uint32_t kFile = 0;
    static constexpr uint32_t kFolder = 1;
    static constexpr uint32_t kNone = 2;
};

// Positions of the item-kind keyword list ("file", "folder", "new", "files", "folders"), as
// handed to FileManager::createItem; kUnknown is a keyword that is not in the list.
struct CreateKind {
    static constexpr int32_t kUnknown = -1;
    static constexpr int32_t kFile = 0;
    static constexpr int32_t kFolder = 1;
    static constexpr int32_t kNew = 2;
    static constexpr int32_t kFiles = 3;
    static constexpr int32_t kFolders = 4;
};

// Attribute ids of FileManager::getAttribute and setAttribute.
struct AttributeId {
    static constexpr uint32_t kCreated = 0;          // Date; settable
    static constexpr uint32_t kModified = 1;         // Date (last write); settable
    static constexpr uint32_t kSize = 2;             // Number: getItemSize
    static constexpr uint32_t kDataSize = 3;         // Number: the same as kSize
    static constexpr uint32_t kResourceSize = 4;     // Number: always 0
    static constexpr uint32_t kAvailableSpace = 5;   // Number: getFreeSpace
    static constexpr uint32_t kOwner = 6;            // String: account name; settable
    static constexpr uint32_t kGroup = 7;            // String: account name; settable
    static constexpr uint32_t kOwnerRights = 8;      // Number 0 to 7; settable (adds only)
    static constexpr uint32_t kGroupRights = 9;      // Number 0 to 7; settable (adds only)
    static constexpr uint32_t kEveryoneRights = 10;  // Number 0 to 7; settable (adds only)
};

// Where a read or write starts. fromEnd: 0 counts `offset` from the start, 1 from the end (for a
// read the offset is first reduced by one, so (1, 0) is the last byte; for a write (1, 0) is the
// append position), 2 from the freshly opened file's position (the start); anything else acts
// as 0. A position before the start is the start; one past the end reads nothing.
struct FilePosition {
    uint32_t fromEnd = 0;
    int64_t offset = 0;

    // A host index: 0 or more counts from the start, a negative one from the end (-1 the last
    // byte to read, the append position to write).
    static FilePosition FromIndex(int64_t index) {
        return index >= 0 ? FilePosition{0, index} : FilePosition{1, index + 1};
    }
};

// A read length meaning "everything from the position on".
constexpr uint64_t kReadToEnd = UINT64_MAX;
// The most one read may return: one host value holds less than 4 GiB.
constexpr uint64_t kLargestRead = 0xFFFFFFFFu;

class FileManager : public Object {
  public:
    // --- core ---
    // 0 file, 1 folder, 2 no such item; -54 "Insufficent file permissions" when it cannot tell.
    uint32_t getItemKind(const String& path) const;
    // Creates the last component only (long-path form); fails on an existing item.
    void createDirectory(const String& path) const;
    // Creates an empty file (long-path form): truncates an existing one when `overwrite`,
    // otherwise fails on any existing item.
    void createFile(const String& path, bool overwrite) const;
    // Creates the item an item-kind keyword position asks for:
    //   kFile, kNew, kFiles   an empty file, never overwriting (createFile(path, false))
    //   kFolder, kFolders     a folder (createDirectory)
    //   kUnknown, any other   -50 "Wrong parameter"; nothing is created
    void createItem(const String& path, int32_t kindPosition) const;
    // The current user's profile folder, without a trailing separator.
    std::shared_ptr<const String> getHomeFolder() const;
    // Size of a file as the opened file gives it (for a file link, the file it points at), or
    // the recursive total of a folder (64-bit).
    uint64_t getItemSize(const String& path) const;
    // Recursive total of the files below a folder; an unreadable or missing folder counts 0.
    uint64_t getFolderSize(const String& path) const;
    // "smb://server/share" becomes "\\server\share"; any other text comes back unchanged.
    std::shared_ptr<const String> smbUrlToUncPath(const String& url) const;
    // The 8.3 form of an existing path, or the path as given when the system has none.
    std::shared_ptr<const String> toShortPath(const String& path) const;
    // One command-line argument: a leading space, then the text with control characters, space,
    // double quote and backslash escaped by a backslash ("\a", "\ ", "\"", "\\", ...).
    std::shared_ptr<const String> escapeForCommandLine(const String& text) const;

    // --- copy, move, delete (through the shell; whole trees, no recycle bin) ---
    // Items are compared by what they are, not by their text: a subst drive, a short name, a
    // "\\?\" or UNC form or a link of the same item is the same item.
    // -43 "Source item does not exist", then -48 "Destination item already exists" when the
    // destination is a file. An existing destination folder receives the source inside it. A copy
    // into the source's own tree: -50 "Cannot copy item".
    void copyItem(const String& source, const String& destination) const;
    // As copyItem, plus -48 when the destination folder already holds a file of the source's name;
    // -50 "Cannot move a volume root" right after the -43 check; a destination that is the source
    // itself under another spelling (a case-only rename) renames it in place.
    void moveItem(const String& source, const String& destination) const;
    // -43 "Item does not exist", -50 "Cannot delete a volume root"; otherwise removes the item and
    // all it holds, permanently. An item whose delete is pending (held elsewhere) counts as gone.
    void deleteItem(const String& path) const;
    // Where a copy or move of `source` to `destination` lands: inside `destination` under the
    // source's own name when that is an existing folder, else `destination` itself.
    std::shared_ptr<const String> transferTarget(const String& source,
                                                 const String& destination) const;
    // -50 `message` when `path` names `folder` or one of the folders holding it.
    void refuseHolderOf(const String& path, const String& folder, const char* message) const;

    // --- shell actions (never wait for the started program) ---
    // The three that show something to the user fail at once where no one can see it, with the
    // choosers' 2400 "No interactive desktop to show the dialog on".
    // Opens the file in the application associated with it.
    void openFile(const String& path) const;
    // Starts `"application" "file"`, the application named by its long form.
    void openFileWithApplication(const String& file, const String& application) const;
    // Opens a folder window on the item's parent with the item selected.
    void revealItem(const String& path) const;
    // Starts `"application"` followed by each carriage-return separated line of `arguments`,
    // escaped with escapeForCommandLine; the application is named by its long form. An empty
    // text passes no arguments. Works without a desktop too.
    void runApplication(const String& application, const String& arguments) const;

    // --- volumes ---
    // Connects `remote` (a UNC path) on `mountPath` ("Z:" or "Z:\"), or on the highest free drive
    // letter when it is null; null user or password are passed as null. Returns e.g. "Z:\".
    std::shared_ptr<const String> mountVolume(const String& remote,
                                              const std::shared_ptr<const String>& mountPath,
                                              const std::shared_ptr<const String>& user,
                                              const std::shared_ptr<const String>& password) const;
    // Drops the connection on "Z:" or "Z:\", even with files open on it, and forgets it.
    void unmountVolume(const String& mountPath) const;
    // Drive names of all logical drives ("C:", "D:", ...), in the system's order.
    std::vector<std::shared_ptr<const String>> listVolumes() const;
    // True when `name` is one of listVolumes(), letters compared without regard to case ("c:"
    // matches "C:"). Volume labels and forms with a trailing "\" are not volume names.
    bool isMountedVolume(const String& name) const;

    // --- attributes ---
    // Dates are the machine's local time (the offset in force at that date); rights values are
    // read 4 (READ_CONTROL), write 2 (WRITE_OWNER), execute 1 (GENERIC_EXECUTE).
    // One AttributeId: a Date, a Number or a String. -50 "Unknown file attribute requested" for
    // ids of 11 or more.
    std::shared_ptr<Object> getAttribute(const String& path, uint32_t id) const;
    // Dates want a Date, names a text (any object's description), rights a Number. A date opens
    // the path as a file, creating an empty one where nothing is; folders are refused. -50
    // "Unknown file attribute requested" for ids 2 to 5 and 11 or more.
    void setAttribute(const String& path, uint32_t id, const Object& value) const;
    // Bytes available to the caller (quotas honoured) on the volume of any item on it.
    uint64_t getFreeSpace(const String& path) const;
    // The bare account name, without its domain.
    std::shared_ptr<const String> getOwnerName(const String& path) const;
    std::shared_ptr<const String> getGroupName(const String& path) const;
    uint32_t getOwnerRights(const String& path) const;
    uint32_t getGroupRights(const String& path) const;
    uint32_t getEveryoneRights(const String& path) const;
    void setOwner(const String& path, const String& accountName) const;
    void setGroup(const String& path, const String& accountName) const;
    // Rights are only ever added: a clear bit leaves that right as it was.
    void setOwnerRights(const String& path, uint32_t rights) const;
    void setGroupRights(const String& path, uint32_t rights) const;
    void setEveryoneRights(const String& path, uint32_t rights) const;

    // --- choosers ---
    // Modal system dialogs on the calling thread, owned by no window. Each answers the chosen
    // absolute paths in the dialog's order, the single text "-128" when the user cancels, and no
    // paths when the dialog itself fails. Null folder or title leave the dialog's own. Where no
    // dialog can be shown (no interactive desktop: a service, or no display), each fails at once
    // with 2400 "No interactive desktop to show the dialog on", before showing anything.
    // The open dialog; with `several` the user may pick more than one file. `filter` is dialog
    // filter text with "|" separators (buildAllowedFilesFilter).
    std::vector<std::shared_ptr<const String>> chooseFiles(
        bool several, const std::shared_ptr<const String>& folder,
        const std::shared_ptr<const String>& title,
        const std::shared_ptr<const String>& filter) const;
    // The folder browser, opened on `folder`; "Choose Directory..." when no title. A chosen item
    // with no file-system path (a virtual folder) gives no paths.
    std::vector<std::shared_ptr<const String>> chooseFolder(
        const std::shared_ptr<const String>& folder,
        const std::shared_ptr<const String>& title) const;
    // The save dialog: any name may be typed, and an existing file is not asked about.
    std::vector<std::shared_ptr<const String>> chooseSaveFile(
        const std::shared_ptr<const String>& folder,
        const std::shared_ptr<const String>& title) const;
    // "Allowed files:|*.txt;*.csv|" for {"txt", "csv"}.
    std::shared_ptr<const String> buildAllowedFilesFilter(
        const std::vector<std::shared_ptr<const String>>& extensions) const;
    // The dialog an item-kind position asks for: kFile the open dialog (with the allowed
    // extensions as its filter, none when empty), kFolder the folder browser, kNew the save
    // dialog; any other position is -50 "Wrong parameter" and shows nothing.
    std::vector<std::shared_ptr<const String>> choose(
        int32_t kindPosition, bool several, const std::shared_ptr<const String>& folder,
        const std::shared_ptr<const String>& title,
        const std::vector<std::shared_ptr<const String>>& extensions) const;

    // --- contents (sizes are 64-bit; data moves in chunks of a few MiB) ---
    // Up to `length` bytes from `position` (kReadToEnd: to the end). The size comes from the
    // opened file and the read goes on to its real end, so neither a link nor a stale size cuts
    // it short. A missing or empty file, or a folder, gives empty data. An open refused:
    // -54 "Insufficent file permissions"; a result over kLargestRead bytes: -50, before anything
    // is read when the size says so; a failed pointer move or read: "Cannot read file" with the
    // system's error.
    std::shared_ptr<const Data> readFile(const String& path, FilePosition position,
                                         uint64_t length) const;
    std::shared_ptr<const Data> readWholeFile(const String& path) const;
    // Writes all bytes at `position` (never truncated), in place: a failure part way leaves the
    // bytes written so far. A missing file is created whole under its name or not at all, even
    // if the process dies meanwhile.
    // "Cannot open file for writing" or, for a failed or short write, "Cannot write to file",
    // both with the system's error. Returns the number of bytes written.
    uint64_t writeFile(const String& path, const Data& data, FilePosition position) const;
    // Writes a whole new file beside it and swaps it in (ReplacementFile): a failure leaves the old
    // file as it was. "Cannot write to file" with the system's error.
    uint64_t replaceFile(const String& path, const Data& data) const;
    // Bare names of a folder's entries, in the system's order, without "." and "..";
    // "Cannot read folder contents" when the folder cannot be searched.
    std::vector<std::shared_ptr<const String>> listFolder(const String& path) const;
    // A MIME type from the file's first bytes and its name (SniffMimeType); missing or
    // unreadable files are read as empty.
    std::string getMimeType(const String& path) const;
};

// The drive letter a mount without a mount path takes: the first letter from Z down whose bit in
// `usedDrives` (bit 0 = A, as GetLogicalDrives gives) is clear. With A to Z all in use the search
// runs past A and yields '@', which the system then refuses as a local name.
char16_t ChooseFreeDriveLetter(uint32_t usedDrives);

}  // namespace slib
