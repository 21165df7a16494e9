// Every non-canonical way of naming a file or folder reaches the same item through every function
// that takes a path, at 40 characters as at 400, and every form VFile_Get gives names the item it
// came from. Expected answers are those of the plain absolute path, so a form that names another
// item (or none) shows up as a different answer.

#include <windows.h>

#include <functional>
#include <vector>

#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

struct Form {
    const char* label;
    std::function<std::u16string(const std::u16string& root)> text;  // names <root>\sub\a.txt
};

std::u16string FromUtf8(const std::string& text) {
    std::wstring wide(text.size() + 1, L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           wide.data(), static_cast<int>(wide.size()));
    return std::u16string(reinterpret_cast<const char16_t*>(wide.data()), length);
}

std::u16string Ascii(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

std::u16string Slashes(std::u16string text) {
    for (char16_t& c : text) {
        c = c == u'\\' ? u'/' : c;
    }
    return text;
}

// The forms below the anchor folder `root` (which holds the database) that name root\sub\a.txt.
const Form kForms[] = {
    {"absolute", [](const std::u16string& r) { return r + u"\\sub\\a.txt"; }},
    {"relative", [](const std::u16string&) { return std::u16string(u"sub\\a.txt"); }},
    {"relative unix", [](const std::u16string&) { return std::u16string(u"sub/a.txt"); }},
    {"parent step", [](const std::u16string& r) { return r + u"\\sub\\x\\..\\a.txt"; }},
    {"relative parent", [](const std::u16string&) { return std::u16string(u"sub\\x\\..\\a.txt"); }},
    {"dot", [](const std::u16string& r) { return r + u"\\.\\sub\\.\\a.txt"; }},
    {"doubled", [](const std::u16string& r) { return r + u"\\\\sub\\\\a.txt"; }},
    {"mixed", [](const std::u16string& r) { return Slashes(r) + u"\\sub/a.txt"; }},
    {"prefixed", [](const std::u16string& r) { return u"\\\\?\\" + r + u"\\sub\\a.txt"; }},
    {"prefixed dots",
     [](const std::u16string& r) { return u"\\\\?\\" + r + u"\\sub\\..\\sub\\a.txt"; }},
    {"drive-relative", [](const std::u16string& r) { return r.substr(0, 2) + u"sub\\a.txt"; }},
    {"trailing", [](const std::u16string& r) { return r + u"\\sub\\a.txt\\"; }},
    {"FileMaker", [](const std::u16string& r) { return u"file:/" + Slashes(r) + u"/sub//a.txt"; }},
    {"URL", [](const std::u16string& r) { return u"file://" + Slashes(r) + u"/sub/a.txt"; }},
};

class PathForms : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        makeFolder(u"sub");
        writeFile(u"sub\\a.txt", "hello");
        makeFolder(u"out");
    }

    // Every function that reads or changes the item at `item` without making a new one, as one
    // answer each; `tag` makes the names of what it writes unique.
    std::vector<std::string> answers(const std::u16string& item, const std::u16string& tag) {
        const std::u16string p = Quoted(item);
        // The archive's own paths are not in normal form either.
        const std::u16string zip = Quoted(path(u"out\\.\\x\\..\\" + tag + u".zip"));
        const std::u16string unzipped = Quoted(path(u"out//" + tag + u"-unzipped\\"));
        return {
            call(u"VFile_Get( \"kind\" ; " + p + u" )"),
            call(u"VFile_Get( \"size\" ; " + p + u" )"),
            call(u"GetAsText( VFile_Get( \"modified\" ; " + p + u" ) )"),
            call(u"GetAsText( VFile_Get( \"created\" ; " + p + u" ) )"),
            call(u"VFile_Get( \"owner-rights\" ; " + p + u" )"),
            call(u"VFile_Get( \"available-space\" ; " + p + u" ) > 0"),
            call(u"VFile_Get( \"native-full\" ; " + p + u" )"),
            call(u"VFile_Read( " + p + u" )"),
            call(u"VFile_Set( \"modified\" ; " + p +
                 u" ; Timestamp ( Date ( 1 ; 2 ; 2020 ) ; Time ( 3 ; 4 ; 5 ) ) )"),
            call(u"GetAsText( VFile_Get( \"modified\" ; " + p + u" ) )"),
            call(u"VFile_Write( " + p + u" ; \"hello\" )"),
            call(u"VFile_Compress( " + p + u" ; " + zip + u" )"),
            call(u"VFile_DeCompress( " + zip + u" ; " + unzipped + u" )"),
            call(u"VFile_Copy( " + p + u" ; " + Quoted(path(u"out\\" + tag + u".txt")) + u" )"),
        };
    }

    std::vector<std::string> canonical() { return answers(path(u"sub\\a.txt"), u"canonical"); }
};

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

