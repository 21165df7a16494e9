// A tree holding symbolic links to a folder outside it and back to itself: copy, move, delete,
// size and zip leave the outside folder as it was, never enter a link, and end. Unpacking never
// writes through a link planted in the target.
#include "safety/posix/safety_scratch.h"

namespace safety_test {
namespace {

class Links : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"outside");
        writeFile(u"outside\\keep.txt", "outside file");
        makeFolder(u"tree");
        writeFile(u"tree\\real.txt", "real");
        makeLink(u"tree\\out", bytes(u"outside"));
        makeLink(u"tree\\self", "..");
        makeLink(u"tree\\file", "../outside/keep.txt");
    }
    void expectOutsideUntouched() {
        EXPECT_EQ(snapshot(u"outside"), (Tree{{u"keep.txt", "outside file"}}));
    }
};

TEST_F(Links, NoWalkEntersALinkInsideTheTree) {
    const Tree links = {{u"out", "<link>"}, {u"self", "<link>"}, {u"file", "<link>"}};
    const Tree withLinks = {
        {u"real.txt", "real"}, {u"out", "<link>"}, {u"self", "<link>"}, {u"file", "<link>"}};
    const struct {
        const char16_t* calculation;
        const char16_t* result;  // the folder to look at afterwards; empty: none
        Tree expected;
    } cases[] = {
        // A copy takes links as links, a zip leaves them out.
        {uR"(VFile_Copy( "tree" ; "copy" ))", u"copy", withLinks},
        {uR"(VFile_Compress( "tree" ; "tree.zip" ))", u"", {}},
        {uR"(VFile_DeCompress( "tree.zip" ; "unpacked" ))", u"unpacked", {{u"real.txt", "real"}}},
        {uR"(VFile_Move( "copy" ; "moved" ))", u"moved", withLinks},
        {uR"(VFile_Delete( "moved" ))", u"", {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), Succeeded()) << Narrow(c.calculation);
        if (*c.result != u'\0') {
            EXPECT_EQ(snapshot(c.result), c.expected) << Narrow(c.calculation);
        }
        expectOutsideUntouched();
    }
    EXPECT_FALSE(exists(u"moved"));
    EXPECT_EQ(evaluate(uR"(VFile_Get( "size" ; "tree" ))"), "4");
    EXPECT_EQ(call(uR"(VFile_Delete( "tree" ))"), Succeeded());
    EXPECT_FALSE(exists(u"tree"));
    expectOutsideUntouched();
}

TEST_F(Links, UnpackingNeverWritesThroughAPlantedLink) {
    makeFolder(u"pack");
    makeFolder(u"pack\\link");
    writeFile(u"pack\\link\\evil.txt", "evil");
    writeFile(u"pack\\keep.txt", "new");
    ASSERT_EQ(call(uR"(VFile_Compress( "pack" ; "pack.zip" ))"), Succeeded());
    // The archive holds "link/evil.txt" and "keep.txt".
    makeFolder(u"target");
    makeLink(u"target\\link", bytes(u"outside"));
    makeLink(u"target\\keep.txt", bytes(u"outside\\keep.txt"));
    const std::string outcome = call(uR"(VFile_DeCompress( "pack.zip" ; "target" ))");
    EXPECT_EQ(outcome.substr(0, outcome.find(" | ")), "-50") << outcome;
    EXPECT_NE(outcome.find("symbolic link"), std::string::npos) << outcome;
    EXPECT_EQ(snapshot(u"target"), (Tree{{u"link", "<link>"}, {u"keep.txt", "<link>"}}));
    expectOutsideUntouched();
}

}  // namespace
}  // namespace safety_test
