#include "archive/folder_walk.h"

#include <windows.h>

#include <memory>

#include "archive/windows/entry_file_time.h"
#include "foundation/file_manager.h"
#include "foundation/windows/link_entries.h"
#include "foundation/windows/unique_handles.h"
#include "foundation/windows/wide_text.h"

namespace archive {

namespace {

using slib::Wide;

// One open folder listing of the walk.
struct Listing {
    slib::UniqueFindHandle search;
    std::u16string relativePath;
    WIN32_FIND_DATAW found;
    bool pending;  // `found` holds an item not handled yet
};

std::unique_ptr<Listing> OpenListing(const std::u16string& source, std::u16string relativePath) {
    auto listing = std::make_unique<Listing>();
    listing->relativePath = std::move(relativePath);
    const std::u16string pattern =
        slib::WithLongPathPrefix(source + listing->relativePath + u"\\*");
    listing->search.reset(FindFirstFileExW(Wide(pattern), FindExInfoBasic, &listing->found,
                                           FindExSearchNameMatch, nullptr,
                                           FIND_FIRST_EX_LARGE_FETCH));
    listing->pending = listing->search.valid();
    return listing;
}

}  // namespace

FolderWalk WalkFolder(const std::u16string& source) {
    FolderWalk walk;
    const DWORD attributes = GetFileAttributesW(Wide(slib::WithLongPathPrefix(source)));
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return walk;
    }
    walk.sourceIsFolder = true;
    const std::u16string base = WithoutTrailingSeparators(source);
    // Open listings from the top down to the folder being read: no recursion, however deep.
    std::vector<std::unique_ptr<Listing>> open;
    open.push_back(OpenListing(base, u""));
    while (!open.empty()) {
        Listing& listing = *open.back();
        if (!listing.pending) {
            open.pop_back();
            continue;
        }
        const WIN32_FIND_DATAW item = listing.found;
        listing.pending = FindNextFileW(listing.search.get(), &listing.found) != 0;
        const std::u16string name(reinterpret_cast<const char16_t*>(item.cFileName));
        if (name == u"." || name == u"..") {
            continue;
        }
        WalkedItem walked{listing.relativePath + u"\\" + name,
                          EntryTimeFromFileTime(item.ftLastWriteTime),
                          uint64_t{item.nFileSizeHigh} << 32 | item.nFileSizeLow};
        walked.time.attributes = KeptAttributes(item.dwFileAttributes);
        if ((item.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            walk.files.push_back(std::move(walked));
            continue;
        }
        walk.folders.push_back(walked);
        // A folder link is stored as an empty folder, never entered.
        if (!slib::IsLinkEntry(item)) {
            open.push_back(OpenListing(base, walked.relativePath));
        }
    }
    return walk;
}

}  // namespace archive