// The forms VFile_Get gives, fed back to VFile_Get and VFile_Read, name the item they came from:
// the file, a folder, the anchor folder itself, and an item outside the anchor.
TEST_F(PathForms, EveryFormVFileGetGivesNamesTheSameItem) {
    const char* const forms[] = {
        "FSSpec",        "native-relative", "native-full", "win-relative", "win-full",
        "unix_relative", "unix-relative",   "unix-full",   "FileMaker",    "URL"};
    makeFolder(u"sub\\~x");
    writeFile(u"sub\\~x\\~lock.txt", "lock");
    for (const std::u16string item : {u"sub\\a.txt", u"sub", u"sub\\~x\\~lock.txt", u""}) {
        const std::u16string absolute = item.empty() ? root_ : path(item);
        const std::string expected =
            evaluate(u"VFile_Get( \"native-full\" ; " + Quoted(absolute) + u" )");
        for (const char* form : forms) {
            const std::string text =
                evaluate(u"VFile_Get( \"" + Ascii(form) + u"\" ; " + Quoted(absolute) + u" )");
            const std::u16string fed = FromUtf8(text);
            // The short form is the system's alias of the item: it names the same item when the
            // fed-back text has the same short form; every other form must come back whole.
            EXPECT_EQ(evaluate(u"VFile_Get( \"FSSpec\" ; " + Quoted(fed) + u" )"),
                      evaluate(u"VFile_Get( \"FSSpec\" ; " + Quoted(absolute) + u" )"))
                << form << " gave " << text;
            if (std::string(form) != "FSSpec") {
                EXPECT_EQ(evaluate(u"VFile_Get( \"native-full\" ; " + Quoted(fed) + u" )"),
                          expected)
                    << form << " gave " << text;
            }
            EXPECT_NE(text.substr(0, 1), "\\") << form;
        }
    }
    EXPECT_EQ(evaluate(u"VFile_Read( VFile_Get( \"native-relative\" ; \"file:/\" & Substitute ( " +
                       Quoted(root_) + u" ; \"\\\\\" ; \"/\" ) & \"//sub/a.txt\" ) )"),
              "hello");
}

// A UNC path names the share, never a folder on drive C:.
TEST_F(PathForms, UncPathsStayOnTheirShare) {
    for (const std::u16string unc :
         {u"\\\\vfnosuchserver\\share\\new.txt", u"//vfnosuchserver/share/new.txt"}) {
        EXPECT_EQ(evaluate(u"VFile_Get( \"native-full\" ; " + Quoted(unc) + u" )"),
                  "\\\\vfnosuchserver\\share\\new.txt");
        call(u"VFile_Set( \"modified\" ; " + Quoted(unc) +
             u" ; Timestamp ( Date ( 1 ; 2 ; 2020 ) ; 0 ) )");
        call(u"VFile_New( " + Quoted(unc) + u" ; \"file\" )");
        EXPECT_EQ(GetFileAttributesW(L"C:\\vfnosuchserver"), INVALID_FILE_ATTRIBUTES);
        EXPECT_EQ(GetFileAttributesW(L"C:\\\\vfnosuchserver"), INVALID_FILE_ATTRIBUTES);
    }
}

// Around and far past MAX_PATH every function answers as it does at a short path.
TEST_F(PathForms, EveryFunctionWorksAt400CharactersAsAt40) {
    const std::vector<std::string> expected = canonical();
    for (const size_t length : {259u, 260u, 261u, 400u}) {
        std::u16string folder = u"long";
        makeFolder(folder);
        // Folders of up to 40 characters until root\folder\a.txt has `length` characters.
        while (root_.size() + 1 + folder.size() + 6 < length) {
            const size_t room = length - (root_.size() + 1 + folder.size() + 6) - 1;
            folder += u"\\" + std::u16string(std::min<size_t>(room == 0 ? 1 : room, 40), u'd');
            makeFolder(folder);
        }
        const std::u16string file = folder + u"\\a.txt";
        ASSERT_EQ(path(file).size(), length);
        writeFile(file, "hello");
        // The dates differ from the short file's, as does its path: compare everything else.
        std::vector<std::string> got = answers(path(file), u"len" + Ascii(std::to_string(length)));
        std::vector<std::string> want = expected;
        got[2] = want[2] = "";
        got[3] = want[3] = "";
        got[6] = want[6] = "";
        EXPECT_EQ(got, want) << length;
        const std::u16string relative = folder + u"\\x\\..\\a.txt";
        EXPECT_EQ(call(u"VFile_Read( " + Quoted(relative) + u" )"),
                  "hello | No Error Message | No Error Message")
            << length;
        EXPECT_EQ(call(u"VFile_New( " + Quoted(folder + u"\\made") + u" )"), Succeeded()) << length;
        EXPECT_EQ(call(u"VFile_DeCompress( " + Quoted(path(u"out\\canonical.zip")) + u" ; " +
                       Quoted(folder + u"\\made") + u" )"),
                  Succeeded())
            << length;
        EXPECT_EQ(readFile(folder + u"\\made\\a.txt"), "hello") << length;
        EXPECT_EQ(call(u"VFile_Delete( " + Quoted(folder + u"\\made") + u" )"), Succeeded())
            << length;
        slib::test::RemoveTree(path(u"long"));
    }
}

}  // namespace
}  // namespace items_test
