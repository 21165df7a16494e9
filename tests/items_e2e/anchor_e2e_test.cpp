// Where relative paths land, through the fmhost program as a user runs it: beside the database,
// in the current folder when there is none, in the application's folder for a database on a
// network host, and nowhere when the host fails to say.
#include <windows.h>

#include "items_fixture.h"
#include "support/fmhost_process.h"

namespace items_test {
namespace {

using vf::test::ProcessOptions;
using vf::test::RunFmhost;

class Anchors : public slib::test::ScratchTest {
  protected:
    // fmhost with the built plug-in, `options` and then the calculations; its standard output.
    std::string run(std::vector<std::string> options, const std::vector<std::string>& calculations,
                    const ProcessOptions& process = ProcessOptions()) {
        options.insert(options.begin(), {"--plugin", vf::test::BesideTest("Vantafile.fmx64")});
        for (const std::string& calculation : calculations) {
            options.push_back("-e");
            options.push_back(calculation);
        }
        const vf::test::ProcessResult result = RunFmhost(options, process);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.out;
    }
    std::string database() const { return Narrow(path(u"Solution.fmp12")); }
};

TEST_F(Anchors, BesideTheDatabase) {
    EXPECT_EQ(run({"--file", database()},
                  {"VFile_New( \"made.txt\" ; \"file\" )", "VFile_Get( \"lastError\" )"}),
              "0\nNo Error Message\n");
    EXPECT_TRUE(exists(u"made.txt"));
}

TEST_F(Anchors, InTheCurrentFolderWithoutADatabase) {
    ProcessOptions inScratch;
    inScratch.workingDirectory = Narrow(path(u""));
    EXPECT_EQ(run({"--no-file"}, {"VFile_New( \"made here\" )"}, inScratch), "0\n");
    EXPECT_TRUE(exists(u"made here"));
}

TEST_F(Anchors, InTheApplicationFolderForADatabaseOnANetworkHost) {
    const std::u16string name =
        u"vf-items-e2e-" + slib::test::FromWide(std::to_wstring(GetCurrentProcessId()).c_str()) +
        u".txt";
    const std::u16string besideHost = BesideTest(name);
    const HANDLE file = CreateFileW(Wide(besideHost), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    const std::string out = run({"--network-file", "fmnet:/server/Solution.fmp12"},
                                {"VFile_Delete( \"" + Narrow(name) + "\" )"});
    const bool left = GetFileAttributesW(Wide(besideHost)) != INVALID_FILE_ATTRIBUTES;
    DeleteFileW(Wide(besideHost));
    EXPECT_EQ(out, "0\n");
    EXPECT_FALSE(left);
}

TEST_F(Anchors, NowhereWhenTheHostCannotTell) {
    writeFile(u"kept.txt", "k");
    EXPECT_EQ(run({"--file", database(), "--fail-file-path", "102"},
                  {"VFile_Delete( \"kept.txt\" )", "VFile_Get( \"lastError\" )",
                   "VFile_Get( \"lastErrorMessage\" )",
                   // The argument is checked before the host is asked.
                   "VFile_Delete( 12 )", "VFile_Get( \"lastErrorMessage\" )",
                   // Absolute paths need no anchor, but the host is asked all the same.
                   "VFile_Delete( " + Narrow(Quoted(path(u"kept.txt"))) + " )"}),
              "2400\n2400\nUnexpected FileMaker Error\n-50\nPath parameter must be text\n2400\n");
    EXPECT_EQ(readFile(u"kept.txt"), "k");
}

}  // namespace
}  // namespace items_test
