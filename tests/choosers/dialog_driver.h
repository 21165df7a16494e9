#pragma once
// Drives the next dialog this process shows, from a thread of its own, while the test's thread
// sits in the dialog's modal loop. Dialogs are real; the driver only does what a user would:
// reads what the dialog shows, types a name, presses OK or Cancel.
//
//   DialogDriver driver([&](DialogWindow& dialog) { dialog.typeName(u"a.txt"); dialog.ok(); });
//   const auto chosen = manager.chooseFiles(false, folder, title, nullptr);
//   EXPECT_TRUE(driver.finish());
//
// Watchdog: a dialog still open some seconds after the actions ran (or one that never got any)
// is cancelled by the driver, and finish() reports the failure, so no test can hang.

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace vf::test {

class DialogWindow {
  public:
    explicit DialogWindow(HWND window) : window_(window) {}

    std::u16string caption() const;
    // The text of the dialog's control `id`.
    std::u16string controlText(int id) const;
    // Every static text inside the dialog (labels), in window order.
    std::vector<std::u16string> labels() const;
    // The names the file dialog's list shows, once it has shown any (or after a few seconds).
    std::vector<std::u16string> listedNames() const;
    // The folder the file dialog shows.
    std::u16string fileDialogFolder() const;
    // The text of the folder browser's selected tree item.
    std::u16string selectedTreeItem() const;

    // Types into the file dialog's name box.
    void typeName(const std::u16string& name) const;
    void ok() const;
    void cancel() const;

  private:
    HWND window_;
};

class DialogDriver {
  public:
    using Actions = std::function<void(DialogWindow&)>;
    explicit DialogDriver(Actions actions);
    ~DialogDriver();
    DialogDriver(const DialogDriver&) = delete;
    DialogDriver& operator=(const DialogDriver&) = delete;

    // Waits for the driver; a failure when no dialog came or the watchdog had to close it.
    ::testing::AssertionResult finish();

  private:
    void drive();

    Actions actions_;
    std::string failure_;
    std::thread thread_;
};

}  // namespace vf::test
