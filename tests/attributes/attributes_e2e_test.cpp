// VFile_Get's item selectors and VFile_Set through the emulated host, on real files: every
// selector on a file, a folder and a missing item, path forms read back as input, refusals.

#include <windows.h>

#include <gmock/gmock.h>

#include "foundation/windows/unique_handles.h"
#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

using ::testing::MatchesRegex;

std::string RightsWords(uint32_t rights) {
    const char* const kText[] = {"",     "execute",      "write",      "write|execute",
                                 "read", "read|execute", "read|write", "read|write|execute"};
    return kText[rights & 7];
}

std::string ShortForm(const std::u16string& path) {
    wchar_t text[MAX_PATH];
    const DWORD length = GetShortPathNameW(Wide(path), text, MAX_PATH);
    return length > 0 && length < MAX_PATH ? Narrow(slib::test::FromWide(text)) : Narrow(path);
}

class Attributes : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        writeFile(u"a.txt", "hello");
        makeFolder(u"folder");
        writeFile(u"folder\\inside.txt", "1");
    }
    // "result | lastError | lastErrorMessage", the globals set to 0 first.
    std::string get(const std::string& selector, const std::u16string& item) {
        evaluate(u"Let ( [ $$VFile_LastError = 0 ; $$VFile_LastErrorMessage = 0 ] ; 1 )");
        const std::string result =
            evaluate(u"VFile_Get( \"" + Utf16(selector) + u"\" ; " + Quoted(item) + u" )");
        const std::string code = evaluate(u"VFile_Get( \"lastError\" )");
        return result + " | " + code + " | " + evaluate(u"VFile_Get( \"lastErrorMessage\" )");
    }
    static std::u16string Utf16(const std::string& text) {
        return slib::String::FromUtf8(text)->units();
    }
};

TEST_F(Attributes, EverySelectorOnAFileAFolderAndAMissingItem) {
    {
        // 5 GB without the disk space: sizes stay 64-bit on the way to the host.
        const slib::UniqueFileHandle big(CreateFileW(Wide(path(u"folder\\big.bin")), GENERIC_WRITE,
                                                     0, nullptr, CREATE_NEW, 0, nullptr));
        const LARGE_INTEGER end{{705032704, 1}};  // 5000000000
        ASSERT_TRUE(SetFilePointerEx(big.get(), end, nullptr, FILE_BEGIN) &&
                    SetEndOfFile(big.get()));
    }
    ASSERT_EQ(evaluate(uR"(VFile_Set( "modified" ; "a.txt" ;
                           Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) ) ))"),
              "");
    wchar_t user[256];
    DWORD length = 256;
    ASSERT_TRUE(GetUserNameW(user, &length));
    const std::string owner = Narrow(slib::test::FromWide(user)) + " | 0 | 0";
    const std::string group = Narrow(manager_.getGroupName(at(u"a.txt"))->units()) + " | 0 | 0";
    const std::string timestamp = "~\\d+/\\d+/\\d+ \\d+:\\d+:\\d+\\.?\\d* \\| 0 \\| 0";
    const std::string noSecurity = "-43 | -43 | Cannot read file security info";
    const struct {
        const char* selector;
        std::string file, folder, missing;
    } cases[] = {
        {"created", timestamp, timestamp, "-43 | -43 | Cannot get item attributes"},
        {"Modified", "7/1/2021 12:00:00 | 0 | 0", timestamp,
         "-43 | -43 | Cannot get item attributes"},
        {"size", "5 | 0 | 0", "5000000001 | 0 | 0", "-43 | -43 | Cannot get item size"},
        {"data-size", "5 | 0 | 0", "5000000001 | 0 | 0", "-43 | -43 | Cannot get item size"},
        {"resource-size", "0 | 0 | 0", "0 | 0 | 0", "0 | 0 | 0"},
        {"available-space", "~\\d+ \\| 0 \\| 0", "~\\d+ \\| 0 \\| 0",
         "-43 | -43 | Cannot get free disk space"},
        {"owner", owner, owner, noSecurity},
        {"GROUP", group, group, noSecurity},
        {"owner-rights", "read|write | 0 | 0", "read|write | 0 | 0", noSecurity},
        {"group-rights", RightsWords(manager_.getGroupRights(at(u"a.txt"))) + " | 0 | 0",
         RightsWords(manager_.getGroupRights(at(u"folder"))) + " | 0 | 0", noSecurity},
        {"everyone-rights", RightsWords(manager_.getEveryoneRights(at(u"a.txt"))) + " | 0 | 0",
         RightsWords(manager_.getEveryoneRights(at(u"folder"))) + " | 0 | 0", noSecurity},
        {"kind", "file | 0 | 0", "folder | 0 | 0", "-43 | -43 | Item does not exist"},
        {"unix_relative", "a.txt | 0 | 0", "folder | 0 | 0", "missing | 0 | 0"},
    };
    for (const auto& c : cases) {
        const std::pair<std::u16string, std::string> items[] = {
            {u"a.txt", c.file}, {u"folder", c.folder}, {u"missing", c.missing}};
        for (const auto& [item, expected] : items) {
            if (expected[0] == '~') {
                EXPECT_THAT(get(c.selector, item), MatchesRegex(expected.substr(1))) << c.selector;
            } else {
                EXPECT_EQ(get(c.selector, item), expected) << c.selector;
            }
        }
    }
}

