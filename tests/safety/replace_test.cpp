// Every operation that replaces a file, failing in each way: the original keeps its bytes and
// attributes and its folder holds nothing new. And the targets CREATE_ALWAYS would refuse
// (hidden ones) are replaced, keeping their attributes.
#include <windows.h>

#include <aclapi.h>

#include <functional>
#include <thread>

#include "foundation/exception.h"
#include "foundation/temporary_names.h"
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

// Everything in `folder` that is ours: temporary and backup names.
std::vector<std::string> Leftovers(const std::u16string& folder) {
    std::vector<std::string> found;
    WIN32_FIND_DATAW entry;
    const slib::UniqueFindHandle search(FindFirstFileW(Wide(folder + u"\\~vf-*"), &entry));
    if (search.valid()) {
        do {
            found.push_back(Narrow(slib::test::FromWide(entry.cFileName)));
        } while (FindNextFileW(search.get(), &entry));
    }
    return found;
}

// A DACL on `folder` that lets this user create files and write them, but delete none (NTFS
// "Write" without "Modify"), or with `full` everything again.
bool SetFolderRights(const std::u16string& folder, bool full) {
    slib::UniqueHandle token;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put())) {
        return false;
    }
    std::vector<uint8_t> user(256);
    DWORD size = 0;
    if (!GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                             &size)) {
        return false;
    }
    EXPLICIT_ACCESS_W access = {};
    access.grfAccessPermissions =
        full ? GENERIC_ALL : FILE_GENERIC_READ | FILE_GENERIC_WRITE | FILE_TRAVERSE;
    access.grfAccessMode = SET_ACCESS;
    access.grfInheritance = SUB_CONTAINERS_AND_OBJECTS_INHERIT;
    access.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    access.Trustee.TrusteeType = TRUSTEE_IS_USER;
    access.Trustee.ptstrName =
        static_cast<LPWSTR>(reinterpret_cast<TOKEN_USER*>(user.data())->User.Sid);
    slib::UniqueAcl acl;
    if (SetEntriesInAclW(1, &access, nullptr, acl.put()) != ERROR_SUCCESS) {
        return false;
    }
    std::u16string name = folder;
    return SetNamedSecurityInfoW(reinterpret_cast<LPWSTR>(name.data()), SE_FILE_OBJECT,
                                 DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
                                 nullptr, nullptr, acl.get(), nullptr) == ERROR_SUCCESS;
}

// New files arrive whole where the user may create files but delete none: they are kept, or
// renamed and removed, through the handle that created them, which holds that right.
TEST_F(Replace, NewFilesArriveWhereTheUserMayCreateButNotDelete) {
    makeFolder(u"drop");
    ASSERT_TRUE(SetFolderRights(path(u"drop"), false));
    writeFile(u"drop\\probe.txt", "probe");
    const bool enforced = !DeleteFileW(Wide(path(u"drop\\probe.txt")));
    if (!enforced) {
        SetFolderRights(path(u"drop"), true);
        GTEST_SKIP() << "this system let the user delete a file in a folder that only allows "
                        "creating them: it keeps no folder permissions (Wine)";
    }
    const std::vector<std::pair<const char*, std::u16string>> calculations = {
        {"write", uR"(VFile_Write( "drop/written.txt" ; "new text" ))"},
        {"write at an index", uR"(VFile_Write( "drop/appended.txt" ; "more" ; -1 ))"},
        {"compress", uR"(VFile_Compress( "src" ; "drop/packed.zip" ))"},
        {"convert", uR"(VFile_Convert( "pic.png" ; "drop/pic.png" ))"},
        {"decompress", uR"(VFile_DeCompress( "new.zip" ; "drop/unpacked" ))"},
    };
    for (const auto& [operation, calculation] : calculations) {
        EXPECT_EQ(call(calculation), Succeeded()) << operation;
    }
    EXPECT_EQ(readFile(u"drop\\written.txt"), "new text");
    EXPECT_EQ(readFile(u"drop\\appended.txt"), "more");
    EXPECT_EQ(readFile(u"drop\\unpacked\\target.bin"), "the new contents");
    EXPECT_EQ(Leftovers(path(u"drop")), std::vector<std::string>());
    ASSERT_TRUE(SetFolderRights(path(u"drop"), true));
}

// ReplaceFileW's documented worst case, played: the original moved to the backup name and the
// new file not put in its place (ERROR_UNABLE_TO_MOVE_REPLACEMENT_2); meanwhile something may
// take the target's name.
std::function<void(const std::u16string&)> takeTheName;

