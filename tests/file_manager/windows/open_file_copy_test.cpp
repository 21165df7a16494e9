// Copying a file from the handle that was opened and checked: the bytes are that item's whatever
// its path names by then, complete at any size, with its attributes, date and named streams.

// windows.h first: the other system headers build on its types.
#include <windows.h>

#include <iostream>

#include "file_manager/scratch_folder.h"
#include "foundation/windows/item_identity.h"
#include "foundation/windows/open_file_copy.h"

namespace slib {
namespace test {
namespace {

class OpenFileCopy : public ScratchTest {
  protected:
    std::u16string longPath(const std::u16string& relative) const {
        return u"\\\\?\\" + path(relative);
    }
    // Opened as the walk opens what it copies: the item itself, to look at it only.
    UniqueFileHandle openToLook(const std::u16string& relative) const {
        return OpenItemItself(longPath(relative), FILE_READ_ATTRIBUTES);
    }
};

TEST_F(OpenFileCopy, CopiesTheItemOpenedNeverWhatItsPathNamesNow) {
    writeFile(u"checked.txt", "checked");
    const UniqueFileHandle checked = openToLook(u"checked.txt");
    ASSERT_TRUE(checked.valid());
    ASSERT_TRUE(MoveFileExW(Wide(path(u"checked.txt")), Wide(path(u"moved away.txt")), 0));
    writeFile(u"checked.txt", "planted");
    // Windows reopens the item a handle holds; Wine reopens the name it was opened by.
    const UniqueFileHandle reopened(
        ReOpenFile(checked.get(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, 0));
    ASSERT_TRUE(reopened.valid());
    const bool byName = IdentityOf(reopened.get()) != IdentityOf(checked.get());

    const bool copied = CopyOpenFile(checked.get(), longPath(u"copy.txt"));
    if (byName) {
        std::cout << "[ NOTE ] this system reopens a handle by its name: the copy is refused\n";
        EXPECT_FALSE(copied);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CANT_ACCESS_FILE));
        EXPECT_FALSE(exists(u"copy.txt"));
    } else {
        EXPECT_TRUE(copied);
        EXPECT_EQ(readFile(u"copy.txt"), "checked");
    }
}

TEST_F(OpenFileCopy, CopiesEveryByteAndReplacesAnExistingTarget) {
    std::string large(2 * (1 << 20) + (1 << 19) + 3, '\0');
    for (size_t i = 0; i < large.size(); ++i) {
        large[i] = static_cast<char>((i * 131) >> 7);
    }
    const struct {
        const char* name;
        std::string content;
    } cases[] = {{"empty", ""}, {"small", "small"}, {"more than one read", large}};
    writeFile(u"copy.bin", "an older, longer file in the way of the copy");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        writeFile(u"source.bin", c.content);
        const UniqueFileHandle source = openToLook(u"source.bin");
        ASSERT_TRUE(CopyOpenFile(source.get(), longPath(u"copy.bin")));
        EXPECT_EQ(readFile(u"copy.bin"), c.content);
    }
}

TEST_F(OpenFileCopy, KeepsAttributesAndTheLastWriteTime) {
    writeFile(u"marked.txt", "marked");
    FILETIME written = {};
    SYSTEMTIME when = {2001, 2, 0, 3, 4, 5, 6, 0};
    ASSERT_TRUE(SystemTimeToFileTime(&when, &written));
    {
        const UniqueFileHandle file(CreateFileW(Wide(path(u"marked.txt")), FILE_WRITE_ATTRIBUTES, 0,
                                                nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &written));
    }
    const DWORD marks = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN;
    ASSERT_TRUE(SetFileAttributesW(Wide(path(u"marked.txt")), marks));
    const DWORD kept = GetFileAttributesW(Wide(path(u"marked.txt"))) & marks;
    ASSERT_NE(kept & FILE_ATTRIBUTE_READONLY, 0u);
    if (kept != marks) {
        std::cout << "[ NOTE ] this system keeps no hidden mark on a file: only read-only is "
                     "carried over here\n";
    }
    const UniqueFileHandle source = openToLook(u"marked.txt");
    ASSERT_TRUE(CopyOpenFile(source.get(), longPath(u"copy.txt")));

    WIN32_FILE_ATTRIBUTE_DATA copy = {};
    ASSERT_TRUE(GetFileAttributesExW(Wide(path(u"copy.txt")), GetFileExInfoStandard, &copy));
    EXPECT_EQ(copy.dwFileAttributes & (marks | FILE_ATTRIBUTE_NORMAL), kept);
    EXPECT_EQ(CompareFileTime(&copy.ftLastWriteTime, &written), 0);
    EXPECT_EQ(readFile(u"copy.txt"), "marked");
}

TEST_F(OpenFileCopy, CarriesNamedStreams) {
    writeFile(u"streams.txt", "main");
    writeFile(u"streams.txt:note", "a note");
    const UniqueFileHandle source = openToLook(u"streams.txt");
    char listing[1024];
    const UniqueFileHandle reader(CreateFileW(Wide(path(u"streams.txt")), GENERIC_READ,
                                              FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!GetFileInformationByHandleEx(reader.get(), FileStreamInfo, listing, sizeof listing)) {
        GTEST_SKIP() << "this system lists no named streams (FileStreamInfo fails with "
                     << GetLastError() << "): what is written to \"streams.txt:note\" is no "
                     << "stream of that file here";
    }
    ASSERT_TRUE(CopyOpenFile(source.get(), longPath(u"copy.txt")));
    EXPECT_EQ(readFile(u"copy.txt"), "main");
    EXPECT_EQ(readFile(u"copy.txt:note"), "a note");
}

TEST_F(OpenFileCopy, AFailedCopyMakesNothing) {
    writeFile(u"source.txt", "source");
    const UniqueFileHandle source = openToLook(u"source.txt");
    EXPECT_FALSE(CopyOpenFile(source.get(), longPath(u"missing folder\\copy.txt")));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    // A file held open with no sharing cannot be read: nothing is made for it.
    const UniqueFileHandle held(CreateFileW(Wide(path(u"source.txt")), GENERIC_READ, 0, nullptr,
                                            OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held.valid());
    EXPECT_FALSE(CopyOpenFile(source.get(), longPath(u"copy.txt")));
    EXPECT_FALSE(exists(u"copy.txt"));
}

}  // namespace
}  // namespace test
}  // namespace slib
