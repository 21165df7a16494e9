// fmhost without plug-ins: calculations, output, exit status, options and inputs.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>

#include "support/fmhost_process.h"

namespace {

using vf::test::ProcessOptions;
using vf::test::RunFmhost;

TEST(FmhostCalculations, PrintsEachResultOnItsOwnLineWithCarriageReturnsKept) {
    const auto run =
        RunFmhost({"-e", "1+2", "-e", "Let ( [ $$a = 5 ] ; $$a & \"¶\" & Length ( \"abc\" ) )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "3\n5\r3\n");
    EXPECT_EQ(run.err, "");
}

TEST(FmhostCalculations, AFailingCalculationReportsOnStandardErrorAndTheRestStillRun) {
    const auto run = RunFmhost({"-e", "1 +", "-e", "2 * 3", "-e", "NoSuchFunction ( 1 )"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "6\n");
    EXPECT_EQ(run.err, "error 1203\nerror 1208\n");
}

TEST(FmhostCalculations, GlobalsPersistFromOneCalculationToTheNext) {
    const auto run = RunFmhost({"-e", "Let ( $$n = 41 ; \"\" )", "-e", "$$n + 1", "-e",
                                "Let ( $local = 1 ; $local )", "-e", "IsEmpty ( $local )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "\n42\n1\n1\n") << "$locals end with their calculation";
}

TEST(FmhostCalculations, ThreadsEachPrintTheirResult) {
    const auto run = RunFmhost({"--threads", "3", "-e", "2 * 3", "-e", "Upper ( \"x\" )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "6\n6\n6\nX\nX\nX\n");
}

TEST(FmhostCalculations, TheDatabaseOptionsDecideGetFilePath) {
    auto filePath = [](std::vector<std::string> args) {
        args.insert(args.end(), {"-e", "Get ( FilePath )"});
        const auto run = RunFmhost(args);
        return run.exitCode == 0 ? run.out : run.err;
    };
    EXPECT_EQ(filePath({"--file", "C:\\Data\\Solution.fmp12"}), "file:/C:/Data/Solution.fmp12\n");
    EXPECT_EQ(filePath({"--network-file", "fmp://host/Solution.fmp12"}),
              "fmnet:/host/Solution.fmp12\n");
    EXPECT_EQ(filePath({"--no-file"}), "error 100\n");
    EXPECT_EQ(filePath({"--fail-file-path", "301"}), "error 301\n");

    ProcessOptions inWindows;
    inWindows.workingDirectory = "C:\\windows";
    const auto run = RunFmhost({"-e", "Get ( FilePath )"}, inWindows);
    EXPECT_EQ(run.out, "file:/C:/windows/Untitled.fmp12\n");
}

TEST(FmhostCalculations, EchoShowsEachCalculationBeforeItsResult) {
    const auto run = RunFmhost({"--echo", "-e", "1 + 1", "-e", "Let ( x = 2 ;\rx * 3 )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "> 1 + 1\n2\n> Let ( x = 2 ;\n> x * 3 )\n6\n");
}

TEST(FmhostCalculations, ContainersPrintAsStreamLists) {
    const auto run = RunFmhost({"-e", "Base64Decode ( \"aGVsbG8=\" ; \"a.txt\" )"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "[FILE:5 bytes, FNAM:a.txt]\n");
}

TEST(FmhostCalculations, ScriptsAreBlocksSeparatedByBlankLines) {
    char folder[MAX_PATH];
    GetTempPathA(MAX_PATH, folder);
    const std::string path = std::string(folder) + "fmhost_cli_test.fmcalc";
    const std::string script =
        "\xEF\xBB\xBF"
        "1 + 1\r\n"
        "\r\n"
        "Let ( [\r\n"
        "  x = \"two\r\n"
        "lines\" ] ;\r\n"
        "  x )\r\n"
        "   \n"
        "\n"
        "Length ( \"é\" )";
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    std::fwrite(script.data(), 1, script.size(), file);
    std::fclose(file);

    const auto run = RunFmhost({"--script", path, "-e", "3"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "2\ntwo\rlines\n1\n3\n");
    DeleteFileA(path.c_str());

    const auto missing = RunFmhost({"--script", path});
    EXPECT_EQ(missing.exitCode, 2);
    EXPECT_NE(missing.err.find("cannot read the script"), std::string::npos) << missing.err;
}

TEST(FmhostCalculations, PipedInputIsReadAsAScript) {
    ProcessOptions piped;
    piped.input = "1+1\n\n2+\n3\n";
    const auto run = RunFmhost({}, piped);
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "2\n5\n");

    ProcessOptions prompted;
    prompted.input = "1+1\n\nquit\n9\n";
    const auto prompt = RunFmhost({"--prompt"}, prompted);
    EXPECT_EQ(prompt.out, "fmhost> 2\nfmhost> fmhost> \n") << "one line each, until quit";
}

TEST(FmhostCalculations, BadCommandLinesExitWithTwo) {
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"--threads", "0", "-e", "1"},
          {"--bogus"},
          {"-e"},
          {"--fail-call", "x"},
          {"--fail-register", "4"},
          {"--plugin", "a", "--no-plugin"},
          {"--file", ""}}) {
        const auto run = RunFmhost(args);
        EXPECT_EQ(run.exitCode, 2) << args[0];
        EXPECT_EQ(run.out, "") << args[0];
        EXPECT_EQ(run.err.rfind("fmhost: ", 0), 0u) << run.err;
    }
    const auto help = RunFmhost({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--plugin", "--no-file", "--network-file", "--script", "--threads",
                               "--fail-call", "--fail-register", "--fail-file-path", "--verbose"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
}

}  // namespace
