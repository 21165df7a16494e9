// The walk's handle primitives: a folder's listing read from its handle, its entries opened inside
// it and matched to what was listed (a swapped entry is caught), removals through the handle.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <algorithm>

#include "file_manager/scratch_folder.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/open_items.h"

namespace slib {
namespace test {
namespace {

class OpenItems : public ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        makeFolder(u"box");
        makeFolder(u"box\\sub");
        writeFile(u"box\\sub\\in.txt", "in");
        writeFile(u"box\\file.txt", "file");
        box_ = OpenItemItself(u"\\\\?\\" + path(u"box"), FILE_LIST_DIRECTORY);
        ASSERT_TRUE(box_.valid());
    }

    void TearDown() override {
        box_.reset();
        ScratchTest::TearDown();
    }

    const ListedEntry& listed(const std::vector<ListedEntry>& entries, const std::u16string& name) {
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const ListedEntry& e) { return e.name == name; });
        EXPECT_NE(found, entries.end()) << Narrow(name);
        return *found;
    }

    UniqueFileHandle box_;
};

TEST_F(OpenItems, ListsTheOpenFolderAndOpensEachEntryAsTheItemListed) {
    std::vector<ListedEntry> entries;
    ASSERT_TRUE(ListOpenFolder(box_.get(), entries));
    ASSERT_EQ(entries.size(), 2u) << "\".\" and \"..\" are left out";
    for (const auto& [name, folder] : {std::pair<std::u16string, bool>{u"sub", true},
                                       std::pair<std::u16string, bool>{u"file.txt", false}}) {
        SCOPED_TRACE(Narrow(name));
        const ListedEntry& entry = listed(entries, name);
        EXPECT_EQ((entry.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0, folder);
        const UniqueFileHandle child = OpenChild(box_.get(), name, FILE_READ_ATTRIBUTES);
        ASSERT_TRUE(child.valid());
        EXPECT_TRUE(MatchesListedId(*IdentityOf(child.get()), entry.fileId));
        EXPECT_EQ(IdentityOf(child.get()), IdentityOfPath(u"\\\\?\\" + path(u"box\\" + name)));
    }
    EXPECT_FALSE(OpenChild(box_.get(), u"missing", FILE_READ_ATTRIBUTES).valid());
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
}

TEST_F(OpenItems, AnEntrySwappedAfterTheListingIsNotTheItemListed) {
    std::vector<ListedEntry> entries;
    ASSERT_TRUE(ListOpenFolder(box_.get(), entries));
    const ListedEntry sub = listed(entries, u"sub");
    if (sub.fileId == 0) {
        GTEST_SKIP() << "this file system lists no file ids";
    }
    ASSERT_TRUE(MoveFileExW(Wide(path(u"box\\sub")), Wide(path(u"box\\was sub")), 0));
    makeFolder(u"box\\sub");
    const UniqueFileHandle now = OpenChild(box_.get(), u"sub", FILE_READ_ATTRIBUTES);
    ASSERT_TRUE(now.valid());
    EXPECT_FALSE(MatchesListedId(*IdentityOf(now.get()), sub.fileId));
}

TEST_F(OpenItems, DeletesThroughTheHandleReadOnlyFilesTooButNoFullFolder) {
    ASSERT_TRUE(SetFileAttributesW(Wide(path(u"box\\file.txt")), FILE_ATTRIBUTE_READONLY));
    {
        const UniqueFileHandle file = OpenChild(box_.get(), u"file.txt", kRemovalAccess);
        ASSERT_TRUE(file.valid());
        EXPECT_TRUE(DeleteOpenItem(file.get()));
        const UniqueFileHandle sub = OpenChild(box_.get(), u"sub", kRemovalAccess);
        ASSERT_TRUE(sub.valid());
        EXPECT_FALSE(DeleteOpenItem(sub.get()));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DIR_NOT_EMPTY));
    }
    EXPECT_FALSE(exists(u"box\\file.txt"));
    EXPECT_EQ(readFile(u"box\\sub\\in.txt"), "in");
}

}  // namespace
}  // namespace test
}  // namespace slib
