// The open and save dialogs of the common dialog library.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <commdlg.h>

#include <vector>

#include "foundation/chooser_filter.h"
#include "foundation/chosen_names.h"
#include "foundation/file_manager.h"
#include "foundation/windows/chooser_outcome.h"
#include "foundation/windows/file_manager_handles.h"
#include "foundation/windows/interactive_desktop.h"

namespace slib {

using file_manager_detail::CancelledChoice;
using file_manager_detail::ChosenPaths;
using file_manager_detail::ComScope;
using file_manager_detail::PathsOf;
using file_manager_detail::RequireInteractiveDesktop;
using file_manager_detail::Wide;

namespace {

// Characters of the names buffer and of the title buffer, each.
constexpr DWORD kNameCapacity = 4096;

// The record with the extension fields of Windows 2000 and later, as x64 lays it out.
static_assert(sizeof(OPENFILENAMEW) == 152, "OPENFILENAMEW of the 64-bit system");

const wchar_t* WideOrNull(const std::shared_ptr<const String>& text) {
    return text ? text->wide() : nullptr;
}

// The dialogs move the process's current folder to wherever the user went. Relative paths of a
// calculation without a database start from that folder, so it is put back after each dialog.
class CurrentFolderKept {
  public:
    CurrentFolderKept() {
        const DWORD length = GetCurrentDirectoryW(0, nullptr);
        folder_.resize(length);
        if (length == 0 || GetCurrentDirectoryW(length, folder_.data()) == 0) {
            folder_.clear();
        }
    }
    ~CurrentFolderKept() {
        if (!folder_.empty()) {
            SetCurrentDirectoryW(folder_.data());
        }
    }
    CurrentFolderKept(const CurrentFolderKept&) = delete;
    CurrentFolderKept& operator=(const CurrentFolderKept&) = delete;

  private:
    std::vector<wchar_t> folder_;
};

// One dialog run: the record and the buffers it points into live together.
class FileDialog {
  public:
    FileDialog(const std::shared_ptr<const String>& folder,
               const std::shared_ptr<const String>& title)
        : names_(kNameCapacity, u'\0'), titles_(kNameCapacity, u'\0') {
        record_.lStructSize = sizeof(record_);
        record_.hwndOwner = nullptr;
        record_.lpstrFile = reinterpret_cast<wchar_t*>(names_.data());
        record_.nMaxFile = kNameCapacity;
        record_.lpstrFileTitle = reinterpret_cast<wchar_t*>(titles_.data());
        record_.nMaxFileTitle = kNameCapacity;
        record_.lpstrInitialDir = WideOrNull(folder);
        record_.lpstrTitle = WideOrNull(title);
        record_.nFilterIndex = 1;
    }
    // The record points into the object itself.
    FileDialog(const FileDialog&) = delete;
    FileDialog& operator=(const FileDialog&) = delete;

    void setFilter(const std::u16string& filter) {
        filter_ = DialogFilterBuffer(filter);
        record_.lpstrFilter = Wide(filter_);
    }
    void setFlags(DWORD flags) { record_.Flags = flags; }

    template <typename Show>
    ChosenPaths run(Show show) {
        const CurrentFolderKept kept;
        if (!show(&record_)) {
            // No extended error means the user closed the dialog.
            return CommDlgExtendedError() == 0 ? CancelledChoice() : ChosenPaths();
        }
        return PathsOf(SplitChosenNames(names_.data(), names_.size()));
    }

  private:
    std::vector<char16_t> names_;
    std::vector<char16_t> titles_;
    std::u16string filter_;
    OPENFILENAMEW record_{};
};

}  // namespace

ChosenPaths FileManager::chooseFiles(bool several, const std::shared_ptr<const String>& folder,
                                     const std::shared_ptr<const String>& title,
                                     const std::shared_ptr<const String>& filter) const {
    RequireInteractiveDesktop();
    const ComScope com;
    FileDialog dialog(folder, title);
    if (filter) {
        dialog.setFilter(filter->units());
    }
    dialog.setFlags(OFN_EXPLORER | (several ? OFN_ALLOWMULTISELECT : 0));
    return dialog.run(GetOpenFileNameW);
}

ChosenPaths FileManager::chooseSaveFile(const std::shared_ptr<const String>& folder,
                                        const std::shared_ptr<const String>& title) const {
    RequireInteractiveDesktop();
    const ComScope com;
    // No flags: in particular no overwrite prompt, the caller decides about an existing file.
    FileDialog dialog(folder, title);
    ChosenPaths chosen = dialog.run(GetSaveFileNameW);
    // A single name always; the buffer holds nothing after it.
    if (chosen.size() > 1) {
        chosen.resize(1);
    }
    return chosen;
}

}  // namespace slib
