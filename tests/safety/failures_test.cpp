// No failing call answers 0: every operation made to fail in each way a busy, strict system
// makes it fail, including the shell's failures that leave no last error behind.
#include <windows.h>

#include "pictures/test_pictures.h"
#include "reported_failure.h"
#include "safety_fixture.h"

namespace safety_test {
namespace {

using Failures = SafetyTest;

TEST_F(Failures, NoFailingCallAnswersZero) {
    writeFile(u"a.txt", "alpha");
    writeFile(u"ro.txt", "read-only");
    writeFile(u"held.txt", "held");
    writeFile(u"pic.png", picturetest::MakePicture(L"image/png", 40, 30));
    makeFolder(u"folder");
    writeFile(u"folder\\inside.txt", "inside");
    ASSERT_EQ(call(uR"(VFile_Compress( "folder" ; "a.zip" ))"), Succeeded());
    ASSERT_TRUE(SetFileAttributesW(Wide(path(u"ro.txt")), FILE_ATTRIBUTE_READONLY));
    // Our own long-path walk: a tree whose paths pass the shell's limit.
    const std::u16string deep = std::u16string(120, u'd') + u"\\" + std::u16string(120, u'e');
    makeFolder(std::u16string(120, u'd'));
    makeFolder(deep);
    writeFile(deep + u"\\f.txt", "deep");

    std::vector<std::u16string> calculations = {
        // The shell fails these with no last error at all.
        uR"(VFile_Delete( "Z:\proc\version" ))",
        uR"(VFile_Copy( "a.txt" ; "Z:\proc\copied.txt" ))",
        uR"(VFile_Move( "a.txt" ; "Z:\proc\moved.txt" ))",
        u"VFile_Copy( " + Quoted(path(deep)) + u" ; \"Z:\\proc\\deep\" )",
        u"VFile_Move( " + Quoted(path(deep)) + u" ; \"Z:\\proc\\deep\" )",
        uR"(VFile_Delete( "held.txt" ))",
        uR"(VFile_Move( "held.txt" ; "renamed.txt" ))",
        uR"(VFile_Read( "held.txt" ))",
        uR"(VFile_Write( "held.txt" ; "x" ))",
        uR"(VFile_Write( "held.txt" ; "x" ; 0 ))",
        uR"(VFile_Write( "ro.txt" ; "x" ))",
        uR"(VFile_Write( "ro.txt" ; "x" ; 0 ))",
        uR"(VFile_Compress( "folder" ; "Z:\proc\a.zip" ))",
        uR"(VFile_DeCompress( "a.zip" ; "Z:\proc\unpacked" ))",
        uR"(VFile_Convert( "pic.png" ; "Z:\proc\pic.png" ))",
        uR"(VFile_Set( "modified" ; "Z:\proc\version" ; Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) ) ))",
    };
    std::string why;
    const std::optional<std::u16string> small = SmallVolume(why);
    if (small) {
        // A copy the volume cannot hold, by the shell and by our own walk.
        writeFile(u"big.bin", std::string(4 << 20, 'b'));
        calculations.push_back(u"VFile_Copy( \"big.bin\" ; " + Quoted(*small + u"\\big.bin") +
                               u" )");
        writeFile(deep + u"\\big.bin", std::string(4 << 20, 'd'));
        calculations.push_back(u"VFile_Copy( " + Quoted(path(deep + u"\\big.bin")) + u" ; " +
                               Quoted(*small + u"\\deep big.bin") + u" )");
    } else {
        std::cout << "[ NOTE ] no full-volume copy here: " << why << "\n";
    }
    const slib::UniqueFileHandle held = Hold(path(u"held.txt"), GENERIC_READ | GENERIC_WRITE, 0);
    ASSERT_TRUE(held.valid());
    for (const std::u16string& calculation : calculations) {
        EXPECT_TRUE(ReportedFailure(call(calculation))) << Narrow(calculation);
    }
    if (small) {
        for (const char16_t* copy : {u"big.bin", u"deep big.bin"}) {
            EXPECT_EQ(GetFileAttributesW(Wide(*small + u"\\" + copy)), INVALID_FILE_ATTRIBUTES)
                << "a failed copy left its partial file " << Narrow(copy);
        }
    }
    EXPECT_EQ(readFile(u"a.txt"), "alpha");
    EXPECT_EQ(readFile(deep + u"\\f.txt"), "deep");
}

}  // namespace
}  // namespace safety_test
