// VFile_Get's item selectors and VFile_Set through the emulated host, on real files: every
// selector on a file, a folder and a missing item, path forms read back as input, refusals.

#include <algorithm>
#include <vector>

#include "attributes/attribute_answers.h"
#include "items_e2e/items_fixture.h"

namespace items_test {
namespace {

// `text` with each number (a fraction included) as "9", so that values that vary from run to
// run compare by their shape; both systems' test libraries lack a common regular expression.
std::string Shape(const std::string& text) {
    std::string shape;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        const bool continues = !shape.empty() && shape.back() == '9' &&
                               (digit || (text[i] == '.' && i + 1 < text.size() &&
                                          text[i + 1] >= '0' && text[i + 1] <= '9'));
        if (!continues) {
            shape += digit ? '9' : text[i];
        }
    }
    return shape;
}

std::string RightsWords(uint32_t rights) {
    const char* const kText[] = {"",     "execute",      "write",      "write|execute",
                                 "read", "read|execute", "read|write", "read|write|execute"};
    return kText[rights & 7];
}

// `relative` with the system's separator, as a calculation names it.
std::u16string Native(std::u16string relative) {
    std::replace(relative.begin(), relative.end(), u'\\', slib::test::kSeparator);
    return relative;
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
    // 5 GB without the disk space: sizes stay 64-bit on the way to the host.
    makeSparseFile(u"folder\\big.bin", 5000000000);
    ASSERT_EQ(evaluate(uR"(VFile_Set( "modified" ; "a.txt" ;
                           Timestamp ( Date ( 7 ; 1 ; 2021 ) ; Time ( 12 ; 0 ; 0 ) ) ))"),
              "");
    const std::string owner = CurrentAccount() + " | 0 | 0";
    const std::string group = GroupOf(manager_, path(u"a.txt")) + " | 0 | 0";
    const auto rights = [&](const char16_t* item, Whose whose) {
        return RightsWords(RightsOf(manager_, path(item), whose)) + " | 0 | 0";
    };
    const std::string timestamp = "~9/9/9 9:9:9 | 9 | 9";
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
        {"available-space", "~9 | 9 | 9", "~9 | 9 | 9", "-43 | -43 | Cannot get free disk space"},
        {"owner", owner, owner, noSecurity},
        {"GROUP", group, group, noSecurity},
        {"owner-rights", rights(u"a.txt", Whose::kOwner), rights(u"folder", Whose::kOwner),
         noSecurity},
        {"group-rights", rights(u"a.txt", Whose::kGroup), rights(u"folder", Whose::kGroup),
         noSecurity},
        {"everyone-rights", rights(u"a.txt", Whose::kEveryone), rights(u"folder", Whose::kEveryone),
         noSecurity},
        {"kind", "file | 0 | 0", "folder | 0 | 0", "-43 | -43 | Item does not exist"},
        {"unix_relative", "a.txt | 0 | 0", "folder | 0 | 0", "missing | 0 | 0"},
    };
    for (const auto& c : cases) {
        const std::pair<std::u16string, std::string> items[] = {
            {u"a.txt", c.file}, {u"folder", c.folder}, {u"missing", c.missing}};
        for (const auto& [item, expected] : items) {
            if (expected[0] == '~') {
                const std::string got = get(c.selector, item);
                EXPECT_EQ(Shape(got), expected.substr(1)) << c.selector << ": " << got;
                EXPECT_EQ(got.substr(got.size() - 8), " | 0 | 0") << c.selector;
            } else {
                EXPECT_EQ(get(c.selector, item), expected) << c.selector;
            }
        }
    }
}

TEST_F(Attributes, EveryPathFormGivesTheItemBackAsInput) {
    makeFolder(u"sub dir");
    writeFile(u"sub dir\\Grüße ñ.txt", "x");
    const std::vector<std::pair<const char*, std::string>> forms =
        PathForms(path(u"sub dir\\Grüße ñ.txt"));
    // Non-ASCII names, and paths past 300 characters.
    const std::u16string deep = u"d" + std::u16string(125, u'e') + u"\\" +
                                std::u16string(125, u'f') + u"\\Ünïcødé € " +
                                std::u16string(20, u'g');
    makeFolder(deep.substr(0, 127));
    makeFolder(deep.substr(0, 253));
    makeFolder(deep);
    writeFile(deep + u"\\Grüße.txt", "y");
    ASSERT_GT(path(deep + u"\\Grüße.txt").size(), 300u);
    const std::pair<std::u16string, const char*> items[] = {
        {u"sub dir/Grüße ñ.txt", "file | 0 | 0"},
        {u"sub dir", "folder | 0 | 0"},
        {Native(deep + u"\\Grüße.txt"), "file | 0 | 0"},
        {Native(deep), "folder | 0 | 0"}};
    for (const auto& [form, expected] : forms) {
        EXPECT_EQ(get(form, items[0].first), expected + " | 0 | 0") << form;
        for (const auto& [item, kind] : items) {
            const std::string text =
                evaluate(u"VFile_Get( \"" + Utf16(form) + u"\" ; " + Quoted(item) + u" )");
            EXPECT_EQ(get("kind", Utf16(text)), kind) << form << ": " << text;
        }
    }
    std::string folder = Narrow(path(u"sub dir"));
    std::replace(folder.begin(), folder.end(), '\\', '/');
    EXPECT_EQ(get("FileMaker", u"sub dir"), FileMakerFolderForm(folder) + " | 0 | 0");
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
    // A staged copy converts pictures only (none on Linux yet): a text file is refused and nothing
    // is copied.
    EXPECT_EQ(evaluate(uR"(VFile_Set( "rotate" ; "anything" ))"), "");
    EXPECT_EQ(call(uR"(VFile_Copy( "a.txt" ; "b.txt" ))"), StagedTextCopyRefusal());
    EXPECT_FALSE(exists(u"b.txt"));
}

}  // namespace
}  // namespace items_test
