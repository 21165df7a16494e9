// Every non-canonical way of naming a file or folder, and a fixture that asks every function
// that takes a path about one item. Expected answers are those of the plain absolute path, so a
// form that names another item (or none) shows up as a different answer.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "items_e2e/items_fixture.h"

namespace items_test {

struct Form {
    const char* label;
    std::function<std::u16string(const std::u16string& root)> text;  // names <root>/sub/a.txt
};

// This system's forms below the anchor folder `root` (which holds the database) that name
// root/sub/a.txt: windows/ and posix/ hold them, chosen by the build.
extern const std::vector<Form> kForms;

std::u16string Ascii(const std::string& text);
std::u16string Slashes(std::u16string text);

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

}  // namespace items_test
