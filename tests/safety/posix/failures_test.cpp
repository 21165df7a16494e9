// No failing call answers 0: every operation made to fail in each way a strict server makes it
// fail (a system folder, a full volume, refused access), with its code in the result and in the
// last error alike, and nothing left of a failed copy.
#include <sys/stat.h>

#include "foundation/file_name_bytes.h"
#include "safety/posix/safety_scratch.h"
#include "safety/reported_failure.h"

namespace safety_test {
namespace {

using Failures = SafetyTest;

TEST_F(Failures, NoFailingCallAnswersZero) {
    writeFile(u"a.txt", "alpha");
    makeFolder(u"folder");
    writeFile(u"folder\\inside.txt", "inside");
    ASSERT_EQ(call(uR"(VFile_Compress( "folder" ; "a.zip" ))"), Succeeded());
    std::vector<std::u16string> calculations = {
        uR"(VFile_Delete( "/proc/version" ))",
        uR"(VFile_Copy( "a.txt" ; "/proc/copied.txt" ))",
        uR"(VFile_Move( "a.txt" ; "/proc/moved.txt" ))",
        uR"(VFile_Copy( "folder" ; "/proc/folder" ))",
        uR"(VFile_Write( "/proc/version" ; "x" ))",
        uR"(VFile_Write( "/proc/version" ; "x" ; 0 ))",
        uR"(VFile_Compress( "folder" ; "/proc/a.zip" ))",
        uR"(VFile_DeCompress( "a.zip" ; "/proc/unpacked" ))",
        uR"(VFile_New( "/proc/new" ))",
        uR"(VFile_Set( "modified" ; "/proc/new.txt" ; Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) ) ))",
    };
    if (modesRefuse()) {
        writeFile(u"ro.txt", "read-only");
        makeFolder(u"locked");
        writeFile(u"locked\\in.txt", "in");
        ASSERT_EQ(::chmod(bytes(u"ro.txt").c_str(), 0444), 0);
        ASSERT_EQ(::chmod(bytes(u"locked").c_str(), 0555), 0);
        for (const char16_t* refused : {
                 uR"(VFile_Write( "ro.txt" ; "x" ; 0 ))",
                 uR"(VFile_Delete( "locked/in.txt" ))",
                 uR"(VFile_Move( "locked/in.txt" ; "out.txt" ))",
                 uR"(VFile_Copy( "a.txt" ; "locked/copy.txt" ))",
                 uR"(VFile_New( "locked/new" ))",
                 uR"(VFile_DeCompress( "a.zip" ; "locked" ))",
             }) {
            calculations.push_back(refused);
        }
    } else {
        std::cout << "[ NOTE ] no refused-access cases: this process passes every mode bit "
                     "(root)\n";
    }
    std::string why;
    const std::optional<std::u16string> small = smallVolume(why);
    if (small) {
        writeFile(u"big.bin", std::string(4 << 20, 'b'));
        calculations.push_back(u"VFile_Copy( \"big.bin\" ; " + Quoted(*small + u"/big.bin") +
                               u" )");
        calculations.push_back(u"VFile_Write( " + Quoted(*small + u"/text.txt") +
                               u" ; VFile_Read( \"big.bin\" ; \"utf-8\" ) )");
    } else {
        std::cout << "[ NOTE ] no full-volume cases here: " << why << "\n";
    }
    for (const std::u16string& calculation : calculations) {
        EXPECT_TRUE(ReportedFailure(call(calculation))) << Narrow(calculation);
    }
    if (small) {
        std::map<std::u16string, std::string> left;
        slib::test::CollectTree(*small, left);
        EXPECT_EQ(left, (Tree{})) << "a failed copy or write left a file";
    }
    ::chmod(bytes(u"locked").c_str(), 0755);
    EXPECT_EQ(readFile(u"a.txt"), "alpha");
    EXPECT_EQ(snapshot(u"folder"), (Tree{{u"inside.txt", "inside"}}));
}

}  // namespace
}  // namespace safety_test
