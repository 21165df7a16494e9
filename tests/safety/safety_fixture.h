// Test support for the safety cases: a second holder of a file, folder links (real ones even
// under Wine, whose own link call does nothing), the small volume run-tests.sh mounts, and what a
// folder and a file look like on disk, to show a failure changed nothing.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "foundation/windows/unique_handles.h"
#include "items_fixture.h"

namespace safety_test {

using items_test::Failed;
using items_test::Quoted;
using items_test::Succeeded;
using items_test::Tree;
using slib::test::Narrow;
using slib::test::Wide;

// The file opened by another handle, as another program would: `access` and `share` as given.
slib::UniqueFileHandle Hold(const std::u16string& path, DWORD access, DWORD share);

// Makes `link` a folder link to `target`: CreateSymbolicLinkW where it works; under Wine, whose
// call succeeds without making anything, a Unix symbolic link (which Wine reports as a reparse
// point). False when neither is possible here.
bool MakeFolderLink(const std::u16string& link, const std::u16string& target);

// `link` a symbolic link to the file `target`, made the same way. Wine shows such a link as the
// file it names (no reparse point).
bool MakeFileLink(const std::u16string& link, const std::u16string& target);
// Either: `kind` SYMBOLIC_LINK_FLAG_DIRECTORY or 0; true when something is there afterwards.
bool MakeLink(const std::u16string& link, const std::u16string& target, DWORD kind);
// Removes the file link `link` itself (never the file it names).
bool RemoveFileLink(const std::u16string& link);

// Removes the folder link `link` itself: RemoveDirectoryW; under Wine, whose call takes the link
// for its target folder, the Unix call. False when it did not work.
bool RemoveFolderLink(const std::u16string& link);
// Whether this system removes a folder link with RemoveDirectoryW (made and removed in `scratch`);
// `why` says what it answered when not.
bool SystemRemovesFolderLinks(const std::u16string& scratch, std::string& why);

// A free drive letter (never Z:) standing for `folder`, as a subst drive does: DefineDosDeviceW
// on Windows; under Wine, whose DefineDosDeviceW makes no drive that files can be reached on, a
// link in the prefix's dosdevices folder. Gone again with the object; empty when no letter could
// be given (`why` says so).
class MappedDrive {
  public:
    explicit MappedDrive(const std::u16string& folder);
    ~MappedDrive();
    MappedDrive(const MappedDrive&) = delete;
    MappedDrive& operator=(const MappedDrive&) = delete;

    // "M:" or "" when none.
    const std::u16string& drive() const { return drive_; }
    const std::string& why() const { return why_; }

  private:
    std::u16string drive_;
    std::string why_;
    std::string wineLink_;  // the dosdevices link under Wine
};

// A file's bytes and attributes, to compare before and after.
struct FileState {
    std::optional<std::string> bytes;
    DWORD attributes;
    bool operator==(const FileState& other) const {
        return bytes == other.bytes && attributes == other.attributes;
    }
};
FileState StateOf(const std::u16string& path);

class SafetyTest : public items_test::ItemsTest {
  protected:
    // Links first: the scratch folder's own cleanup cannot remove them on every system.
    void TearDown() override;

    // The Windows path of the small volume, or none with the reason in `why`.
    static std::optional<std::u16string> SmallVolume(std::string& why);
    // Fills the folder `folder` (on the small volume) with a file until the volume is full.
    static void FillVolume(const std::u16string& folder);

    // The result's code (the first field of call()).
    std::string codeOf(const std::u16string& calculation);
    // Every name below `folder` with its content and attributes, as one text.
    static std::string Listing(const std::u16string& folder);
};

}  // namespace safety_test
