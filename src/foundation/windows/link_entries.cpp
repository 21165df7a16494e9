#include "foundation/windows/link_entries.h"

#include "foundation/case_fold.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/wide_text.h"

namespace slib {

namespace {

// Where the open item really is ("\\?\" form, without a trailing separator), or its folder;
// empty when the system cannot say.
std::u16string FinalPath(HANDLE item, bool parent) {
    std::u16string text = FinalPathOf(item);
    if (parent) {
        const size_t separator = text.rfind(u'\\');
        text.resize(separator == std::u16string::npos ? 0 : separator);
    }
    while (!text.empty() && text.back() == u'\\') {
        text.pop_back();
    }
    return text;
}

// Whether the item opened as `item` lies in the folder its name `systemPath` gives. One a link
// led elsewhere does not, though nothing else about it shows the link.
bool LiesInItsFolder(HANDLE item, const std::u16string& systemPath) {
    const size_t separator = systemPath.rfind(u'\\');
    if (separator == std::u16string::npos) {
        return true;
    }
    const UniqueFileHandle folder = OpenItemItself(systemPath.substr(0, separator));
    if (!folder) {
        return true;
    }
    const std::u16string itemFolder = FinalPath(item, true);
    const std::u16string folderItself = FinalPath(folder.get(), false);
    return itemFolder.empty() || folderItself.empty() ||
           EqualsIgnoringCase(itemFolder, folderItself);
}

}  // namespace

std::u16string WhereLinkLeads(const std::u16string& systemPath) {
    const UniqueFileHandle item(CreateFileW(Wide(systemPath), FILE_READ_ATTRIBUTES,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS,
                                            nullptr));
    if (!item || LiesInItsFolder(item.get(), systemPath)) {
        return std::u16string();
    }
    return FinalPath(item.get(), false);
}

bool IsLinkItem(HANDLE item, const std::u16string& systemPath) {
    FILE_ATTRIBUTE_TAG_INFO tag = {};
    if (GetFileInformationByHandleEx(item, FileAttributeTagInfo, &tag, sizeof tag) &&
        (tag.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        return IsLinkEntry(tag.FileAttributes, tag.ReparseTag);
    }
    const DWORD attributes = GetFileAttributesW(Wide(systemPath));
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        return true;
    }
    return !LiesInItsFolder(item, systemPath);
}

}  // namespace slib
