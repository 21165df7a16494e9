#include "foundation/windows/kept_items.h"

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <algorithm>
#include <vector>

#include "foundation/case_fold.h"
#include "foundation/path_normal_form.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/long_path_walk.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

bool IsRootText(const std::u16string& path) {
    const std::u16string normal = NormalizePath(path);
    const PathRoot root = PathRootOf(normal);
    return root.kind != PathRootKind::kRelative && root.kind != PathRootKind::kDriveRelative &&
           root.length >= normal.size();
}

// The open item's path inside its volume is "\" exactly when it is the volume's root.
bool IsRootOfItsVolume(HANDLE item) {
    wchar_t inside[4] = {};
    const DWORD length = GetFinalPathNameByHandleW(item, inside, 4, VOLUME_NAME_NONE);
    if (length == 1 && inside[0] == L'\\') {
        return true;
    }
    const std::u16string final = FinalPathOf(item);
    return !final.empty() && IsRootText(final);
}

// `normal` and each folder above it, up to its root.
std::vector<std::u16string> FolderChain(const std::u16string& path) {
    std::vector<std::u16string> chain;
    std::u16string normal = NormalizePath(path);
    const size_t rootLength = PathRootOf(normal).length;
    while (!normal.empty()) {
        chain.push_back(normal);
        if (normal.size() <= rootLength) {
            break;
        }
        const size_t separator = normal.rfind(u'\\');
        if (separator == std::u16string::npos || separator < rootLength) {
            normal.resize(rootLength);
        } else {
            normal.resize(std::max(separator, rootLength));
        }
    }
    return chain;
}

void AddChainIdentities(const std::u16string& path, std::vector<ItemIdentity>& identities) {
    for (const std::u16string& folder : FolderChain(path)) {
        for (const ItemIdentity& identity : IdentitiesOfPath(long_path::LongForm(folder))) {
            identities.push_back(identity);
        }
    }
}

}  // namespace

bool IsVolumeRoot(const std::u16string& path) {
    if (IsRootText(path)) {
        return true;
    }
    const std::u16string systemPath = long_path::LongForm(path);
    for (const UniqueFileHandle& item :
         {OpenItemItself(systemPath), OpenItemFollowed(systemPath)}) {
        if (item.valid() && IsRootOfItsVolume(item.get())) {
            return true;
        }
    }
    return false;
}

bool IsOrHolds(const std::u16string& path, const std::u16string& folder) {
    // The text alone settles the plain case, so a busy system that cannot open an item for its
    // identity at that moment never lets the database's own folder through.
    const std::u16string normal = NormalizePath(path);
    for (const std::u16string& holder : FolderChain(folder)) {
        if (EqualsIgnoringCase(holder, normal)) {
            return true;
        }
    }
    const std::vector<ItemIdentity> candidates = IdentitiesOfPath(long_path::LongForm(path));
    if (candidates.empty()) {
        return false;
    }
    // The folder's chain as written, and as it really lies when a link or subst drive leads there.
    std::vector<ItemIdentity> chain;
    AddChainIdentities(folder, chain);
    const UniqueFileHandle real = OpenItemFollowed(long_path::LongForm(folder));
    if (real.valid()) {
        const std::u16string final = FinalPathOf(real.get());
        if (!final.empty()) {
            AddChainIdentities(final, chain);
        }
    }
    return std::any_of(candidates.begin(), candidates.end(), [&](const ItemIdentity& candidate) {
        return std::find(chain.begin(), chain.end(), candidate) != chain.end();
    });
}

}  // namespace slib
