// The plug-in through fmhost.exe, the emulated host's command line, as a user would drive it.
// (The same host in-process, with finer control, is exercised by plugin_e2e_tests.)
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "resources/version.h"
#include "support/fmhost_process.h"

namespace {

using vf::test::ProcessResult;

ProcessResult RunWithPlugin(std::vector<std::string> args) {
    args.insert(args.begin(), {"--plugin", vf::test::BesideTest("Vantafile.fmx64")});
    return vf::test::RunFmhost(args);
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// The verbose report's register and unregister lines as signed ids: "+7" and "-6".
std::string RegistrationCalls(const std::string& err) {
    std::string calls;
    for (const std::string& line : Lines(err)) {
        for (const std::string kind : {"  register QrvF ", "  unregister QrvF "}) {
            const size_t at = line.find(kind);
            if (at != std::string::npos) {
                const std::string rest = line.substr(at + kind.size());
                calls += (kind[2] == 'r' ? " +" : " -") + rest.substr(0, rest.find(' '));
            }
        }
    }
    return calls;
}

TEST(FmhostCli, FailedRegistrationIsUnwoundAndShutdownWithdrawsAll) {
    ProcessResult run = RunWithPlugin({"--verbose", "--fail-register", "7:1", "-e", "1"});
    EXPECT_NE(run.err.find("answered -2"), std::string::npos) << run.err;
    EXPECT_EQ(RegistrationCalls(run.err), " +1 +2 +3 +4 +5 +6 +7 -6 -5 -4 -3 -2 -1");

    run = RunWithPlugin({"--verbose", "-e", "VFile_Version()"});
    std::string expected;
    for (int id = 1; id <= 19; ++id)
        expected += " +" + std::to_string(id);
    for (int id = 19; id >= 1; --id)
        expected += " -" + std::to_string(id);
    EXPECT_EQ(RegistrationCalls(run.err), expected);
    EXPECT_EQ(run.out, VF_VERSION_SHORT_TEXT "\n");
}

TEST(FmhostCli, EveryThreadSeesTheSameOutcomes) {
    const ProcessResult run =
        RunWithPlugin({"--threads", "8", "-e", "VFile_Version( \"long\" )", "-e",
                       "VFile_Delete( 12 )", "-e", "VFile_Get( \"lastErrorMessage\" )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    std::vector<std::string> expected;
    for (const char* line : {"Quorvel Vantafile Plug-In " VF_VERSION_SHORT_TEXT, "-50",
                             "Path parameter must be text"}) {
        expected.insert(expected.end(), 8, line);
    }
    EXPECT_EQ(Lines(run.out), expected);
}

}  // namespace
