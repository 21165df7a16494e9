// The anchor comes from Get(FilePath) on every call, with the fallbacks of a database served by
// a network host, of a calculation without any database, and of a failing host.
#include <windows.h>

#include "bridge/anchor.h"
#include "bridge_fixture.h"

namespace bridge_test {
namespace {

std::u16string CurrentDirectory() {
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetCurrentDirectoryW(MAX_PATH, buffer);
    return FromWide(buffer).substr(0, length);
}

TEST_F(BridgeTest, LocalDatabaseAnchorsAtItsFolderAsItIsNow) {
    EXPECT_EQ(Narrow(Anchor().text()), "C:\\Data\\");
    EXPECT_EQ(Narrow(resolve(u"a.txt")), "C:\\Data\\a.txt");
    // Nothing is kept between calls: another database is seen at once.
    ASSERT_TRUE(host_.SetFile(kFmhostFileLocal, L"C:\\Other Place\\Deeper\\x.fmp12"));
    EXPECT_EQ(Narrow(Anchor().text()), "C:\\Other Place\\Deeper\\");
}

TEST_F(BridgeTest, NetworkDatabaseAnchorsAtTheApplicationFolder) {
    ASSERT_TRUE(host_.SetFile(kFmhostFileNetwork, L"fmnet:/server/Solution.fmp12"));
    // The emulated host's Get(FileMakerPath) is the folder of its program: this test program.
    const std::u16string folder = slib::test::BesideProgram(u"");
    EXPECT_EQ(Narrow(Anchor().text()), Narrow(folder));
    EXPECT_EQ(Narrow(resolve(u"sub/a.txt")), Narrow(folder + u"sub\\a.txt"));
}

TEST_F(BridgeTest, NoDatabaseAnchorsAtTheCurrentDirectory) {
    ASSERT_TRUE(host_.SetFile(kFmhostFileNone));
    const std::u16string before = CurrentDirectory();
    wchar_t temp[MAX_PATH];
    ASSERT_GT(GetTempPathW(MAX_PATH, temp), 0u);
    ASSERT_TRUE(SetCurrentDirectoryW(temp));
    const std::u16string current = CurrentDirectory();
    const slib::Path found = Anchor();
    const std::u16string resolved = resolve(u"a.txt");
    SetCurrentDirectoryW(Wide(before));

    ASSERT_NE(Narrow(current), Narrow(before)) << "the test needs a directory change to show";
    EXPECT_EQ(Narrow(found.text()), Narrow(current));
    const std::u16string separator = current.back() == u'\\' ? u"" : u"\\";
    EXPECT_EQ(Narrow(resolved), Narrow(current + separator + u"a.txt"));
}

TEST_F(BridgeTest, OtherHostErrorsAreRaisedWithTheirOwnNumber) {
    for (const int16_t error : {102, 1, 10, -43}) {
        SCOPED_TRACE(error);
        host_.FailFilePath(error);
        EXPECT_EQ(FailureOf([&] { Anchor(); }),
                  std::to_string(error) + " Unexpected FileMaker Error");
    }
    // 100 is no failure: it only says that there is no database file.
    host_.FailFilePath(bridge::kNoDatabaseFile);
    EXPECT_EQ(Narrow(Anchor().text()), Narrow(CurrentDirectory()));
}

TEST(AnchorText, DropsTheDatabaseNameOrMarksThatThereIsNoFolder) {
    const struct {
        std::u16string filePath;
        std::u16string anchorText;
    } cases[] = {
        {u"file:/C:/Data/Solution.fmp12", u"file:/C:/Data/"},
        {u"file:/C:/Data/", u"file:/C:/Data/"},
        {u"file://server/share/a/b.fmp12", u"file://server/share/a/"},
        {u"Solution.fmp12", slib::Path::kDefaultAnchor},
        {u"", slib::Path::kDefaultAnchor},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Narrow(bridge::AnchorTextOfFilePath(c.filePath)), Narrow(c.anchorText))
            << Narrow(c.filePath);
    }
}

}  // namespace
}  // namespace bridge_test
