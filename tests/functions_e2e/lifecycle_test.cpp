// Loading, initialising and unloading the shipped plug-in through the emulated host.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fmx_constants.h"
#include "fmx_record.h"
#include "plugin_harness.h"
#include "resources/version.h"

namespace {

using fmhost::driver::Host;
using fmhost::driver::Registration;

const char16_t* const kPrototypes[] = {
    u"VFile_Version( { versionFormat } )",
    u"VFile_Register( registrationCode )",
    u"VFile_New( path { ; itemKind } )",
    u"VFile_Delete( path )",
    u"VFile_Copy( sourcePath ; targetPath )",
    u"VFile_Move( sourcePath ; targetPath )",
    u"VFile_Choose( itemKind { ; name ; value } { ; name ; value } ... )",
    u"VFile_Read( path { ; startIndex { ; maxLength } } { ; encoding } )",
    u"VFile_Write( path ; data { ; startIndex } { ; encoding } )",
    u"VFile_Get( selector { ; path } { ; parameter } )",
    u"VFile_Set( selector ; path ; newValue )",
    u"VFile_Mount( URL { ; mountPath } { ; username ; password } )",
    u"VFile_Unmount( mountPath )",
    u"VFile_Open( path )",
    u"VFile_Convert( sourcePath ; targetPath { ; name ; value } { ; name ; value } ... )",
    u"VFile_Reveal( path )",
    u"VFile_Compress( sourcePath ; targetPath )",
    u"VFile_DeCompress( sourcePath ; targetPath )",
    u"VFile_Run( path { ; arguments } )",
};

// The registration log as signed ids: +id registered, -id unregistered.
std::vector<int> Calls(Host& host) {
    std::vector<int> calls;
    for (const Registration& entry : host.RegistrationLog()) {
        calls.push_back(entry.kind == kFmhostRegisterFunction ? entry.functionId
                                                              : -entry.functionId);
    }
    return calls;
}

// from, from ± 1, ..., to.
std::vector<int> Ids(int from, int to) {
    std::vector<int> ids{from};
    while (ids.back() != to)
        ids.push_back(ids.back() + (from < to ? 1 : -1));
    return ids;
}

TEST(Lifecycle, InitAcceptsExtensionVersionsFiftyToTwoHundredFiftyFive) {
    const struct {
        int16_t version;
        int64_t answer;
    } cases[] = {{49, -1}, {50, 55}, {77, 55}, {255, 55}, {256, -1}, {-1, -1}};
    for (const auto& c : cases) {
        Host host;
        auto& plugin = host.LoadPlugin(vftest::ShippedPlugin(), c.version);
        ASSERT_TRUE(plugin.InitSent()) << "load failed, system error " << plugin.SystemError();
        EXPECT_EQ(plugin.InitResult(), c.answer) << "extension version " << c.version;
        // A refused version registers nothing at all.
        if (c.answer < 0) {
            EXPECT_TRUE(host.RegistrationLog().empty()) << c.version;
            EXPECT_EQ(plugin.Purged(), 0u) << c.version;
        }
    }
}

TEST(Lifecycle, RegistersNineteenFunctionsFromTheStringTableAndUnregistersThemInReverse) {
    Host host;
    auto& plugin = host.LoadPlugin(vftest::ShippedPlugin());
    ASSERT_TRUE(plugin.Enabled());
    EXPECT_EQ(Calls(host), Ids(1, 19));

    const std::vector<Registration> functions = host.Functions();
    ASSERT_EQ(functions.size(), 19u);
    for (const Registration& f : functions) {
        ASSERT_GE(f.functionId, 1);
        ASSERT_LE(f.functionId, 19);
        const std::u16string prototype = kPrototypes[f.functionId - 1];
        SCOPED_TRACE(vftest::Utf8(prototype));
        EXPECT_EQ(f.pluginId, "QrvF");
        EXPECT_EQ(f.prototype, prototype);
        EXPECT_EQ(f.name, prototype.substr(0, prototype.find(u'(')));
        EXPECT_EQ(f.flags, 0xFF01u);
        // Only Reveal (16) and Run (19) are bounded by the host.
        const int16_t min = f.functionId == 16 || f.functionId == 19 ? 1 : 0;
        const int16_t max = f.functionId == 16 ? 1 : f.functionId == 19 ? 2 : -1;
        EXPECT_EQ(f.minArgs, min);
        EXPECT_EQ(f.maxArgs, max);
    }

    host.ClearRegistrationLog();
    plugin.Unload();
    EXPECT_EQ(Calls(host), Ids(-19, -1));
    EXPECT_EQ(plugin.Purged(), 0u) << "the plug-in withdrew everything itself";
    EXPECT_EQ(host.Functions().size(), 0u);
}

TEST(Lifecycle, RegistrationFailureUnwindsWhatWasRegisteredInReverse) {
    for (int16_t failing : {7, 1, 19}) {
        Host host;
        host.FailRegistration(failing, 1);
        auto& plugin = host.LoadPlugin(vftest::ShippedPlugin());
        EXPECT_EQ(plugin.InitResult(), -2) << "failing id " << failing;
        std::vector<int> expected = Ids(1, failing);
        if (failing > 1) {
            const std::vector<int> unwound = Ids(1 - failing, -1);
            expected.insert(expected.end(), unwound.begin(), unwound.end());
        }
        EXPECT_EQ(Calls(host), expected) << "failing id " << failing;
        EXPECT_EQ(plugin.Purged(), 0u) << "nothing left for the host to clean up";
    }
}

TEST(Lifecycle, HostFailureDuringInitNeverEscapesAndLeavesNothingBehind) {
    // One failing host call at every position of the first registrations. Failures the plug-in
    // cannot report (in a release of a host object) let the load succeed; all others must
    // refuse it after withdrawing, in reverse order, whatever was registered.
    int refusals = 0;
    for (uint32_t n = 1; n <= 32; ++n) {
        for (int32_t code : {1, 2}) {
            SCOPED_TRACE("call " + std::to_string(n) + ", slot code " + std::to_string(code));
            Host host;
            host.FailCall(n, code, kFmhostFaultFromNow);
            auto& plugin = host.LoadPlugin(vftest::ShippedPlugin());
            if (plugin.InitResult() == 55) {
                EXPECT_EQ(host.Functions().size(), 19u);
                continue;
            }
            ++refusals;
            EXPECT_EQ(plugin.InitResult(), -2);
            EXPECT_EQ(plugin.Purged(), 0u);
            std::vector<int16_t> registered;
            std::vector<int16_t> unregistered;
            for (const Registration& entry : host.RegistrationLog()) {
                if (entry.kind == kFmhostRegisterFunction && entry.result == 0 && !entry.injected) {
                    registered.push_back(entry.functionId);
                } else if (entry.kind == kFmhostUnregisterFunction) {
                    unregistered.push_back(entry.functionId);
                }
            }
            EXPECT_EQ(unregistered, std::vector<int16_t>(registered.rbegin(), registered.rend()));
        }
    }
    EXPECT_GT(refusals, 32) << "most positions are not releases and must refuse the load";
}

TEST(Lifecycle, AnswersTheStringQueries) {
    Host host;
    auto& plugin = host.LoadPlugin(vftest::ShippedPlugin());
    EXPECT_EQ(plugin.Options(), u"QrvF1YnYnYn");
    EXPECT_EQ(plugin.Name(), u"Quorvel Vantafile Plug-In");
    const std::u16string description = plugin.Description();
    EXPECT_EQ(description.rfind(u"This plug-in adds file management abilities.\n", 0), 0u);
    EXPECT_NE(description.find(u"\nVersion " VF_VERSION_SHORT_TEXT), std::u16string::npos);
    // The options decline idle messages: the host does not send them.
    EXPECT_FALSE(plugin.SendIdle(0));
}

// Messages the emulated host never sends on its own (it honours the options string), given
// straight to the entry point of the loaded module.
TEST(Lifecycle, IdleIsIgnoredAndARepeatedShutdownStillWithdrawsEverything) {
    Host host;
    auto& plugin = host.LoadPlugin(vftest::ShippedPlugin());
    ASSERT_TRUE(plugin.Enabled());
    // Our own reference keeps the module loaded after the host lets go of it.
    HMODULE module = LoadLibraryW(vftest::ShippedPlugin().c_str());
    ASSERT_NE(module, nullptr);
    const auto proc = reinterpret_cast<FmxExternCallProcFn>(
        reinterpret_cast<void*>(GetProcAddress(module, "FMExternCallProc")));
    ASSERT_NE(proc, nullptr);
    FmxExternCallRecord record{};
    record.extnVersion = 77;
    record.unusedID = -1;
    record.entryPoint = proc;
    record.instanceID = reinterpret_cast<uint64_t>(module);
    const auto send = [&](uint8_t message) {
        record.whichCall = message;
        record.result = 0x5A5A5A5A;
        proc(&record);
        return record.result;
    };

    host.ClearRegistrationLog();
    EXPECT_EQ(send(fmx::kMsgIdle), 0x5A5A5A5Au) << "idle must not touch the result";
    EXPECT_TRUE(host.RegistrationLog().empty());
    EXPECT_EQ(host.Functions().size(), 19u);

    plugin.Unload();
    host.ClearRegistrationLog();
    send(fmx::kMsgShutdown);
    EXPECT_EQ(Calls(host), Ids(-19, -1)) << "nothing was registered, and all ids are withdrawn";
    FreeLibrary(module);
}

}  // namespace
