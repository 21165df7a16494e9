#include "choosers/dialog_driver.h"

#include <commctrl.h>
#include <commdlg.h>
#include <dlgs.h>

namespace vf::test {
namespace {

// Generous against a loaded machine, far below CTest's limit.
constexpr DWORD kAppearMs = 10000;
constexpr DWORD kCloseMs = 8000;
// The file list and the folder tree fill in after the dialog shows.
constexpr DWORD kSettleMs = 5000;

std::u16string FromWide(const wchar_t* text) {
    return std::u16string(reinterpret_cast<const char16_t*>(text));
}

const wchar_t* Wide(const std::u16string& text) {
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

std::u16string WindowText(HWND window) {
    wchar_t text[1024] = {};
    // WM_GETTEXT rather than GetWindowText, which does not ask windows of other threads.
    SendMessageW(window, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text));
    return FromWide(text);
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

BOOL CALLBACK TakeOurDialog(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window) &&
        ClassOf(window) == L"#32770") {
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }
    return TRUE;
}

HWND FindOurDialog() {
    HWND found = nullptr;
    EnumWindows(TakeOurDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

std::vector<HWND> ChildrenOfClass(HWND parent, const wchar_t* className) {
    struct Search {
        const wchar_t* className;
        std::vector<HWND> found;
    } search{className, {}};
    EnumChildWindows(
        parent,
        [](HWND child, LPARAM data) {
            auto* s = reinterpret_cast<Search*>(data);
            if (ClassOf(child) == s->className) {
                s->found.push_back(child);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

template <typename Ready>
void WaitUntil(Ready ready, DWORD limitMs) {
    for (DWORD waited = 0; waited < limitMs && !ready(); waited += 50) {
        Sleep(50);
    }
}

}  // namespace

std::u16string DialogWindow::caption() const {
    return WindowText(window_);
}

std::u16string DialogWindow::controlText(int id) const {
    return WindowText(GetDlgItem(window_, id));
}

std::vector<std::u16string> DialogWindow::labels() const {
    std::vector<std::u16string> texts;
    for (HWND label : ChildrenOfClass(window_, L"Static")) {
        texts.push_back(WindowText(label));
    }
    return texts;
}

std::vector<std::u16string> DialogWindow::listedNames() const {
    std::vector<std::u16string> names;
    HWND list = nullptr;
    WaitUntil(
        [&] {
            const std::vector<HWND> lists = ChildrenOfClass(window_, L"SysListView32");
            list = lists.empty() ? nullptr : lists.front();
            return list != nullptr && SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) > 0;
        },
        kSettleMs);
    if (list == nullptr) {
        return names;
    }
    const LRESULT count = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
    for (LRESULT item = 0; item < count; ++item) {
        wchar_t text[MAX_PATH] = {};
        LVITEMW request{};
        request.iSubItem = 0;
        request.pszText = text;
        request.cchTextMax = MAX_PATH;
        SendMessageW(list, LVM_GETITEMTEXTW, item, reinterpret_cast<LPARAM>(&request));
        names.push_back(FromWide(text));
    }
    return names;
}

std::u16string DialogWindow::fileDialogFolder() const {
    wchar_t folder[MAX_PATH] = {};
    SendMessageW(window_, CDM_GETFOLDERPATH, MAX_PATH, reinterpret_cast<LPARAM>(folder));
    return FromWide(folder);
}

std::u16string DialogWindow::selectedTreeItem() const {
    const std::vector<HWND> trees = ChildrenOfClass(window_, L"SysTreeView32");
    if (trees.empty()) {
        return u"";
    }
    HWND tree = trees.front();
    wchar_t text[MAX_PATH] = {};
    std::u16string shown;
    // The selection moves to the initial folder once the tree has expanded down to it.
    WaitUntil(
        [&] {
            TVITEMW item{};
            item.hItem =
                reinterpret_cast<HTREEITEM>(SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
            item.mask = TVIF_TEXT;
            item.pszText = text;
            item.cchTextMax = MAX_PATH;
            if (item.hItem != nullptr &&
                SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) {
                shown = FromWide(text);
            }
            return !shown.empty();
        },
        kSettleMs);
    return shown;
}

void DialogWindow::typeName(const std::u16string& name) const {
    SendMessageW(GetDlgItem(window_, cmb13), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(name)));
}

void DialogWindow::ok() const {
    PostMessageW(window_, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
}

void DialogWindow::cancel() const {
    PostMessageW(window_, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
}

DialogDriver::DialogDriver(Actions actions)
    : actions_(std::move(actions)), thread_([this] { drive(); }) {}

DialogDriver::~DialogDriver() {
    if (thread_.joinable()) {
        thread_.join();
    }
}

void DialogDriver::drive() {
    HWND window = nullptr;
    WaitUntil([&] { return (window = FindOurDialog()) != nullptr; }, kAppearMs);
    if (window == nullptr) {
        failure_ = "no dialog appeared";
        return;
    }
    DialogWindow dialog(window);
    actions_(dialog);
    WaitUntil([&] { return !IsWindow(window); }, kCloseMs);
    if (IsWindow(window)) {
        failure_ = "the dialog was still open; the watchdog cancelled it";
        // A prompt on top (such as a replace question) goes first, then the dialog itself.
        for (int attempt = 0; attempt < 5; ++attempt) {
            HWND top = FindOurDialog();
            if (top == nullptr || top == window) {
                break;
            }
            PostMessageW(top, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            Sleep(500);
        }
        dialog.cancel();
        WaitUntil([&] { return !IsWindow(window); }, kCloseMs);
        if (IsWindow(window)) {
            PostMessageW(window, WM_CLOSE, 0, 0);
        }
    }
}

::testing::AssertionResult DialogDriver::finish() {
    if (thread_.joinable()) {
        thread_.join();
    }
    if (!failure_.empty()) {
        return ::testing::AssertionFailure() << failure_;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace vf::test
