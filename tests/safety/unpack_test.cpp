// What unpacking meets in its target: links planted below it (a junction or a symbolic link,
// under Wine a Unix symbolic link), which nothing is written through, and names that reach one
// item by two spellings (an 8.3 short name), where the later entry wins whatever the threads do.
#include <windows.h>

#include "archive/zip_operations.h"
#include "archive_test_support.h"
#include "foundation/exception.h"
#include "safety_fixture.h"

namespace safety_test {
namespace {

using archive_test::Build;
using archive_test::Item;

class Unpack : public SafetyTest {
  protected:
    void SetUp() override {
        SafetyTest::SetUp();
        makeFolder(u"outside");
        writeFile(u"outside\\keep.txt", "outside file");
        makeFolder(u"out");
        if (!MakeFolderLink(path(u"out\\link"), path(u"outside"))) {
            GTEST_SKIP() << "no folder links can be made here";
        }
        outside_ = Listing(path(u"outside"));
    }

    void writeArchive(const std::u16string& relative, const std::vector<Item>& items) {
        const std::vector<uint8_t> bytes = Build(items);
        writeFile(relative, std::string(bytes.begin(), bytes.end()));
    }

    // How unpacking `archive` into `folder` fails, code and message as raised ("" when it does
    // not): what the host shows, less the host's own handling of quotes in it.
    std::string unpackFailure(const std::u16string& archive, const std::u16string& folder) {
        try {
            archive::DecompressArchive(slib::String(path(archive)), slib::String(path(folder)));
        } catch (const slib::Exception& failure) {
            return std::to_string(failure.error()->code()) + " " + failure.what();
        }
        return "";
    }

    std::string outside_;
};

TEST_F(Unpack, NoEntryIsWrittenThroughALinkBelowTheTarget) {
    // Each entry alone after a plain one: the plain one arrives, the one through the link fails
    // by name, and the folder the link leads to stays as it was.
    for (const std::u16string entry :
         {u"link/evil.txt", u"link/keep.txt", u"link/deeper/new.txt", u"link/made/"}) {
        SCOPED_TRACE(Narrow(entry));
        const bool folder = entry.back() == u'/';
        writeArchive(u"a.zip",
                     {{u"before.txt", "before"},
                      {folder ? entry.substr(0, entry.size() - 1) : entry, "evil", folder},
                      {u"after.txt", "after"}});
        const std::u16string name = folder ? entry.substr(0, entry.size() - 1) : entry;
        EXPECT_EQ(codeOf(uR"(VFile_DeCompress( "a.zip" ; "out" ))"), "-50");
        EXPECT_EQ(readFile(u"out\\before.txt"), "before");
        EXPECT_FALSE(exists(u"out\\after.txt"));
        EXPECT_EQ(Listing(path(u"outside")), outside_);
        EXPECT_EQ(unpackFailure(u"a.zip", u"out"),
                  "-50 Unable to get zip item \"" + Narrow(name) +
                      "\": its folder \"link\" is a link (a junction or symbolic link), and "
                      "nothing is unpacked through a link");
        EXPECT_EQ(Listing(path(u"outside")), outside_);
        DeleteFileW(Wide(path(u"out\\before.txt")));
    }
}

TEST_F(Unpack, TheTargetNamedInTheCallMayBeALink) {
    writeArchive(u"a.zip", {{u"sub/new.txt", "new"}, {u"keep.txt", "replaced by choice"}});
    EXPECT_EQ(call(uR"(VFile_DeCompress( "a.zip" ; "out/link" ))"), Succeeded());
    EXPECT_EQ(readFile(u"outside\\sub\\new.txt"), "new");
    EXPECT_EQ(readFile(u"outside\\keep.txt"), "replaced by choice");
}

TEST_F(Unpack, AFileLinkInAnEntrysPlaceIsNeverWrittenThrough) {
    writeFile(u"outside\\target.txt", "outside target");
    ASSERT_TRUE(MakeFileLink(path(u"out\\f.txt"), path(u"outside\\target.txt")));
    writeArchive(u"a.zip", {{u"before.txt", "before"}, {u"f.txt", "written through?"}});
    EXPECT_EQ(codeOf(uR"(VFile_DeCompress( "a.zip" ; "out" ))"), "-50");
    EXPECT_EQ(readFile(u"out\\before.txt"), "before");
    EXPECT_EQ(readFile(u"outside\\target.txt"), "outside target");
    EXPECT_EQ(readFile(u"out\\f.txt"), "outside target") << "the link is kept as it was";
    EXPECT_EQ(unpackFailure(u"a.zip", u"out"),
              "-50 Unable to get zip item \"f.txt\": a link (a junction or symbolic link) is in "
              "its place, and nothing is unpacked through a link");
    EXPECT_TRUE(RemoveFileLink(path(u"out\\f.txt")));
}

// Two entries for one file, next to each other: a long name, then its 8.3 short name. Unpacked
// on several threads, the later entry must win every time, as it would on one thread.
TEST_F(Unpack, AShortNameOfAnEarlierEntryIsThatEntrysFileWhateverTheTiming) {
    makeFolder(u"probe");
    writeFile(u"probe\\LongFileName.txt", "x");
    wchar_t shortPath[MAX_PATH * 4] = {};
    GetShortPathNameW(Wide(path(u"probe\\LongFileName.txt")), shortPath, MAX_PATH * 4);
    const std::u16string shortName = slib::test::FromWide(shortPath);
    const std::u16string alias = shortName.substr(shortName.rfind(u'\\') + 1);
    if (alias == u"LongFileName.txt") {
        GTEST_SKIP() << "this file system gives no 8.3 short names (GetShortPathNameW answered \""
                     << Narrow(shortName) << "\")";
    }
    // Pairs in folders of their own, so that each alias names its folder's first long name.
    std::vector<Item> items;
    for (int i = 0; i < 20; ++i) {
        const std::u16string folder = u"d" + slib::test::FromWide(std::to_wstring(i).c_str());
        items.push_back({folder + u"/LongFileName.txt", "first"});
        items.push_back({folder + u"/" + alias, "second"});
    }
    writeArchive(u"a.zip", items);
    for (int run = 0; run < 10; ++run) {
        slib::test::RemoveTree(path(u"same"));
        ASSERT_EQ(call(uR"(VFile_DeCompress( "a.zip" ; "same" ))"), Succeeded());
        for (int i = 0; i < 20; ++i) {
            const std::u16string folder =
                u"same\\d" + slib::test::FromWide(std::to_wstring(i).c_str());
            EXPECT_EQ(snapshot(folder).size(), 1u) << Narrow(folder) << ", run " << run;
            EXPECT_EQ(readFile(folder + u"\\" + alias), "second") << Narrow(folder);
        }
    }
}

}  // namespace
}  // namespace safety_test
