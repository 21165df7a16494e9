// Every non-canonical way of naming a file reaches the same item through every function that
// takes a path; each system's forms are its own (forms.cpp in windows/ and posix/).
#include "path_forms_fixture.h"

namespace items_test {
namespace {

TEST_F(PathForms, EveryFormNamesTheSameFileForEveryFunction) {
    std::vector<std::string> expected = canonical();
    ASSERT_EQ(expected[0], "file | No Error Message | No Error Message");
    // Each write moves the dates on: they are compared for working, not for their value.
    const auto withoutDates = [](std::vector<std::string> answers) {
        for (const size_t date : {2u, 3u}) {
            if (answers[date].find(" | No Error Message |") != std::string::npos) {
                answers[date] = "a date";
            }
        }
        return answers;
    };
    expected = withoutDates(expected);
    ASSERT_EQ(expected[7], "hello | No Error Message | No Error Message");
    int n = 0;
    for (const Form& form : kForms) {
        const std::u16string text = form.text(root_);
        EXPECT_EQ(withoutDates(answers(text, u"f" + Ascii(std::to_string(n++)))), expected)
            << form.label << ": " << Narrow(text);
    }
    EXPECT_EQ(readFile(u"sub\\a.txt"), "hello");
}

// Moves and deletes end the item, so each form gets its own.
TEST_F(PathForms, EveryFormMovesAndDeletesTheItemItNames) {
    int n = 0;
    for (const Form& form : kForms) {
        const std::u16string text = form.text(root_);
        const std::u16string moved = path(u"out\\m" + Ascii(std::to_string(n++)) + u".txt");
        writeFile(u"sub\\a.txt", "again");
        EXPECT_EQ(call(u"VFile_Move( " + Quoted(text) + u" ; " + Quoted(moved) + u" )"),
                  Succeeded())
            << form.label;
        EXPECT_FALSE(exists(u"sub\\a.txt")) << form.label;
        writeFile(u"sub\\a.txt", "again");
        EXPECT_EQ(call(u"VFile_Delete( " + Quoted(text) + u" )"), Succeeded()) << form.label;
        EXPECT_FALSE(exists(u"sub\\a.txt")) << form.label;
    }
}

}  // namespace
}  // namespace items_test
