// GDI+ starts on the first picture call and stops at the host's shutdown message, never when the
// library is detached (where GDI+ must not be shut down, under the loader lock). The plug-in's
// own imports of GdiplusStartup and GdiplusShutdown are redirected to counters for the test.

#include <windows.h>

#include <cstdlib>

#include "file_manager/scratch_folder.h"
#include "fmhost/host_driver.h"
#include "foundation/windows/unique_handles.h"
#include "test_pictures.h"

namespace picturetest {
namespace {

using slib::test::BesideProgram;
using slib::test::Wide;

using Startup = Gdiplus::Status(WINAPI*)(ULONG_PTR*, const Gdiplus::GdiplusStartupInput*,
                                         Gdiplus::GdiplusStartupOutput*);
using Shutdown = void(WINAPI*)(ULONG_PTR);

Startup gStartup = nullptr;
Shutdown gShutdown = nullptr;
int gStarts = 0;
int gShutdowns = 0;
int gShutdownsAtDetach = 0;
bool gDetaching = false;  // set just before the library's last reference goes

Gdiplus::Status WINAPI CountingStartup(ULONG_PTR* token, const Gdiplus::GdiplusStartupInput* input,
                                       Gdiplus::GdiplusStartupOutput* output) {
    ++gStarts;
    return gStartup(token, input, output);
}

void WINAPI CountingShutdown(ULONG_PTR token) {
    ++gShutdowns;
    if (gDetaching) {
        ++gShutdownsAtDetach;
        const char line[] = "GdiplusShutdown at detach\n";
        DWORD written = 0;
        WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), line, sizeof line - 1, &written, nullptr);
    }
    gShutdown(token);
}

// Points the module's import of `function` from gdiplus.dll at `replacement`.
template <typename Function>
bool Redirect(HMODULE module, const char* function, Function replacement, Function& original) {
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports =
        nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         library->Name != 0; ++library) {
        if (_stricmp(reinterpret_cast<const char*>(base + library->Name), "gdiplus.dll") != 0) {
            continue;
        }
        auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) {
                continue;
            }
            const auto* byName =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (strcmp(reinterpret_cast<const char*>(byName->Name), function) != 0) {
                continue;
            }
            DWORD protection = 0;
            VirtualProtect(&slots->u1.Function, sizeof slots->u1.Function, PAGE_READWRITE,
                           &protection);
            original = reinterpret_cast<Function>(slots->u1.Function);
            slots->u1.Function = reinterpret_cast<ULONG_PTR>(replacement);
            VirtualProtect(&slots->u1.Function, sizeof slots->u1.Function, protection, &protection);
            return true;
        }
    }
    return false;
}

class GdiplusLifetime : public slib::test::ScratchTest {
  protected:
    // Loads the plug-in with its GDI+ imports counted; the test keeps a reference of its own, so
    // the host's unloading does not detach it.
    HMODULE holdPlugin() {
        const HMODULE module = LoadLibraryW(Wide(BesideProgram(u"Vantafile.fmx64")));
        EXPECT_NE(module, nullptr);
        EXPECT_TRUE(Redirect(module, "GdiplusStartup", &CountingStartup, gStartup));
        EXPECT_TRUE(Redirect(module, "GdiplusShutdown", &CountingShutdown, gShutdown));
        return module;
    }

    std::string convert(fmhost::driver::Host& host) {
        const fmhost::driver::Evaluation outcome =
            host.Evaluate(u"VFile_Convert( \"" + path(u"in.png") + u"\" ; \"" + path(u"out.png") +
                          u"\" ; \"width\" ; 20 )");
        return outcome.error == 0 ? outcome.text : "host error " + std::to_string(outcome.error);
    }
};

TEST_F(GdiplusLifetime, StartsOnFirstUseStopsAtShutdownAndNeverAtDetach) {
    writeFile(u"in.png", MakeFramedPicture(40, 40));
    if (getenv("VF_GDIPLUS_EXIT_PROBE") != nullptr) {
        // The child's part: used, then the process ends without the host's shutdown message.
        holdPlugin();
        fmhost::driver::Host host;
        host.LoadPlugin(Wide(BesideProgram(u"Vantafile.fmx64")));
        convert(host);
        gDetaching = true;
        ExitProcess(gStarts == 1 ? 0 : 3);
    }
    const HMODULE module = holdPlugin();
    for (int cycle = 1; cycle <= 2; ++cycle) {
        SCOPED_TRACE(cycle);
        fmhost::driver::Host host;
        fmhost::driver::Plugin& plugin = host.LoadPlugin(Wide(BesideProgram(u"Vantafile.fmx64")));
        ASSERT_TRUE(plugin.Enabled());
        EXPECT_EQ(gStarts, cycle - 1) << "nothing started before a picture call";
        EXPECT_EQ(convert(host), "0");
        EXPECT_EQ(convert(host), "0");
        EXPECT_EQ(gStarts, cycle) << "started once";
        plugin.Unload();
        EXPECT_EQ(gShutdowns, cycle) << "stopped by the shutdown message";
    }
    gDetaching = true;
    FreeLibrary(module);
    gDetaching = false;
    EXPECT_EQ(gShutdownsAtDetach, 0);

    // A host that ends without the shutdown message: the process exit detaches the library
    // with GDI+ still started, and nothing may shut it down there.
    std::wstring line = std::wstring(L"\"") + Wide(BesideProgram(u"pictures_e2e_tests.exe")) +
                        L"\" --gtest_filter=GdiplusLifetime.*";
    SetEnvironmentVariableW(L"VF_GDIPLUS_EXIT_PROBE", L"1");
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    ASSERT_TRUE(CreatePipe(&readEnd, &writeEnd, &inherit, 0));
    const slib::UniqueHandle reader(readEnd);
    slib::UniqueHandle writer(writeEnd);
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writeEnd;
    startup.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    const bool started = CreateProcessW(nullptr, &line[0], nullptr, nullptr, TRUE, 0, nullptr,
                                        nullptr, &startup, &process);
    SetEnvironmentVariableW(L"VF_GDIPLUS_EXIT_PROBE", nullptr);
    ASSERT_TRUE(started);
    const slib::UniqueHandle processHandle(process.hProcess);
    const slib::UniqueHandle threadHandle(process.hThread);
    writer.reset();
    std::string output;
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(readEnd, buffer, sizeof buffer, &got, nullptr) && got > 0) {
        output.append(buffer, got);
    }
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 1;
    GetExitCodeProcess(process.hProcess, &exitCode);
    EXPECT_EQ(exitCode, 0u) << output;
    EXPECT_EQ(output.find("GdiplusShutdown at detach"), std::string::npos) << output;
}

}  // namespace
}  // namespace picturetest
