// Every operation that replaces a file, failing in each way: the original keeps its bytes and
// attributes and its folder holds nothing new. And the targets CREATE_ALWAYS would refuse
// (hidden ones) are replaced, keeping their attributes.
#include <windows.h>

#include <functional>

#include "foundation/windows/replacement_file.h"
#include "pictures/test_pictures.h"
#include "safety_fixture.h"

namespace safety_test {
namespace {

class Replace : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"src");
        writeFile(u"src\\one.txt", "one");
        writeFile(u"src\\two.txt", "two");
        writeFile(u"pic.png", picturetest::MakePicture(L"image/png", 40, 30));
        makeFolder(u"new");
        writeFile(u"new\\target.bin", "the new contents");
        ASSERT_EQ(call(u"VFile_Compress( \"new\\\\target.bin\" ; \"new.zip\" )"), Succeeded());
    }

    // The calculations that replace `target`, by operation.
    std::vector<std::pair<const char*, std::u16string>> replacing(const std::u16string& target) {
        const std::u16string folder = target.substr(0, target.rfind(u'\\'));
        return {
            {"write", u"VFile_Write( " + Quoted(target) + u" ; \"new text\" )"},
            {"compress", u"VFile_Compress( \"src\" ; " + Quoted(target) + u" )"},
            {"convert", u"VFile_Convert( \"pic.png\" ; " + Quoted(target) + u" )"},
            {"decompress", u"VFile_DeCompress( \"new.zip\" ; " + Quoted(folder) + u" )"},
        };
    }

    // A 100 KB original that no operation here would write.
    static std::string Original() {
        std::string bytes(100 * 1024, '\0');
        for (size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<char>((i * 7919) >> 3);
        }
        return bytes;
    }

    void writeOriginal(const std::u16string& target) {
        const slib::UniqueFileHandle file(CreateFileW(Wide(target), GENERIC_WRITE, 0, nullptr,
                                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL,
                                                      nullptr));
        ASSERT_TRUE(file.valid());
        const std::string bytes = Original();
        DWORD written = 0;
        ASSERT_TRUE(WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                              nullptr));
    }

    // Runs each replacing operation on a fresh original in `folder`, after `spoil` made it fail,
    // and checks that nothing changed; `release` undoes the spoiling.
    void expectEachFailsAndKeeps(const std::u16string& folder,
                                 const std::function<void(const std::u16string&)>& spoil,
                                 const std::function<void(const std::u16string&)>& release) {
        const std::u16string target = folder + u"\\target.bin";
        for (const auto& [operation, calculation] : replacing(target)) {
            SCOPED_TRACE(operation);
            writeOriginal(target);
            spoil(target);
            const FileState before = StateOf(target);
            const std::string listing = Listing(folder);
            const std::string outcome = call(calculation);
            EXPECT_NE(outcome.substr(0, outcome.find(" | ")), "0") << outcome;
            EXPECT_TRUE(StateOf(target) == before) << "the original changed";
            EXPECT_EQ(Listing(folder), listing) << "the folder changed";
            release(target);
        }
    }
};

TEST_F(Replace, AReadOnlyTargetIsRefusedAndKept) {
    makeFolder(u"out");
    expectEachFailsAndKeeps(
        path(u"out"),
        [](const std::u16string& target) {
            SetFileAttributesW(Wide(target), FILE_ATTRIBUTE_READONLY);
        },
        [](const std::u16string& target) {
            SetFileAttributesW(Wide(target), FILE_ATTRIBUTE_NORMAL);
        });
}

TEST_F(Replace, ATargetAnotherProgramReadsIsKept) {
    makeFolder(u"out");
    slib::UniqueFileHandle holder;
    // A reader that lets others read, nothing more: it cannot be swapped away under it.
    expectEachFailsAndKeeps(
        path(u"out"),
        [&](const std::u16string& target) {
            holder = Hold(target, GENERIC_READ, FILE_SHARE_READ);
            ASSERT_TRUE(holder.valid());
        },
        [&](const std::u16string&) { holder.reset(); });
}

