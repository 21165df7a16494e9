// The forms VFile_Get gives fed back, UNC paths and paths past MAX_PATH: Windows' own spellings.
#include <windows.h>

#include <algorithm>

#include "path_forms_fixture.h"

namespace items_test {
namespace {

std::u16string FromUtf8(const std::string& text) {
    std::wstring wide(text.size() + 1, L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           wide.data(), static_cast<int>(wide.size()));
    return std::u16string(reinterpret_cast<const char16_t*>(wide.data()), length);
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
