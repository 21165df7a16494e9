// VFile_Open, VFile_Run and VFile_Reveal hand items to other programs: a recorder program notes
// the exact command line it was started with, and a folder window shows what was revealed. Their
// refusals are in items_test.cpp.
#include "items_fixture.h"

namespace items_test {
namespace {

class ShellActions : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        recorder_ = installRecorder();
    }
    std::u16string recorder_;
};

TEST_F(ShellActions, RunStartsTheProgramWithEachLineAsAnEscapedArgument) {
    const struct {
        std::u16string arguments;
        std::u16string commandLineTail;
    } cases[] = {
        {u"", u""},
        {u" ; \"x y\"", u" x\\ y"},
        {u" ; 5", u" 5"},
        {u" ; \"one¶two\"", u" one two"},
        {u" ; \"C:\\\\dir\"", u" C:\\\\dir"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(Narrow(c.arguments));
        EXPECT_EQ(call(u"VFile_Run( \"app dir/rec order.exe\"" + c.arguments + u" )"), Succeeded());
        EXPECT_EQ(recorded(), Quote(recorder_) + c.commandLineTail);
    }
}

TEST_F(ShellActions, OpenWithAnApplicationPassesBothResolvedPaths) {
    writeFile(u"my doc.txt", "doc");
    EXPECT_EQ(call(u"VFile_Open( \"my doc.txt\" ; \"app dir\\\\rec order.exe\" )"), Succeeded());
    EXPECT_EQ(recorded(), Quote(recorder_) + u" " + Quote(path(u"my doc.txt")));
}

TEST_F(ShellActions, OpenAloneUsesTheDefaultAction) {
    // The default action of a program is to run it.
    EXPECT_EQ(call(u"VFile_Open( \"app dir/rec order.exe\" )"), Succeeded());
    const std::optional<std::u16string> line = recorded();
    ASSERT_TRUE(line);
    // How the shell quotes the program it starts is its own business.
    std::u16string unquoted;
    for (const char16_t unit : *line) {
        if (unit != u'"') {
            unquoted += unit;
        }
    }
    EXPECT_EQ(Narrow(unquoted.substr(0, unquoted.find_last_not_of(u' ') + 1)), Narrow(recorder_));
}

TEST_F(ShellActions, RevealOpensAWindowOnTheItemsFolder) {
    makeFolder(u"revealed parent");
    writeFile(u"revealed parent\\shown.txt", "s");
    EXPECT_EQ(call(u"VFile_Reveal( \"revealed parent/shown.txt\" )"), Succeeded());
    EXPECT_TRUE(slib::test::FolderWindowOpensAndCloses(u"revealed parent"));
}

}  // namespace
}  // namespace items_test