TEST_F(Replace, AFullVolumeKeepsTheOriginalAndHoldsNoLeftover) {
    std::string why;
    const std::optional<std::u16string> small = SmallVolume(why);
    if (!small) {
        GTEST_SKIP() << why;
    }
    const std::u16string folder = *small + u"\\full";
    slib::test::RemoveTree(folder);  // what an interrupted run left
    ASSERT_TRUE(CreateDirectoryW(Wide(folder), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS);
    expectEachFailsAndKeeps(
        folder, [&](const std::u16string&) { FillVolume(folder); },
        [&](const std::u16string&) { DeleteFileW(Wide(folder + u"\\filler")); });
    slib::test::RemoveTree(folder);
}

TEST_F(Replace, BadDataFoundAfterTheTargetWasOpenedKeepsTheOriginal) {
    makeFolder(u"out");
    const std::u16string target = path(u"out\\target.bin");
    // An archive whose only entry is damaged past its header: found while unpacking.
    std::string damaged = *readFile(u"new.zip");
    const auto field = [&](size_t at) {
        return static_cast<size_t>(static_cast<uint8_t>(damaged[at])) |
               static_cast<size_t>(static_cast<uint8_t>(damaged[at + 1])) << 8;
    };
    // The first byte of the entry's data, after the local header, its name and extra field.
    const size_t data = 30 + field(26) + field(28);
    damaged[data] = static_cast<char>(damaged[data] ^ 0x55);
    writeFile(u"damaged.zip", damaged);
    writeFile(u"cut.png", picturetest::MakePicture(L"image/png", 40, 30).substr(0, 60));
    const std::vector<std::u16string> calculations = {
        u"VFile_Write( " + Quoted(target) + u" ; \"%%%\" ; \"base64\" )",
        u"VFile_Convert( \"cut.png\" ; " + Quoted(target) + u" )",
        u"VFile_DeCompress( \"damaged.zip\" ; " + Quoted(path(u"out")) + u" )",
        // A file of the folder that cannot be read, met while the archive is being written.
        u"VFile_Compress( \"src\" ; " + Quoted(target) + u" )",
    };
    writeOriginal(target);
    const slib::UniqueFileHandle unreadable =
        Hold(path(u"src\\two.txt"), GENERIC_READ | GENERIC_WRITE, 0);
    ASSERT_TRUE(unreadable.valid());
    for (const std::u16string& calculation : calculations) {
        const FileState before = StateOf(target);
        const std::string listing = Listing(path(u"out"));
        const std::string outcome = call(calculation);
        EXPECT_NE(outcome.substr(0, outcome.find(" | ")), "0") << Narrow(calculation);
        EXPECT_TRUE(StateOf(target) == before) << Narrow(calculation);
        EXPECT_EQ(Listing(path(u"out")), listing) << Narrow(calculation);
    }
}

TEST_F(Replace, HiddenAndSystemTargetsAreReplacedKeepingTheirAttributes) {
    makeFolder(u"out");
    const std::u16string target = path(u"out\\target.bin");
    const DWORD kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    for (const auto& [operation, calculation] : replacing(target)) {
        SCOPED_TRACE(operation);
        writeOriginal(target);
        ASSERT_TRUE(SetFileAttributesW(Wide(target), kept));
        if ((GetFileAttributesW(Wide(target)) & kept) != kept) {
            GTEST_SKIP() << "this file system keeps no hidden/system attributes (set, read back "
                         << GetFileAttributesW(Wide(target)) << ")";
        }
        EXPECT_EQ(call(calculation), Succeeded());
        const FileState after = StateOf(target);
        EXPECT_NE(after.bytes, Original());
        EXPECT_EQ(after.attributes & kept, kept);
        SetFileAttributesW(Wide(target), FILE_ATTRIBUTE_NORMAL);
        // Only the target: no temporary file stayed.
        EXPECT_EQ(snapshot(u"out").size(), 1u);
    }
}

TEST(ReplacementFileNames, AreRecognisableAndOnlyOurs) {
    EXPECT_TRUE(slib::ReplacementFile::IsTemporaryName(u"~vf-1234-0.partial"));
    EXPECT_TRUE(slib::ReplacementFile::IsTemporaryName(u"~vf-1-99.partial"));
    for (const char16_t* other : {u"~vf-.partial", u"~vf-12-.partial", u"~vf-a-1.partial",
                                  u"vf-1-1.partial", u"~vf-1-1.part", u"report.partial"}) {
        EXPECT_FALSE(slib::ReplacementFile::IsTemporaryName(other)) << Narrow(other);
    }
}

}  // namespace
}  // namespace safety_test
