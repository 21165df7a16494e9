// Shell actions start a recorder program that writes down the exact command line it received.
// Opening with a given program and revealing in a folder window are shown end to end, with the
// paths resolved (items_e2e/shell_actions_test.cpp).

#include <windows.h>

#include <objbase.h>

#include <thread>

#include "file_manager/scratch_folder.h"
#include "foundation/error_codes.h"
#include "foundation/windows/single_threaded_apartment.h"

namespace slib {
namespace test {
namespace {

class ShellTest : public ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        recorder_ = installRecorder();
    }
    std::u16string recorder_;
};

TEST_F(ShellTest, RunApplicationPassesEachLineEscaped) {
    const struct {
        std::u16string arguments;
        std::u16string expectedTail;
    } cases[] = {
        {u"one\rtwo", u" one two"},
        {u"", u""},
        // Backslash escapes, whatever rules the program splits its line by.
        {u"a b\r\"q\"\rC:\\x\r\t", u" a\\ b \\\"q\\\" C:\\\\x \\t"},
        // An empty line is an empty argument: its escaped form is the lone space.
        {u"x\r\ry", u" x  y"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(Narrow(test.arguments));
        manager_.runApplication(String(recorder_), String(test.arguments));
        EXPECT_EQ(recorded(), Quote(recorder_) + test.expectedTail);
    }
}

TEST_F(ShellTest, FailuresToStartOrRevealAreReported) {
    writeFile(u"not a program.exe", "text, not code");
    const String missing(path(u"no such program.exe"));
    const std::string cannotRun = Failure(kUnclassified, "Cannot run the application");
    const std::string cannotReveal = Failure(kUnclassified, "Cannot reveal the file");
    EXPECT_EQ(FailureOf([&] { manager_.runApplication(missing, String(u"a")); }), cannotRun);
    // A file that is no program cannot be started either.
    EXPECT_EQ(FailureOf([&] { manager_.runApplication(at(u"not a program.exe"), String()); }),
              cannotRun);
    EXPECT_EQ(FailureOf([&] { manager_.openFileWithApplication(at(u"x.txt"), missing); }),
              Failure(kUnclassified, "Cannot open file in the given application"));
    EXPECT_EQ(FailureOf([&] { manager_.revealItem(at(u"missing\\file.txt")); }), cannotReveal);
    EXPECT_EQ(FailureOf([&] { manager_.revealItem(String(u"no-separator")); }), cannotReveal);
    EXPECT_FALSE(exists(u"record.txt"));
}

// A document type of our own whose "open" verb runs the recorder, registered for this user.
class OpenFileTest : public ShellTest {
  protected:
    static constexpr const wchar_t* kExtensionKey = L"Software\\Classes\\.vftest";
    static constexpr const wchar_t* kTypeKey = L"Software\\Classes\\Vantafile.TestDocument";

    void SetUp() override {
        ShellTest::SetUp();
        ASSERT_TRUE(registerType(HKEY_CURRENT_USER));
        // Wine's merged class view leaves out the user's classes; where that is proven, register
        // the same type for the machine so the shell still finds it.
        HKEY merged = nullptr;
        if (RegOpenKeyExW(HKEY_CLASSES_ROOT, L".vftest", 0, KEY_READ, &merged) == ERROR_SUCCESS) {
            RegCloseKey(merged);
        } else {
            machineWide_ = true;
            ASSERT_TRUE(registerType(HKEY_LOCAL_MACHINE));
        }
    }
    void TearDown() override {
        for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
            if (root == HKEY_CURRENT_USER || machineWide_) {
                RegDeleteTreeW(root, kExtensionKey);
                RegDeleteTreeW(root, kTypeKey);
            }
        }
        ShellTest::TearDown();
    }

    bool registerType(HKEY root) const {
        return setDefaultValue(root, kExtensionKey, u"Vantafile.TestDocument") &&
               setDefaultValue(root, std::wstring(kTypeKey) + L"\\shell\\open\\command",
                               Quote(recorder_) + u" \"%1\"");
    }

    static bool setDefaultValue(HKEY root, const std::wstring& key, const std::u16string& value) {
        return RegSetKeyValueW(root, key.c_str(), nullptr, REG_SZ, Wide(value),
                               static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) ==
               ERROR_SUCCESS;
    }

    bool machineWide_ = false;
};

TEST_F(OpenFileTest, OpensThroughTheFileAssociationOrReportsWhy) {
    writeFile(u"my doc.vftest", "doc");
    manager_.openFile(at(u"my doc.vftest"));
    EXPECT_EQ(recorded(), Quote(recorder_) + u" " + Quote(path(u"my doc.vftest")));

    // A missing file, and a type no program is registered for.
    writeFile(u"doc.vfnotype", "no program for this");
    for (const std::u16string name : {u"missing.vftest", u"doc.vfnotype"}) {
        EXPECT_EQ(FailureOf([&] { manager_.openFile(at(name)); }),
                  Failure(kUnclassified, "Cannot open file in the default application"));
    }
    EXPECT_FALSE(exists(u"record.txt"));
}

// Where a shell dialog's work runs: in a single-threaded apartment always; on the caller's thread
// unless the caller is already in the multithreaded apartment, which it then keeps.
TEST(SingleThreadedApartment, TheWorkGetsOneWhateverTheCallersApartment) {
    struct Seen {
        DWORD thread = 0;
        APTTYPE type = APTTYPE_CURRENT;
    };
    const auto run = [] {
        Seen seen;
        RunInSingleThreadedApartment([&] {
            seen.thread = GetCurrentThreadId();
            APTTYPEQUALIFIER qualifier;
            CoGetApartmentType(&seen.type, &qualifier);
        });
        return seen;
    };
    const auto apartment = [] {
        APTTYPE type = APTTYPE_CURRENT;
        APTTYPEQUALIFIER qualifier;
        return SUCCEEDED(CoGetApartmentType(&type, &qualifier)) ? type : APTTYPE_CURRENT;
    };
    std::thread multithreaded([&] {
        ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED)));
        const Seen seen = run();
        EXPECT_NE(seen.thread, GetCurrentThreadId());
        EXPECT_TRUE(seen.type == APTTYPE_STA || seen.type == APTTYPE_MAINSTA) << seen.type;
        EXPECT_EQ(apartment(), APTTYPE_MTA);
        EXPECT_THROW(RunInSingleThreadedApartment([] { Throw(kUnclassified, "inside"); }),
                     Exception);
        CoUninitialize();
    });
    multithreaded.join();
    std::thread plain([&] {
        const Seen seen = run();
        EXPECT_EQ(seen.thread, GetCurrentThreadId());
        EXPECT_TRUE(seen.type == APTTYPE_STA || seen.type == APTTYPE_MAINSTA) << seen.type;
        EXPECT_EQ(apartment(), APTTYPE_CURRENT) << "COM left as it was found";
    });
    plain.join();
}

}  // namespace
}  // namespace test
}  // namespace slib
