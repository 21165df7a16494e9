// fmhost with plug-ins: loading, refusals, verbose reports and the fault options.
#include <gtest/gtest.h>

#include "support/fmhost_process.h"

namespace {

using vf::test::BesideTest;
using vf::test::ProcessOptions;
using vf::test::RunFmhost;

std::vector<std::string> WithFixture(std::vector<std::string> args) {
    args.insert(args.begin(), {"--plugin", BesideTest("HostFixture.fmx64")});
    return args;
}

size_t Find(const std::string& text, const std::string& what) {
    const size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << "missing: " << what << "\nin:\n" << text;
    return at;
}

TEST(FmhostPlugins, PluginFunctionsAreCallable) {
    const auto run = RunFmhost(WithFixture(
        {"-e", "Fx_Add ( 2 ; 40 )", "-e", "Fx_Fail ( 1552 )", "-e", "Fx_Evaluate ( \"$$x\" )"}));
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "42\n\n");
    EXPECT_EQ(run.err, "error 1552\n");
}

TEST(FmhostPlugins, VerboseShowsWhatThePluginAnsweredAndTheRegistrationOrder) {
    const auto run = RunFmhost(WithFixture({"--verbose", "-e", "1"}));
    EXPECT_EQ(run.exitCode, 0) << run.err;
    const std::string& err = run.err;
    const size_t options = Find(err, "options \"FxTs1nnYnnn\"");
    const size_t init = Find(err,
                             "init (extension version 77, application kind 1, "
                             "\"Pro 22.0v1\") answered 55: enabled");
    const size_t first = Find(err, "register FxTs 1 Fx_Echo -> 0");
    const size_t last = Find(err, "register FxTs 9 Fx_File -> 0");
    const size_t listed = Find(err, "9 functions registered");
    Find(err, "FxTs 2 Fx_Add( ... )  [arguments 2..2, flags 0x00FFFF7E]");
    const size_t shutdown = Find(err, "shutdown");
    const size_t unregisterFirst = Find(err, "unregister FxTs 9 Fx_File -> 0");
    const size_t unregisterLast = Find(err, "unregister FxTs 1 Fx_Echo -> 0");
    EXPECT_LT(options, init);
    EXPECT_LT(init, first);
    EXPECT_LT(first, last);
    EXPECT_LT(last, listed);
    EXPECT_LT(listed, shutdown);
    EXPECT_LT(shutdown, unregisterFirst);
    EXPECT_LT(unregisterFirst, unregisterLast);
    EXPECT_EQ(run.out, "1\n");
}

TEST(FmhostPlugins, ARefusedOrMissingPluginEndsTheRunWithThree) {
    ProcessOptions refusing;
    refusing.environment = {{"HOST_FIXTURE_INIT", "-1"}};
    const auto refused = RunFmhost(WithFixture({"-e", "1"}), refusing);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(refused.out, "");
    Find(refused.err, "refused to load: init answered -1");

    const auto missing = RunFmhost({"--plugin", BesideTest("NoSuchPlugin.fmx64"), "-e", "1"});
    EXPECT_EQ(missing.exitCode, 3);
    Find(missing.err, "could not be loaded (system error ");
}

TEST(FmhostPlugins, TheExtensionVersionOptionReachesInit) {
    const auto run = RunFmhost(WithFixture({"--extension-version", "60", "--application-version",
                                            "Pro 19.0v1", "-e", "Fx_HostInfo ( )"}));
    EXPECT_EQ(run.out, "60 1 Pro 19.0v1 instance-ok\n") << run.err;
}

TEST(FmhostPlugins, FaultOptionsReachThePlugin) {
    const auto probe =
        RunFmhost(WithFixture({"--fail-call", "2:1", "-e", "Fx_Probe ( )", "-e", "Fx_Probe ( )"}));
    EXPECT_EQ(probe.out, "0,1,0\n0,1,0\n") << probe.err;

    const auto registration = RunFmhost(WithFixture({"--verbose", "--fail-register", "3:1210"}));
    EXPECT_EQ(registration.exitCode, 3);
    Find(registration.err, "register FxTs 3 Fx_Evaluate -> 1210 (injected)");
    const size_t undo2 = Find(registration.err, "unregister FxTs 2 Fx_Add");
    const size_t undo1 = Find(registration.err, "unregister FxTs 1 Fx_Echo");
    EXPECT_LT(undo2, undo1);
    Find(registration.err, "init answered -2");
}

// As FileMaker Server keeps one session per client: its own globals, and its end told.
TEST(FmhostPlugins, SessionsKeepTheirOwnGlobalsAndTheirEndReachesThePlugin) {
    ProcessOptions options;
    options.environment = {{"HOST_FIXTURE_OPTIONS", "FxTs1nnYnYn"}};
    const auto run = RunFmhost(WithFixture({"-e",
                                            "Let ( $$who = \"one\" ; $$who )",
                                            "--session",
                                            "2",
                                            "-e",
                                            "IsEmpty ( $$who )",
                                            "-e",
                                            "Let ( $$who = \"two\" ; $$who )",
                                            "--session",
                                            "1",
                                            "-e",
                                            "$$who",
                                            "--end-session",
                                            "2",
                                            "--session",
                                            "2",
                                            "-e",
                                            "IsEmpty ( $$who )",
                                            "-e",
                                            "Fx_Messages"}),
                               options);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "one\n1\ntwo\none\n1\n7:131 7:128 7:129 0:77 9:2 8:2\n");

    for (const char* bad : {"0", "x", "-1"}) {
        EXPECT_EQ(RunFmhost({"--session", bad, "-e", "1"}).exitCode, 2) << bad;
    }
}

TEST(FmhostPlugins, ThePluginServesCallsFromSeveralThreads) {
    const auto run = RunFmhost(WithFixture({"--threads", "4", "-e", "Fx_Add ( 1 ; 1 )"}));
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "2\n2\n2\n2\n");
}

TEST(FmhostPlugins, TheShippedPluginLoadsAndShowsItsOptions) {
    const auto run =
        RunFmhost({"--plugin", BesideTest("Vantafile.fmx64"), "--verbose", "-e", "1 + 1"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "2\n");
    Find(run.err, "options \"QrvF1YnYnYn\"");
    Find(run.err, "answered 55: enabled");
}

}  // namespace
