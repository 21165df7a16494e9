// The item functions through the real fmhost.exe, as a script author runs them: one session, the
// database in a scratch folder, every function of the family called from a script file.
#include <fstream>

#include "items_fixture.h"
#include "support/fmhost_process.h"

namespace items_test {
namespace {

class FmhostSession : public slib::test::ScratchTest {
  protected:
    // Runs `calculations` (one per blank-line separated block) with the database in the scratch
    // folder; returns the printed lines.
    vf::test::ProcessResult run(const std::string& calculations) {
        const std::u16string script = path(u"session.fmcalc");
        std::ofstream(Wide(script), std::ios::binary) << calculations;
        return vf::test::RunFmhost({"--plugin", vf::test::BesideTest("Vantafile.fmx64"), "--file",
                                    Narrow(path(u"Solution.fmp12")), "--script", Narrow(script)});
    }
};

TEST_F(FmhostSession, EveryItemFunctionWorksOnDiskThroughTheHost) {
    const std::u16string recorder = installRecorder();
    writeFile(u"a.txt", "alpha");
    const vf::test::ProcessResult session = run(
        "VFile_New( \"dir\" )\n\n"
        "VFile_New( \"dir/f.txt\" ; \"FILE\" )\n\n"
        "VFile_Copy( \"a.txt\" ; \"dir\" )\n\n"
        "VFile_Move( \"dir/a.txt\" ; \"dir/b.txt\" )\n\n"
        "VFile_Copy( \"a.txt\" ; \"a.txt\" ) & \" \" & VFile_Get( \"lastError\" )\n\n"
        "VFile_Delete( \"dir/f.txt\" )\n\n"
        "VFile_Run( \"app dir/rec order.exe\" ; \"x y\" )\n\n"
        "VFile_Reveal( \"missing.txt\" ) & \" \" & VFile_Get( \"lastErrorMessage\" )\n\n"
        "VFile_Unmount( \"Q:\" ) & \" \" & VFile_Get( \"lastError\" )\n\n"
        "VFile_Open( \"a.txt\" ; \"b\" ; \"c\" ) & \" \" & VFile_Get( \"lastErrorMessage\" )\n");
    EXPECT_EQ(session.exitCode, 0) << session.err;
    EXPECT_EQ(session.out,
              "0\n0\n0\n0\n-48 -48\n0\n0\n2400 Cannot reveal the file\n2400 2400\n"
              "-50 Too many parameters\n");
    EXPECT_EQ(snapshot(u"dir"), (Tree{{u"b.txt", "alpha"}}));
    EXPECT_EQ(readFile(u"a.txt"), std::optional<std::string>("alpha"));
    EXPECT_EQ(recorded(), Quote(recorder) + u" x\\ y");
}

TEST_F(FmhostSession, AFailureReachesTheScriptAsAResultNotAsAHostError) {
    const vf::test::ProcessResult session =
        run("VFile_Delete( \"nothing here\" )\n\n"
            "VFile_Get( \"lastError\" ) & \" \" & VFile_Get( \"lastErrorMessage\" )\n");
    EXPECT_EQ(session.exitCode, 0) << session.err;
    EXPECT_EQ(session.err, "");
    EXPECT_EQ(session.out, "-43\n-43 Item does not exist\n");
}

}  // namespace
}  // namespace items_test
