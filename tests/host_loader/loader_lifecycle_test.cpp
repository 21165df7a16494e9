// Loading, messages and unloading, as the host application does them.
#include <cstdlib>
#include <string>
#include <vector>

#include "fixture_host.h"

namespace {

using fixture_test::FixtureHost;
using fmhost::driver::Registration;

std::string Summary(const std::vector<Registration>& log) {
    std::string out;
    for (const Registration& r : log) {
        if (!out.empty())
            out += ' ';
        out += (r.kind == kFmhostRegisterFunction ? "+" : "-") + std::to_string(r.functionId);
        if (r.result != 0)
            out += "!" + std::to_string(r.result);
    }
    return out;
}

using LoaderLifecycle = FixtureHost;

TEST_F(LoaderLifecycle, AsksForTheOptionsFirstThenSendsInitWithTheHostsVersion) {
    fmhost::driver::Plugin& plugin = Load();
    ASSERT_TRUE(plugin.Enabled());
    EXPECT_EQ(plugin.InitResult(), 55);
    EXPECT_EQ(plugin.Options(), u"FxTs1nnYnnn");
    EXPECT_EQ(plugin.Name(), u"Host Fixture");
    EXPECT_EQ(plugin.Description(), u"Exercises the host.\nSecond line.");
    EXPECT_EQ(Messages(), "7:131 7:128 7:129 0:77");
    EXPECT_EQ(Eval(u"Fx_HostInfo()"), "77 1 Pro 22.0v1 instance-ok");
}

TEST_F(LoaderLifecycle, InitCarriesTheChosenExtensionVersionAndApplicationVersion) {
    host_->SetApplicationVersion(u"Pro 21.1v2");
    ASSERT_TRUE(Load(62).Enabled());
    EXPECT_EQ(Eval(u"Fx_HostInfo()"), "62 1 Pro 21.1v2 instance-ok");
    EXPECT_EQ(Eval(u"Get ( ApplicationVersion )"), "Pro 21.1v2");
}

TEST_F(LoaderLifecycle, RefusalsUnloadThePlugin) {
    for (const char* answer : {"-1", "-2", "12", "0"}) {
        SCOPED_TRACE(answer);
        fixture_test::SetSetting("HOST_FIXTURE_INIT", answer);
        fmhost::driver::Plugin& plugin = Load();
        EXPECT_EQ(plugin.State(), kFmhostPluginRefused);
        EXPECT_EQ(plugin.InitResult(), std::atoi(answer));
        EXPECT_EQ(Eval(u"Fx_Add ( 1 ; 2 )"), "error 1208");
        plugin.Unload();
    }
    std::string expected;
    for (int i = 0; i < 4; ++i)
        expected += std::string(i ? " " : "") + "7:131 7:128 7:129 0:77";
    EXPECT_EQ(Messages(), expected) << "no shutdown for a refused plug-in";
}

TEST_F(LoaderLifecycle, RegistrationsLeftBehindByARefusedPluginAreWithdrawn) {
    fixture_test::SetSetting("HOST_FIXTURE_INIT", "-2");
    fixture_test::SetSetting("HOST_FIXTURE_LEAVE", "1");
    fmhost::driver::Plugin& plugin = Load();
    EXPECT_EQ(plugin.State(), kFmhostPluginRefused);
    EXPECT_EQ(plugin.Purged(), 9u);
    EXPECT_TRUE(host_->Functions().empty());
    EXPECT_EQ(Eval(u"Fx_Add ( 1 ; 2 )"), "error 1208");
}

TEST_F(LoaderLifecycle, WithoutCharacterEightThereIsNoInitAndNoShutdown) {
    fixture_test::SetSetting("HOST_FIXTURE_OPTIONS", "FxTs1nnnYYn");
    fmhost::driver::Plugin& plugin = Load();
    EXPECT_TRUE(plugin.Enabled());
    EXPECT_FALSE(plugin.InitSent());
    EXPECT_TRUE(host_->Functions().empty());
    plugin.Unload();
    EXPECT_EQ(Messages(), "7:131 7:128 7:129 9:1 8:1") << "idle and file/session messages only";
}

TEST_F(LoaderLifecycle, IdleAndPreferencesOnlyWhenAskedFor) {
    fmhost::driver::Plugin& quiet = Load();
    EXPECT_FALSE(quiet.SendIdle(1));
    EXPECT_FALSE(quiet.SendPreferences());
    quiet.Unload();
    EXPECT_EQ(Messages(), "7:131 7:128 7:129 0:77 4");

    fixture_test::SetSetting("HOST_FIXTURE_OPTIONS", "FxTs1YnYYnn");
    fixture_test::CloseFixture(module_);  // start from fresh fixture globals
    module_ = nullptr;
    fmhost::driver::Plugin& chatty = Load();
    EXPECT_TRUE(chatty.SendIdle(1));
    EXPECT_TRUE(chatty.SendPreferences());
    EXPECT_EQ(Messages(), "7:131 7:128 7:129 0:77 1:1 5");
}

// A session that ends is told at once; unloading tells every session still open, then shuts down.
TEST_F(LoaderLifecycle, EndedSessionsAndUnloadSendFileAndSessionShutdownThenShutdown) {
    fixture_test::SetSetting("HOST_FIXTURE_OPTIONS", "FxTs1nnYnYn");
    fmhost::driver::Plugin& plugin = Load();
    host_->ClearRegistrationLog();
    ASSERT_TRUE(host_->UseSession(3));
    ASSERT_TRUE(host_->UseSession(5));
    EXPECT_TRUE(host_->EndSession(3));
    EXPECT_FALSE(host_->EndSession(4));
    EXPECT_FALSE(host_->UseSession(0));
    plugin.Unload();
    const std::string loaded = "7:131 7:128 7:129 0:77 ";
    EXPECT_EQ(Messages(), loaded + "9:3 8:3 9:1 8:1 9:5 8:5 4");
    EXPECT_EQ(Summary(host_->RegistrationLog()), "-9 -8 -7 -6 -5 -4 -3 -2 -1");
    EXPECT_TRUE(host_->Functions().empty());
    plugin.Unload();  // a second unload sends nothing
    EXPECT_EQ(Messages(), loaded + "9:3 8:3 9:1 8:1 9:5 8:5 4");
}

TEST_F(LoaderLifecycle, WithoutCharacterTenNoSessionEndIsSent) {
    Load();
    ASSERT_TRUE(host_->UseSession(2));
    EXPECT_TRUE(host_->EndSession(2));
    host_.reset();
    EXPECT_EQ(Messages(), "7:131 7:128 7:129 0:77 4");
}

TEST_F(LoaderLifecycle, AFailedRegistrationIsUnwoundByThePluginAndRefused) {
    host_->FailRegistration(4, 1210);
    fmhost::driver::Plugin& plugin = Load();
    EXPECT_EQ(plugin.State(), kFmhostPluginRefused);
    EXPECT_EQ(plugin.InitResult(), -2);
    const std::vector<Registration> log = host_->RegistrationLog();
    EXPECT_EQ(Summary(log), "+1 +2 +3 +4!1210 -3 -2 -1");
    ASSERT_EQ(log.size(), 7u);
    EXPECT_TRUE(log[3].injected);
    EXPECT_EQ(log[0].pluginId, "FxTs");
    EXPECT_EQ(log[0].name, u"Fx_Echo");
    EXPECT_TRUE(host_->Functions().empty());
}

TEST_F(LoaderLifecycle, RegisteredFunctionsAreListedWithTheirBounds) {
    ASSERT_TRUE(Load().Enabled());
    const std::vector<Registration> functions = host_->Functions();
    ASSERT_EQ(functions.size(), 9u);
    EXPECT_EQ(functions[1].name, u"Fx_Add");
    EXPECT_EQ(functions[1].prototype, u"Fx_Add( ... )");
    EXPECT_EQ(functions[1].minArgs, 2);
    EXPECT_EQ(functions[1].maxArgs, 2);
    EXPECT_EQ(functions[1].flags, 0x00FFFF7Eu);
}

// The fixture takes FM_Text_GetBytesEx, which came with extension version 57: an older host
// has no such export, and the system's loader would refuse the plug-in before it ran.
TEST_F(LoaderLifecycle, AnImportNewerThanTheHostKeepsThePluginFromLoading) {
    fmhost::driver::Plugin& old = Load(56);
    EXPECT_EQ(old.State(), kFmhostPluginNotLoaded);
    EXPECT_NE(old.SystemError(), 0u);
    EXPECT_EQ(Messages(), "") << "nothing of the plug-in ran";
    EXPECT_TRUE(Load(57).Enabled());
}

TEST_F(LoaderLifecycle, InitCarriesTheServerApplicationKinds) {
    for (const uint8_t kind : {4, 7, 9}) {
        SCOPED_TRACE(kind);
        fmhost::driver::Plugin& plugin = host_->LoadPlugin(fixture_test::FixturePath(), 77, kind);
        ASSERT_TRUE(plugin.Enabled());
        EXPECT_EQ(Eval(u"Fx_HostInfo()"), "77 " + std::to_string(kind) + " Pro 22.0v1 instance-ok");
        plugin.Unload();
    }
}

TEST_F(LoaderLifecycle, AMissingPluginIsReportedNotFatal) {
    fmhost::driver::Plugin& plugin = host_->LoadPlugin(fixture_test::MissingPluginPath());
    EXPECT_EQ(plugin.State(), kFmhostPluginNotLoaded);
    EXPECT_NE(plugin.SystemError(), 0u);
    EXPECT_EQ(Eval(u"1 + 1"), "2");
}

}  // namespace