TEST_F(Attributes, EveryPathFormGivesTheItemBackAsInput) {
    makeFolder(u"sub dir");
    writeFile(u"sub dir\\Grüße ñ.txt", "x");
    std::string full = Narrow(path(u"sub dir\\Grüße ñ.txt"));
    std::string slashed = full;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    const std::pair<const char*, std::string> forms[] = {
        {"FSSpec", ShortForm(path(u"sub dir\\Grüße ñ.txt"))},
        {"native-relative", "sub dir\\Grüße ñ.txt"},
        {"native-full", full},
        {"win-relative", "sub dir\\Grüße ñ.txt"},
        {"win-full", full},
        {"unix_relative", "sub dir/Grüße ñ.txt"},
        {"unix-relative", "sub dir/Grüße ñ.txt"},
        {"unix-full", slashed.substr(2)},
        {"FileMaker", "file:/" + slashed},
        {"URL", "file://" + slashed},
    };
    // Non-ASCII names, and paths past 300 characters.
    const std::u16string deep =
        u"d" + std::u16string(125, u'e') + u"\\" + std::u16string(125, u'f') + u"\\Ünïcødé €";
    makeFolder(deep.substr(0, 127));
    makeFolder(deep.substr(0, 253));
    makeFolder(deep);
    writeFile(deep + u"\\Grüße.txt", "y");
    ASSERT_GT(path(deep + u"\\Grüße.txt").size(), 300u);
    const std::pair<std::u16string, const char*> items[] = {
        {u"sub dir/Grüße ñ.txt", "file | 0 | 0"},
        {u"sub dir", "folder | 0 | 0"},
        {deep + u"\\Grüße.txt", "file | 0 | 0"},
        {deep, "folder | 0 | 0"}};
    for (const auto& [form, expected] : forms) {
        EXPECT_EQ(get(form, items[0].first), expected + " | 0 | 0") << form;
        for (const auto& [item, kind] : items) {
            const std::string text =
                evaluate(u"VFile_Get( \"" + Utf16(form) + u"\" ; " + Quoted(item) + u" )");
            EXPECT_EQ(get("kind", Utf16(text)), kind) << form << ": " << text;
        }
    }
    EXPECT_EQ(get("FileMaker", u"sub dir"),
              "file:/" + slashed.substr(0, slashed.rfind('/') + 1) + " | 0 | 0");
}

