// Handing an item to the shell: open it with its associated program, or show it in a folder
// window. Both are for someone at the screen: where no one can see a window (a service such as
// FileMaker Server), they fail at once rather than start programs nobody can see or close.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include "foundation/error_codes.h"
#include "foundation/exception.h"
#include "foundation/file_manager.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/interactive_desktop.h"

namespace slib {

using file_manager_detail::ComScope;
using file_manager_detail::RequireInteractiveDesktop;
using file_manager_detail::Wide;

namespace {

// Whether the shell started the item's program. ShellExecuteW itself asks for no error UI; the
// extended call keeps that and adds NOASYNC: the COM scope ends right after, which could cancel
// work the shell had only queued.
bool ShellOpen(const String& path) {
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof(request);
    request.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    request.lpVerb = L"open";
    request.lpFile = path.wide();
    request.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&request) != FALSE;
}

}  // namespace

void FileManager::openFile(const String& path) const {
    RequireInteractiveDesktop();
    // Associations may be shell extensions that need COM on this thread.
    const ComScope com;
    if (!ShellOpen(path)) {
        Throw(kUnclassified, "Cannot open file in the default application");
    }
}

void FileManager::revealItem(const String& path) const {
    RequireInteractiveDesktop();
    const std::u16string& item = path.units();
    const size_t separator = item.rfind(u'\\');
    const std::u16string parent =
        separator == std::u16string::npos ? std::u16string() : item.substr(0, separator);

    const ComScope com;
    const UniqueItemIdList parentList(ILCreateFromPathW(Wide(parent)));
    const UniqueItemIdList itemList(ILCreateFromPathW(path.wide()));
    // A path the shell cannot name gives no list; the reveal fails as the shell itself would
    // refuse a missing folder.
    if (parentList.get() == nullptr || itemList.get() == nullptr) {
        Throw(kUnclassified, "Cannot reveal the file");
    }
    PCUITEMID_CHILD child = itemList.get();
    const HRESULT result = SHOpenFolderAndSelectItems(parentList.get(), 1, &child, 0);
    if (FAILED(result)) {
        Throw(kUnclassified, "Cannot reveal the file");
    }
}

}  // namespace slib
