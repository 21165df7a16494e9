// Files other programs hold: what each share mode of the other handle lets us do, the short retry
// that outlasts a brief hold, and dates set with attribute access only.
#include <windows.h>

#include <chrono>
#include <thread>

#include "safety_fixture.h"

namespace safety_test {
namespace {

using Sharing = SafetyTest;

constexpr const char16_t* kSetDate =
    uR"(VFile_Set( "modified" ; "f.txt" ; Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) ) ))";

TEST_F(Sharing, EachShareModeOfAnotherHandleAllowsWhatItShould) {
    const std::string ok = Succeeded();
    const std::string dateSet = " | No Error Message | No Error Message";  // VFile_Set's ""
    const struct {
        const char* holder;
        DWORD access, share;
        std::string read, append, replace;
    } cases[] = {
        // A log another program writes: it lets others read and write.
        {"logger", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, "log",
         Failed(2400, "Cannot open file for writing"), Failed(2400, "Cannot write to file")},
        {"writer sharing reads", GENERIC_WRITE, FILE_SHARE_READ, "log",
         Failed(2400, "Cannot open file for writing"), Failed(2400, "Cannot write to file")},
        {"reader sharing reads", GENERIC_READ, FILE_SHARE_READ, "log",
         Failed(2400, "Cannot open file for writing"), Failed(2400, "Cannot write to file")},
        {"reader sharing everything", GENERIC_READ,
         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, "log", ok, ok},
        {"exclusive", GENERIC_READ | GENERIC_WRITE, 0, Failed(-54, "Insufficent file permissions"),
         Failed(2400, "Cannot open file for writing"), Failed(2400, "Cannot write to file")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.holder);
        writeFile(u"f.txt", "log");
        {
            const slib::UniqueFileHandle holder = Hold(path(u"f.txt"), c.access, c.share);
            ASSERT_TRUE(holder.valid());
            const std::string read = evaluate(uR"(VFile_Read( "f.txt" ))");
            EXPECT_EQ(read == "log" ? read : call(uR"(VFile_Read( "f.txt" ))"), c.read);
            EXPECT_EQ(call(uR"(VFile_Write( "f.txt" ; "+" ; -1 ))"), c.append);
            EXPECT_EQ(call(uR"(VFile_Write( "f.txt" ; "new" ))"), c.replace);
            // Dates take attribute access only, which no share mode keeps out.
            EXPECT_EQ(call(kSetDate), dateSet);
        }
        if (c.replace != ok) {
            EXPECT_EQ(readFile(u"f.txt"), c.append == ok ? "log+" : "log");
        }
    }
}

TEST_F(Sharing, ABriefHoldIsWaitedFor) {
    writeFile(u"f.txt", "scanned");
    slib::UniqueFileHandle scanner = Hold(path(u"f.txt"), GENERIC_READ, 0);
    ASSERT_TRUE(scanner.valid());
    // A scanner lets go after a fifth of a second: well inside the retries.
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        scanner.reset();
    });
    const std::string read = evaluate(uR"(VFile_Read( "f.txt" ))");
    release.join();
    EXPECT_EQ(read, "scanned");
}

TEST_F(Sharing, ADateIsSetOnAReadOnlyFile) {
    writeFile(u"f.txt", "kept");
    ASSERT_TRUE(SetFileAttributesW(Wide(path(u"f.txt")), FILE_ATTRIBUTE_READONLY));
    {
        // Windows grants attribute access on a read-only file; Wine counts it as write access.
        const slib::UniqueFileHandle probe(
            CreateFileW(Wide(path(u"f.txt")), FILE_WRITE_ATTRIBUTES,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!probe.valid()) {
            const DWORD error = GetLastError();
            SetFileAttributesW(Wide(path(u"f.txt")), FILE_ATTRIBUTE_NORMAL);
            GTEST_SKIP() << "this system refuses attribute access to a read-only file (error "
                         << error << ")";
        }
    }
    EXPECT_EQ(call(kSetDate), " | No Error Message | No Error Message");
    EXPECT_EQ(evaluate(uR"(VFile_Get( "modified" ; "f.txt" ))").rfind("7/1/2021 12:00:00", 0), 0u);
    EXPECT_EQ(GetFileAttributesW(Wide(path(u"f.txt"))) & FILE_ATTRIBUTE_READONLY,
              static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(readFile(u"f.txt"), "kept");
    SetFileAttributesW(Wide(path(u"f.txt")), FILE_ATTRIBUTE_NORMAL);
}

}  // namespace
}  // namespace safety_test