BOOL WINAPI HalfReplace(LPCWSTR replaced, LPCWSTR, LPCWSTR backup, DWORD, LPVOID, LPVOID) {
    MoveFileExW(replaced, backup, 0);
    if (takeTheName) {
        takeTheName(slib::test::FromWide(replaced));
    }
    SetLastError(ERROR_UNABLE_TO_MOVE_REPLACEMENT_2);
    return FALSE;
}

TEST_F(Replace, AnOriginalMovedAsideGoesBackOrTheFailureSaysWhereItIs) {
    makeFolder(u"swap");
    const std::u16string target = path(u"swap\\target.bin");
    std::thread clearing;
    const struct {
        const char* name;
        std::function<void(const std::u16string&)> take;
        bool stranded;
    } cases[] = {
        {"nothing takes the name", nullptr, false},
        {"a folder takes it for a moment",
         [&](const std::u16string& name) {
             CreateDirectoryW(Wide(name), nullptr);
             clearing = std::thread([name] {
                 Sleep(150);
                 RemoveDirectoryW(Wide(name));
             });
         },
         false},
        {"a folder takes it for good",
         [](const std::u16string& name) { CreateDirectoryW(Wide(name), nullptr); }, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        writeOriginal(target);
        takeTheName = c.take;
        slib::ReplacementFile file(u"\\\\?\\" + target, &HalfReplace);
        ASSERT_TRUE(file.valid());
        ASSERT_TRUE(file.write(reinterpret_cast<const uint8_t*>("new"), 3));
        EXPECT_FALSE(file.commit());
        EXPECT_EQ(file.error(), static_cast<DWORD>(ERROR_UNABLE_TO_MOVE_REPLACEMENT_2));
        if (clearing.joinable()) {
            clearing.join();
        }
        takeTheName = nullptr;
        if (!c.stranded) {
            EXPECT_EQ(file.strandedOriginal(), u"");
            EXPECT_EQ(StateOf(target).bytes, Original());
            EXPECT_EQ(Leftovers(path(u"swap")), std::vector<std::string>());
            continue;
        }
        // Only the backup is left of ours, under a name that says what it holds.
        const std::u16string backup = file.strandedOriginal();
        const std::u16string name = backup.substr(backup.rfind(u'\\') + 1);
        EXPECT_EQ(backup, path(u"swap\\") + name);
        EXPECT_TRUE(slib::IsNameOfOurs(name, u".original")) << Narrow(name);
        EXPECT_EQ(StateOf(backup).bytes, Original());
        EXPECT_EQ(Leftovers(path(u"swap")), std::vector<std::string>{Narrow(name)});
        try {
            slib::ThrowReplaceFailure("Cannot write to file", file);
        } catch (const slib::Exception& failure) {
            EXPECT_EQ(std::string(failure.what()),
                      "Cannot write to file. The original file could not be put back and is "
                      "kept as \"" +
                          Narrow(backup) + "\"");
        }
        RemoveDirectoryW(Wide(target));
        DeleteFileW(Wide(backup));
    }
}

TEST(ReplacementFileNames, AreRecognisableAndOnlyOurs) {
    EXPECT_TRUE(slib::ReplacementFile::IsTemporaryName(u"~vf-1234-0.partial"));
    EXPECT_TRUE(slib::ReplacementFile::IsTemporaryName(u"~vf-1-99.partial"));
    for (const char16_t* other :
         {u"~vf-.partial", u"~vf-12-.partial", u"~vf-a-1.partial", u"vf-1-1.partial",
          u"~vf-1-1.part", u"report.partial", u"~vf-1-1.original"}) {
        EXPECT_FALSE(slib::ReplacementFile::IsTemporaryName(other)) << Narrow(other);
    }
    // A backup holds an original: never taken for a temporary file to be cleaned up.
    const std::u16string backup = slib::BackupNameBeside(u"\\\\?\\C:\\data\\report.txt");
    EXPECT_EQ(backup.substr(0, 12), u"\\\\?\\C:\\data\\");
    EXPECT_TRUE(slib::IsNameOfOurs(backup.substr(12), u".original")) << Narrow(backup);
    EXPECT_FALSE(slib::ReplacementFile::IsTemporaryName(backup.substr(12)));
}

}  // namespace
}  // namespace safety_test
