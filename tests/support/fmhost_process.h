// Runs fmhost.exe as a child process and captures what it prints: for end-to-end tests of a
// plug-in through the emulated host. fmhost.exe is the one beside the running test executable
// (both are built into <build>/bin); under Wine the child runs under the same Wine.
//
//   #include "support/fmhost_process.h"
//
//   TEST(VersionFunction, PrintsTheShortVersion) {
//       using vf::test::RunFmhost;
//       const vf::test::ProcessResult run = RunFmhost(
//           {"--plugin", vf::test::BesideTest("Vantafile.fmx64"), "-e", "VFile_Version ( )"});
//       EXPECT_EQ(run.exitCode, 0) << run.err;
//       EXPECT_EQ(run.out, "3.0\n");
//   }
//
// fmhost.exe itself loads no plug-in unless told with --plugin (only the ./fmhost launcher
// adds the built one). Arguments are UTF-8 and reach fmhost exactly as given (quoted here as
// Windows requires); `input` is written to its standard input, which is then closed.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vf::test {

struct ProcessResult {
    int exitCode = -1;  // -1 when the process could not be started or was stopped
    std::string out;    // standard output, bytes as printed (UTF-8, "\n" line ends)
    std::string err;    // standard error
};

struct ProcessOptions {
    std::string input;
    // Added to (or replacing in) the child's copy of this process's environment.
    std::vector<std::pair<std::string, std::string>> environment;
    std::string workingDirectory;  // empty: this process's
};

ProcessResult RunFmhost(const std::vector<std::string>& args,
                        const ProcessOptions& options = ProcessOptions());

// Any executable; `exe` is a Windows path (UTF-8).
ProcessResult RunProcess(const std::string& exe, const std::vector<std::string>& args,
                         const ProcessOptions& options = ProcessOptions());

// The Windows path (UTF-8) of a file in the folder of the running test executable.
std::string BesideTest(const std::string& fileName);

// One argument quoted for a Windows command line (as CommandLineToArgvW reads it back).
std::string QuoteArgument(const std::string& arg);

// UTF-8 text as the wide text Windows' calls take.
std::wstring WideFromUtf8(const std::string& utf8);

}  // namespace vf::test
