// Shell actions start a recorder program that writes down the exact command line it received.

#include <windows.h>

#include "foundation/error_codes.h"
#include "scratch_folder.h"

namespace slib {
namespace test {
namespace {

// The recorder built beside this test program.
std::u16string BuiltRecorder() {
    wchar_t self[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::u16string program = FromWide(self).substr(0, length);
    return program.substr(0, program.rfind(u'\\') + 1) + u"cmdline_recorder.exe";
}

class ShellTest : public ScratchTest {
  protected:
    void SetUp() override {
        ScratchTest::SetUp();
        // Spaces in both the program's and the document's paths show the quoting at work.
        makeFolder(u"app dir");
        recorder_ = path(u"app dir\\rec order.exe");
        ASSERT_TRUE(CopyFileW(Wide(BuiltRecorder()), Wide(recorder_), FALSE))
            << Narrow(BuiltRecorder());
        record_ = path(u"record.txt");
        SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", Wide(record_));
    }
    void TearDown() override {
        SetEnvironmentVariableW(L"VF_RECORDER_OUTPUT", nullptr);
        ScratchTest::TearDown();
    }

    // The command line the recorder saw, once it has written it; none if it never started.
    std::optional<std::u16string> recordedCommandLine() const {
        // Started programs are not waited for by the manager, so wait here, with a generous
        // bound that only a program that never started reaches.
        for (int attempt = 0; attempt < 600; ++attempt) {
            if (GetFileAttributesW(Wide(record_)) != INVALID_FILE_ATTRIBUTES) {
                const std::string bytes = readFile(u"record.txt").value_or("");
                return std::u16string(reinterpret_cast<const char16_t*>(bytes.data()),
                                      bytes.size() / 2);
            }
            Sleep(50);
        }
        return std::nullopt;
    }

    std::u16string quoted(const std::u16string& text) const { return u"\"" + text + u"\""; }

    std::u16string recorder_;
    std::u16string record_;
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
        EXPECT_EQ(recordedCommandLine(), quoted(recorder_) + test.expectedTail);
        DeleteFileW(Wide(record_));
    }
}

TEST_F(ShellTest, OpenFileWithApplicationQuotesBoth) {
    writeFile(u"my doc.txt", "doc");
    manager_.openFileWithApplication(at(u"my doc.txt"), String(recorder_));
    EXPECT_EQ(recordedCommandLine(), quoted(recorder_) + u" " + quoted(path(u"my doc.txt")));
}

TEST_F(ShellTest, ProgramsThatCannotStartAreReported) {
    const String missing(path(u"no such program.exe"));
    EXPECT_TRUE(FailsWith([&] { manager_.runApplication(missing, String(u"a")); }, kUnclassified,
                          "Cannot run the application"));
    EXPECT_TRUE(FailsWith([&] { manager_.openFileWithApplication(at(u"x.txt"), missing); },
                          kUnclassified, "Cannot open file in the given application"));
    // A file that is no program cannot be started either.
    writeFile(u"not a program.exe", "text, not code");
    EXPECT_TRUE(FailsWith([&] { manager_.runApplication(at(u"not a program.exe"), String(u"")); },
                          kUnclassified, "Cannot run the application"));
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
        const std::u16string command = quoted(recorder_) + u" \"%1\"";
        return setDefaultValue(root, kExtensionKey, u"Vantafile.TestDocument") &&
               setDefaultValue(root, std::wstring(kTypeKey) + L"\\shell\\open\\command", command);
    }

    static bool setDefaultValue(HKEY root, const std::wstring& key, const std::u16string& value) {
        HKEY handle = nullptr;
        if (RegCreateKeyExW(root, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &handle,
                            nullptr) != ERROR_SUCCESS) {
            return false;
        }
        const LONG result =
            RegSetValueExW(handle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(Wide(value)),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(handle);
        return result == ERROR_SUCCESS;
    }

    bool machineWide_ = false;
};

TEST_F(OpenFileTest, OpensThroughTheFileAssociation) {
    writeFile(u"my doc.vftest", "doc");
    manager_.openFile(at(u"my doc.vftest"));
    EXPECT_EQ(recordedCommandLine(), quoted(recorder_) + u" " + quoted(path(u"my doc.vftest")));
}

TEST_F(OpenFileTest, MissingFilesAndUnknownTypesAreReported) {
    EXPECT_TRUE(FailsWith([&] { manager_.openFile(at(u"missing.vftest")); }, kUnclassified,
                          "Cannot open file in the default application"));
    writeFile(u"doc.vfnotype", "no program for this");
    EXPECT_TRUE(FailsWith([&] { manager_.openFile(at(u"doc.vfnotype")); }, kUnclassified,
                          "Cannot open file in the default application"));
    EXPECT_FALSE(exists(u"record.txt"));
}

// A visible folder window titled `title` that belongs to another process, or null.
HWND FindFolderWindow(const std::u16string& title) {
    for (HWND window = FindWindowExW(nullptr, nullptr, nullptr, nullptr); window != nullptr;
         window = FindWindowExW(nullptr, window, nullptr, nullptr)) {
        wchar_t text[MAX_PATH] = {};
        DWORD owner = 0;
        GetWindowTextW(window, text, MAX_PATH);
        GetWindowThreadProcessId(window, &owner);
        if (IsWindowVisible(window) && owner != GetCurrentProcessId() && FromWide(text) == title) {
            return window;
        }
    }
    return nullptr;
}

TEST_F(ShellTest, RevealOpensAWindowOnTheParentFolder) {
    makeFolder(u"reveal parent");
    writeFile(u"reveal parent\\shown.txt", "s");
    const std::u16string title = u"reveal parent";
    ASSERT_EQ(FindFolderWindow(title), nullptr);
    manager_.revealItem(at(u"reveal parent\\shown.txt"));
    HWND window = nullptr;
    for (int attempt = 0; attempt < 600 && window == nullptr; ++attempt) {
        Sleep(50);
        window = FindFolderWindow(title);
    }
    ASSERT_NE(window, nullptr) << "no folder window appeared";
    // Close it again so nothing outlives the test.
    PostMessageW(window, WM_CLOSE, 0, 0);
    for (int attempt = 0; attempt < 600 && IsWindow(window); ++attempt) {
        Sleep(50);
    }
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(ShellTest, RevealOfAMissingItemIsReported) {
    EXPECT_TRUE(FailsWith([&] { manager_.revealItem(at(u"missing\\file.txt")); }, kUnclassified,
                          "Cannot reveal the file"));
    EXPECT_TRUE(FailsWith([&] { manager_.revealItem(String(u"no-separator")); }, kUnclassified,
                          "Cannot reveal the file"));
}

}  // namespace
}  // namespace test
}  // namespace slib
