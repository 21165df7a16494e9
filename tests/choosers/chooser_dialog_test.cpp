// The three choosers of slib::FileManager with their real dialogs, driven on the test display.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "choosers/dialog_driver.h"
#include "file_manager/scratch_folder.h"
#include "foundation/utf16_string.h"
#include "foundation/windows/file_manager.h"

namespace slib {
namespace test {
namespace {

using vf::test::DialogDriver;
using vf::test::DialogWindow;
using Texts = std::vector<std::u16string>;

Texts Units(const std::vector<std::shared_ptr<const String>>& chosen) {
    Texts units;
    for (const auto& path : chosen) {
        units.push_back(path->units());
    }
    return units;
}

std::shared_ptr<const String> Text(const std::u16string& text) {
    return std::make_shared<const String>(text);
}

class ChooserDialogs : public ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        for (const char16_t* name : {u"a.txt", u"b.txt", u"c.txt", u"d.csv"}) {
            writeFile(name, "x");
        }
        makeFolder(u"inner");
    }
    std::shared_ptr<const String> folder() const { return Text(root_); }
};

TEST_F(ChooserDialogs, OpenDialogAnswersThePathsInTheOrderTyped) {
    const struct {
        bool several;
        std::u16string typed;
        Texts chosen;
    } rows[] = {
        {false, u"b.txt", {path(u"b.txt")}},
        {true, u"\"c.txt\" \"a.txt\" \"b.txt\"", {path(u"c.txt"), path(u"a.txt"), path(u"b.txt")}},
    };
    for (const auto& row : rows) {
        DialogDriver driver([&](DialogWindow& dialog) {
            dialog.typeName(row.typed);
            dialog.ok();
        });
        const auto chosen = manager_.chooseFiles(row.several, folder(), nullptr, nullptr);
        ASSERT_TRUE(driver.finish());
        EXPECT_EQ(Units(chosen), row.chosen);
    }
}

TEST_F(ChooserDialogs, OpenDialogShowsTitleFolderAndOnlyTheAllowedFiles) {
    std::u16string caption, folderShown, filterName;
    Texts listed;
    DialogDriver driver([&](DialogWindow& dialog) {
        caption = dialog.caption();
        listed = dialog.listedNames();
        folderShown = dialog.fileDialogFolder();
        filterName = dialog.controlText(0x470);  // the file type box
        dialog.cancel();
    });
    const auto chosen = manager_.choose(CreateKind::kFile, true, folder(), Text(u"Pick the texts"),
                                        {Text(u"txt"), Text(u"TXT")});
    ASSERT_TRUE(driver.finish());
    EXPECT_EQ(Units(chosen), Texts{u"-128"});
    EXPECT_EQ(caption, u"Pick the texts");
    EXPECT_EQ(folderShown, root_);
    EXPECT_EQ(filterName, u"Allowed files:");
    // Folders stay listed to move through; of the files only the allowed ones.
    EXPECT_EQ(listed, (Texts{u"inner", u"a.txt", u"b.txt", u"c.txt"}));
}

TEST_F(ChooserDialogs, SaveDialogTakesANameAndDoesNotAskBeforeReplacing) {
    const struct {
        std::u16string typed;
        std::u16string chosen;
    } rows[] = {
        {u"new.txt", path(u"new.txt")},
        // Asking would keep the dialog open and the watchdog would fail the run.
        {u"a.txt", path(u"a.txt")},
    };
    for (const auto& row : rows) {
        std::u16string caption;
        DialogDriver driver([&](DialogWindow& dialog) {
            caption = dialog.caption();
            dialog.typeName(row.typed);
            dialog.ok();
        });
        const auto chosen = manager_.chooseSaveFile(folder(), Text(u"Save the report"));
        ASSERT_TRUE(driver.finish());
        EXPECT_EQ(caption, u"Save the report");
        EXPECT_EQ(Units(chosen), Texts{row.chosen});
        EXPECT_EQ(readFile(u"a.txt"), "x") << "the chooser itself never writes";
    }
}

TEST_F(ChooserDialogs, FolderBrowserOpensOnTheFolderAndAnswersIt) {
    std::u16string caption, selected;
    Texts labels;
    DialogDriver driver([&](DialogWindow& dialog) {
        caption = dialog.caption();
        labels = dialog.labels();
        selected = dialog.selectedTreeItem();
        dialog.ok();
    });
    const auto chosen = manager_.chooseFolder(Text(path(u"inner")), Text(u"Pick one"));
    ASSERT_TRUE(driver.finish());
    EXPECT_EQ(caption, u"Pick one");
    EXPECT_NE(std::find(labels.begin(), labels.end(), u"Pick one"), labels.end());
    EXPECT_EQ(selected, u"inner");
    EXPECT_EQ(Units(chosen), Texts{path(u"inner")});
}

TEST_F(ChooserDialogs, FolderBrowserWithoutTitleSaysChooseDirectory) {
    std::u16string caption;
    Texts labels;
    DialogDriver driver([&](DialogWindow& dialog) {
        caption = dialog.caption();
        labels = dialog.labels();
        dialog.cancel();
    });
    const auto chosen = manager_.chooseFolder(nullptr, nullptr);
    ASSERT_TRUE(driver.finish());
    EXPECT_EQ(caption, u"Choose Directory...");
    EXPECT_NE(std::find(labels.begin(), labels.end(), u"Choose Directory..."), labels.end());
    EXPECT_EQ(Units(chosen), Texts{u"-128"});
}

TEST_F(ChooserDialogs, CancelOnEveryKindIsMinus128) {
    for (const int32_t kind : {CreateKind::kFile, CreateKind::kFolder, CreateKind::kNew}) {
        for (const bool several : {false, true}) {
            DialogDriver driver([](DialogWindow& dialog) { dialog.cancel(); });
            const auto chosen = manager_.choose(kind, several, folder(), nullptr, {});
            ASSERT_TRUE(driver.finish()) << "kind " << kind;
            EXPECT_EQ(Units(chosen), Texts{u"-128"}) << "kind " << kind;
        }
    }
}

TEST(ChooserKinds, AnUnknownKindShowsNothing) {
    for (const int32_t kind : {CreateKind::kUnknown, CreateKind::kFiles, 7}) {
        EXPECT_EQ(FailureOf([&] { FileManager().choose(kind, false, nullptr, nullptr, {}); }),
                  Failure(-50, "Wrong parameter"));
    }
}

}  // namespace
}  // namespace test
}  // namespace slib
