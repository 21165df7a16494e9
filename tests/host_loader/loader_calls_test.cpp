// Calls into a loaded plug-in: arguments and results, argument bounds, errors, nested
// evaluation, faults, Get() answers and concurrency.
#include <atomic>
#include <regex>
#include <thread>
#include <vector>

#include "fixture_host.h"

namespace {

using LoaderCalls = fixture_test::FixtureHost;

TEST_F(LoaderCalls, ArgumentsAndResultsCrossTheInterfaceWithTheirTypes) {
    ASSERT_TRUE(Load().Enabled());
    EXPECT_EQ(Eval(u"Fx_Echo ( \"abc¶def\" )"), "abc\rdef");
    EXPECT_EQ(Eval(u"Fx_Echo ( 0.5 ) + 1"), "1.5");
    EXPECT_EQ(Eval(u"Fx_Echo ( Date ( 2 ; 29 ; 2024 ) ) + 1"), "3/1/2024");
    EXPECT_EQ(Eval(u"Fx_Add ( 2 ; 3.25 )"), "5.25");
    EXPECT_EQ(Eval(u"Fx_Add ( 5000000000 ; 1 )"), "5000000001");
    EXPECT_EQ(Eval(u"Fx_Add ( \"x\" ; 1 )"), "1") << "text without digits counts as empty";
}

TEST_F(LoaderCalls, TheHostEnforcesTheRegisteredArgumentCounts) {
    ASSERT_TRUE(Load().Enabled());
    EXPECT_EQ(Eval(u"Fx_Add ( 1 )"), "error 1201");
    EXPECT_EQ(Eval(u"Fx_Add ( 1 ; 2 ; 3 )"), "error 1202");
    EXPECT_EQ(Eval(u"Fx_Messages ( 1 )"), "error 1202");
    EXPECT_EQ(Eval(u"fx_add ( 1 ; 2 )"), "3") << "function names ignore case";
}

TEST_F(LoaderCalls, APluginErrorFailsTheCalculationWithItsNumber) {
    ASSERT_TRUE(Load().Enabled());
    EXPECT_EQ(Eval(u"Fx_Fail ( 1552 )"), "error 1552");
    EXPECT_EQ(Eval(u"Fx_Fail ( 0 )"), "");
    EXPECT_EQ(Eval(u"Let ( [ $$before = 1 ; x = Fx_Fail ( 7 ) ] ; 2 )"), "error 7");
    EXPECT_EQ(Eval(u"$$before"), "1") << "what ran before the failure stays done";
}

TEST_F(LoaderCalls, NestedEvaluationSharesTheCallersVariables) {
    ASSERT_TRUE(Load().Enabled());
    EXPECT_EQ(Eval(u"Let ( $x = 7 ; Fx_Evaluate ( \"$x * 2\" ) )"), "14");
    EXPECT_EQ(Eval(u"Fx_Evaluate ( \"Let ( $$g = 3 ; 1 )\" )"), "1");
    EXPECT_EQ(Eval(u"$$g"), "3") << "globals set by a nested evaluation persist";
    EXPECT_EQ(Eval(u"Let ( $y = 4 ; Fx_CurrentEnv ( \"$y + 1\" ) )"), "5")
        << "the record's fill-environment callback gives the calling calculation";
    EXPECT_EQ(Eval(u"Fx_CurrentEnv ( \"$$g\" )"), "3");
    EXPECT_EQ(Eval(u"Fx_Evaluate ( \"1 +\" )"), "error 1203")
        << "a nested syntax error is the plug-in's result";
}

TEST_F(LoaderCalls, TheNthInterfaceCallOfEveryFunctionCallCanBeMadeToFail) {
    ASSERT_TRUE(Load().Enabled());
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,0,0");
    host_->FailCall(2, 2, kFmhostFaultEachFunctionCall);
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,2,0");
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,2,0") << "every call";
    host_->FailCall(3, 1, kFmhostFaultEachFunctionCall);
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,0,1");
    // A failed call does nothing else: the text is never made, so the calls using it fail too.
    host_->FailCall(1, 1, kFmhostFaultEachFunctionCall);
    EXPECT_EQ(Eval(u"Fx_Probe()"), "1,2,2");
    host_->FailCall(0, 0, kFmhostFaultEachFunctionCall);
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,0,0");
}

TEST_F(LoaderCalls, AFaultCountedFromNowHappensOnce) {
    ASSERT_TRUE(Load().Enabled());
    host_->FailCall(2, 2, kFmhostFaultFromNow);
    EXPECT_EQ(Eval(u"1 + 1"), "2") << "the host's own calls are not counted";
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,2,0");
    EXPECT_EQ(Eval(u"Fx_Probe()"), "0,0,0");
}

TEST_F(LoaderCalls, AFaultCountedFromBeforeLoadingHitsInit) {
    host_->FailCall(1, 1, kFmhostFaultFromNow);
    fmhost::driver::Plugin& plugin = Load();
    // The fixture's first interface call is making its id for function 1: it failed, the
    // registration with a null id failed too (before reaching the table), so init refused.
    EXPECT_EQ(plugin.State(), kFmhostPluginRefused);
    EXPECT_EQ(plugin.InitResult(), -2);
    EXPECT_TRUE(host_->RegistrationLog().empty());
    EXPECT_TRUE(host_->Functions().empty());
}

TEST_F(LoaderCalls, GetFilePathFollowsTheDatabaseSetting) {
    const fixture_test::LocalDatabase database = fixture_test::LocalDatabaseExample();
    ASSERT_TRUE(host_->SetFile(kFmhostFileLocal, database.path));
    EXPECT_EQ(Eval(u"Get ( FilePath )"), database.filePath);
    ASSERT_TRUE(host_->SetFile(kFmhostFileNetwork, L"fmp://host/Solution.fmp12"));
    EXPECT_EQ(Eval(u"Get ( FilePath )"), "fmnet:/host/Solution.fmp12");
    ASSERT_TRUE(host_->SetFile(kFmhostFileNone));
    EXPECT_EQ(Eval(u"Get ( FilePath )"), "error 100");
    ASSERT_TRUE(host_->SetFile(kFmhostFileLocal, database.path));
    host_->FailFilePath(301);
    EXPECT_EQ(Eval(u"Get ( FilePath )"), "error 301");
    EXPECT_FALSE(host_->SetFile(kFmhostFileLocal, L""));
}

TEST_F(LoaderCalls, HostFoldersEndWithASlashInHostSyntax) {
    for (const char16_t* folder : {u"Get ( FileMakerPath )", u"Get ( DocumentsPath )",
                                   u"Get ( TemporaryPath )", u"Get ( DesktopPath )"}) {
        const std::string value = Eval(folder);
        EXPECT_TRUE(std::regex_match(value, std::regex(fixture_test::ThisHost().folderPattern)))
            << value;
    }
    EXPECT_EQ(Eval(u"Get ( SystemPlatform )"), fixture_test::ThisHost().systemPlatform);
}

TEST_F(LoaderCalls, ContainersPrintAsTheirStreamList) {
    ASSERT_TRUE(Load().Enabled());
    const std::string printed = Eval(u"Fx_File ( \"a.txt\" ; \"hello world!\" )");
    EXPECT_NE(printed.find("FNAM:a.txt"), std::string::npos) << printed;
    EXPECT_NE(printed.find("FILE:12 bytes"), std::string::npos) << printed;
    EXPECT_EQ(printed.front(), '[');
    EXPECT_EQ(Eval(u"GetAsText ( Fx_File ( \"a.txt\" ; \"x\" ) )"), "a.txt");
}

TEST_F(LoaderCalls, FunctionsMayBeCalledFromSeveralThreadsAtOnce) {
    ASSERT_TRUE(Load().Enabled());
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < 40; ++i) {
                const int n = t * 1000 + i;
                const std::wstring digits = std::to_wstring(n);
                const std::u16string calc =
                    u"Fx_Add ( " + std::u16string(digits.begin(), digits.end()) + u" ; 1 )";
                if (host_->Evaluate(calc).text != std::to_string(n + 1))
                    ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
