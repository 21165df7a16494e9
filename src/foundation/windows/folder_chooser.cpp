// The shell's folder browser.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <shlobj.h>

#include "foundation/file_manager.h"
#include "foundation/windows/chooser_outcome.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/interactive_desktop.h"
#include "foundation/windows/single_threaded_apartment.h"

namespace slib {

using file_manager_detail::CancelledChoice;
using file_manager_detail::ChosenPaths;
using file_manager_detail::RequireInteractiveDesktop;

namespace {

struct FolderDialogStart {
    const wchar_t* caption;
    const wchar_t* folder;  // null: wherever the browser opens by itself
};

int CALLBACK OnFolderDialogEvent(HWND dialog, UINT event, LPARAM, LPARAM data) {
    if (event == BFFM_INITIALIZED) {
        const auto* start = reinterpret_cast<const FolderDialogStart*>(data);
        // The browser shows its title only as a label inside; the caption is what people (and
        // window lists) see first.
        SetWindowTextW(dialog, start->caption);
        if (start->folder != nullptr) {
            SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(start->folder));
        }
    }
    return 0;
}

// The dialog itself, in the single-threaded apartment the caller provides.
ChosenPaths BrowseForFolder(const std::shared_ptr<const String>& folder,
                            const std::shared_ptr<const String>& title) {
    const FolderDialogStart start{title ? title->wide() : L"Choose Directory...",
                                  folder ? folder->wide() : nullptr};
    wchar_t displayName[MAX_PATH] = {};
    BROWSEINFOW browse{};
    browse.hwndOwner = nullptr;
    browse.pidlRoot = nullptr;
    browse.pszDisplayName = displayName;
    browse.lpszTitle = start.caption;
    browse.ulFlags = 0;
    browse.lpfn = OnFolderDialogEvent;
    browse.lParam = reinterpret_cast<LPARAM>(&start);

    const UniqueItemIdList chosen(SHBrowseForFolderW(&browse));
    if (!chosen) {
        return CancelledChoice();
    }
    wchar_t path[MAX_PATH] = {};
    if (!SHGetPathFromIDListW(chosen.get(), path)) {
        return {};
    }
    return {String::FromWide(path)};
}

}  // namespace

ChosenPaths FileManager::chooseFolder(const std::shared_ptr<const String>& folder,
                                      const std::shared_ptr<const String>& title) const {
    RequireInteractiveDesktop();
    ChosenPaths result;
    RunInSingleThreadedApartment([&] { result = BrowseForFolder(folder, title); });
    return result;
}

}  // namespace slib
