// Drives the built plug-in through its raw entry point, the way any host does: no emulated host,
// just LoadLibrary, GetProcAddress and an extern-call record.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "fmx_constants.h"
#include "fmx_record.h"

namespace {

class PluginEntry : public ::testing::Test {
  protected:
    void SetUp() override {
        module_ = LoadLibraryW(L"Vantafile.fmx64");
        ASSERT_NE(module_, nullptr) << "LoadLibrary failed: " << GetLastError();
        proc_ = reinterpret_cast<FmxExternCallProcFn>(
            reinterpret_cast<void*>(GetProcAddress(module_, "FMExternCallProc")));
        ASSERT_NE(proc_, nullptr);
    }
    void TearDown() override {
        if (module_ != nullptr) {
            FreeLibrary(module_);
        }
    }

    // Sends a get-string query into a buffer pre-filled with a marker character.
    std::wstring GetString(uint8_t id, uint64_t capacity = 256) {
        std::wstring buffer(capacity, L'#');
        FmxExternCallRecord record{};
        record.extnVersion = fmx::kCurrentExtnVersion;
        record.unusedID = -1;
        record.entryPoint = proc_;
        record.whichCall = fmx::kMsgGetString;
        record.parm1 = id;
        record.parm2 = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
        record.parm3 = capacity;
        record.instanceID = reinterpret_cast<uint64_t>(module_);
        record.result = reinterpret_cast<uint64_t>(buffer.data());
        proc_(&record);
        return buffer;
    }

    HMODULE module_ = nullptr;
    FmxExternCallProcFn proc_ = nullptr;
};

TEST_F(PluginEntry, OptionsStringIsWrittenWithItsTerminator) {
    const std::wstring buffer = GetString(fmx::kStrOptions);
    EXPECT_EQ(buffer.substr(0, 12), std::wstring(L"QrvF1YnYnYn") + L'\0');
    EXPECT_EQ(buffer[12], L'#') << "nothing may be written past the terminator";
}

TEST_F(PluginEntry, NameAndDescriptionComeFromTheStringTable) {
    std::wstring name = GetString(fmx::kStrName);
    EXPECT_EQ(std::wstring(name.c_str()), L"Quorvel Vantafile Plug-In");
    std::wstring description = GetString(fmx::kStrPreferences);
    EXPECT_EQ(std::wstring(description.c_str())
                  .rfind(L"This plug-in adds file management abilities.\n", 0),
              0u);
}

TEST_F(PluginEntry, NameIsTruncatedToTheHostCapacity) {
    const std::wstring buffer = GetString(fmx::kStrName, 8);
    EXPECT_EQ(std::wstring(buffer.c_str()), L"Quorvel");
}

TEST_F(PluginEntry, UnknownStringIdsLeaveTheBufferUntouched) {
    for (uint8_t id : {uint8_t{130}, uint8_t{fmx::kStrHelpUrl}, uint8_t{0}}) {
        EXPECT_EQ(GetString(id), std::wstring(256, L'#')) << "string id " << int(id);
    }
}

}  // namespace