TEST_F(Attributes, SetAnswersNothingOrReportsCodeAndMessage) {
    const char* noName = "Wrong attribute name";
    const char* notText = "Path parameter must be text";
    const char* tooFew = "Not enough parameters";
    const std::string done = " | No Error Message | No Error Message";
    const struct {
        const char16_t* calculation;
        std::string expected;
    } cases[] = {
        {uR"(VFile_Set( "size" ; "a.txt" ; 5 ))", Failed(-50, noName)},
        {uR"(VFile_Set( "FSSpec" ; "a.txt" ; "x" ))", Failed(-50, noName)},
        {uR"(VFile_Set( "kind" ; "a.txt" ; "x" ))", Failed(-50, noName)},
        {uR"(VFile_Get( "colour" ; "a.txt" ))", Failed(-50, noName)},
        {uR"(VFile_Get( "size" ))", Failed(-50, notText)},
        {uR"(VFile_Get( "colour" ; 12 ))", Failed(-50, notText)},
        {uR"(VFile_Set( "modified" ; 12 ; 1 ))", Failed(-50, notText)},
        {uR"(VFile_Get)", Failed(-50, tooFew)},
        {uR"(VFile_Set( "modified" ))", Failed(-50, tooFew)},
        {uR"(VFile_Set( "modified" ; "a.txt" ))", Failed(-50, tooFew)},
        {uR"(VFile_Get( "kind" ; "missing" ))", Failed(-43, "Item does not exist")},
        {uR"(VFile_Set( "modified" ; "folder" ; GetAsTimestamp ( "1/1/2020 0:00" ) ))",
         Failed(2400, "Cannot modify file modification date")},
        {uR"(VFile_Set( "created" ; "folder" ; GetAsTimestamp ( "1/1/2020 0:00" ) ))",
         Failed(2400, "Cannot modify file creation date")},
        {uR"(VFile_Set( "modified" ; "old.txt" ; GetAsTimestamp ( "1/1/1500 0:00" ) ))",
         Failed(-50, "The file cannot keep this date")},
        {uR"(VFile_Set( "owner" ; "a.txt" ; "no-such-account-vf" ))",
         Failed(2400, "No such account")},
        {uR"(VFile_Set( "owner" ; "a.txt" ; VFile_Get( "owner" ; "a.txt" ) ))", done},
        {uR"(VFile_Set( "group-rights" ; "missing" ; "read" ))",
         Failed(-43, "Cannot set new group rights")},
        {uR"(VFile_Set( "MODIFIED" ; "a.txt" ; GetAsTimestamp ( "3/4/2022 5:06:07.125" ) ))", done},
        {uR"(VFile_Set( "modified" ; "new.txt" ; GetAsTimestamp ( "12/24/1999 18:00" ) ))", done},
        {uR"(VFile_Set( "everyone-rights" ; "a.txt" ; "none" ))", done},
        {uR"(VFile_Set( "owner-rights" ; "a.txt" ; "Read, Write" ))", done},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), c.expected) << Narrow(c.calculation);
    }
    EXPECT_EQ(snapshot(), (Tree{{u"a.txt", "hello"},
                                {u"folder", "<dir>"},
                                {u"folder\\inside.txt", "1"},
                                {u"new.txt", ""}}));
    EXPECT_EQ(get("modified", u"a.txt"), "3/4/2022 5:06:07.125 | 0 | 0");
    EXPECT_EQ(get("modified", u"new.txt"), "12/24/1999 18:00:00 | 0 | 0");
    EXPECT_EQ(evaluate(uR"(VFile_Set( "size" ; "a.txt" ; 5 ) & VFile_Get( "LASTERROR" ))"),
              "-50-50");
}

TEST_F(Attributes, StagedPictureOptionsTurnTheNextCopyIntoAPictureCopy) {
    ASSERT_EQ(call(uR"(VFile_Copy( "a.txt" ; "plain.txt" ))"), Succeeded());
    // A staged copy converts pictures only: a text file is refused and nothing is copied.
    EXPECT_EQ(evaluate(uR"(VFile_Set( "rotate" ; "anything" ))"), "");
    EXPECT_EQ(call(uR"(VFile_Copy( "a.txt" ; "b.txt" ))"), Failed(-50, "This is not a picture."));
    EXPECT_FALSE(exists(u"b.txt"));
}

}  // namespace
}  // namespace items_test
