// slib::FileManager's contents members on Linux, on real files: positions, whole-or-absent new
// files, replaces that keep the original on every failure and its mode and owner on success,
// and no write through a symbolic link.
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/temporary_names.h"
#include "posix_scratch.h"

namespace posix_test {
namespace {

using slib::Data;
using slib::FilePosition;
using slib::kReadToEnd;

std::string Bytes(const std::shared_ptr<const Data>& data) {
    return std::string(data->bytes().begin(), data->bytes().end());
}

Data DataOf(const std::string& text) {
    return Data(std::vector<uint8_t>(text.begin(), text.end()));
}

class ContentsTest : public PosixScratchTest {};

TEST_F(ContentsTest, ReadsFromEachKindOfPosition) {
    writeFile("ten", "0123456789");
    const struct {
        FilePosition position;
        uint64_t length;
        std::string expected;
    } cases[] = {
        {{1, 0}, kReadToEnd, "9"},       // index -1: the last byte
        {{1, -2}, 2, "78"},              // counted back from the last byte
        {{0, 4}, 3, "456"},              // a range
        {{0, 4}, kReadToEnd, "456789"},  // to the end
        {{0, -5}, 2, "01"},              // before the start is the start
        {{0, 20}, kReadToEnd, ""},       // past the end reads nothing
        {{2, 3}, 2, "34"},               // from the fresh file's position: the start
        {{7, 3}, 2, "34"},               // any other mode acts as 0
        {{0, 0}, 0, ""},                 // nothing asked, nothing read
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Bytes(manager_.readFile(at("ten"), c.position, c.length)), c.expected)
            << c.position.fromEnd << "," << c.position.offset << " " << c.length;
    }
    EXPECT_EQ(Bytes(manager_.readWholeFile(at("ten"))), "0123456789");
}

TEST_F(ContentsTest, ReadsNothingWhereThereIsNoFileAndFollowsLinks) {
    writeFile("empty", "");
    writeFile("real", "through the link");
    makeFolder("folder");
    makeLink("link", path("real"));
    makeLink("dangling", path("gone"));
    const struct {
        const char* name;
        std::string expected;
    } cases[] = {
        {"missing", ""},
        {"empty", ""},
        {"folder", ""},
        {"dangling", ""},
        {"link", "through the link"},
        {"real/below", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FailureOf([&] {
                      EXPECT_EQ(Bytes(manager_.readWholeFile(at(c.name))), c.expected) << c.name;
                  }),
                  "")
            << c.name;
    }
}

TEST_F(ContentsTest, ReadRefusedIsAPermissionFailure) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root reads every file";
    }
    writeFile("secret", "x", 0000);
    EXPECT_EQ(FailureOf([&] { manager_.readWholeFile(at("secret")); }),
              "-54 Insufficent file permissions");
}

TEST_F(ContentsTest, OnlyRegularFilesAreReadNeverWaitedOnOrReadWithoutEnd) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    makeLink("zeros", "/dev/zero");
    for (const char* name : {"pipe", "zeros"}) {
        EXPECT_EQ(FailureOf([&] { manager_.readWholeFile(at(name)); }),
                  "-54 Insufficent file permissions")
            << name;
    }
}

TEST_F(ContentsTest, WritesInPlaceWithoutTruncating) {
    const struct {
        FilePosition position;
        std::string expected;
    } cases[] = {
        {{0, 0}, "AB3456"},
        {{1, 0}, "123456AB"},                      // the append position
        {{1, -2}, "1234AB"},                       // counted back from the end
        {{0, -3}, "AB3456"},                       // before the start is the start
        {{0, 8}, std::string("123456\0\0AB", 10)}  // a gap of zeros
    };
    for (const auto& c : cases) {
        writeFile("file", "123456", 0640);
        EXPECT_EQ(manager_.writeFile(at("file"), DataOf("AB"), c.position), 2u);
        EXPECT_EQ(readFile("file"), c.expected) << c.position.fromEnd << "," << c.position.offset;
        EXPECT_EQ(modeOf("file"), 0640u);
    }
}

TEST_F(ContentsTest, ANewFileIsMadeWholeWithTheDefaultMode) {
    const mode_t mask = umask(022);
    umask(mask);
    const struct {
        const char* name;
        FilePosition position;
        std::string expected;
    } cases[] = {
        {"start", {0, 0}, "AB"},
        {"append", {1, 0}, "AB"},
        {"gap", {0, 3}, std::string("\0\0\0AB", 5)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(manager_.writeFile(at(c.name), DataOf("AB"), c.position), 2u);
        EXPECT_EQ(readFile(c.name), c.expected) << c.name;
        EXPECT_EQ(modeOf(c.name), 0666u & ~mask) << c.name;
    }
    EXPECT_EQ(snapshot().size(), 3u);  // nothing of ours beside them
}

TEST_F(ContentsTest, WritesRefuseLinksFoldersAndMissingFolders) {
    writeFile("real", "kept");
    makeLink("link", path("real"));
    makeLink("dangling", path("made-through-link"));
    makeFolder("folder");
    const struct {
        const char* name;
        std::string failure;
    } cases[] = {
        {"link", "2400 Cannot open file for writing"},
        {"dangling", "2400 Cannot open file for writing"},
        {"folder", "2400 Cannot open file for writing"},
        {"absent/new", "-43 Cannot open file for writing"},
    };
    const auto before = snapshot();
    for (const auto& c : cases) {
        EXPECT_EQ(FailureOf([&] {
                      manager_.writeFile(at(c.name), DataOf("AB"), {0, 0});
                  }),
                  c.failure)
            << c.name;
    }
    EXPECT_EQ(snapshot(), before);
}

TEST_F(ContentsTest, ReplaceKeepsModeAndOwnerButNeverSetIdBits) {
    const struct {
        mode_t before;
        mode_t after;
    } cases[] = {{0640, 0640},  {0600, 0600},  {0755, 0755},
                 {04755, 0755}, {02750, 0750}, {01777, 0777}};
    for (const auto& c : cases) {
        writeFile("file", "old contents", 0600);
        ASSERT_EQ(chmod(path("file").c_str(), c.before), 0);
        if (geteuid() == 0) {
            ASSERT_EQ(chown(path("file").c_str(), 1234, 5678), 0);
        }
        EXPECT_EQ(manager_.replaceFile(at("file"), DataOf("new")), 3u);
        EXPECT_EQ(readFile("file"), "new");
        EXPECT_EQ(modeOf("file"), c.after) << std::oct << c.before;
        if (geteuid() == 0) {
            struct stat item = {};
            ASSERT_EQ(stat(path("file").c_str(), &item), 0);
            EXPECT_EQ(item.st_uid, 1234u);
            EXPECT_EQ(item.st_gid, 5678u);
        }
    }
    EXPECT_EQ(snapshot().size(), 1u);
}

TEST_F(ContentsTest, ReplaceRefusesLinksAndFoldersLeavingEverythingAsItWas) {
    writeFile("real", "kept");
    makeLink("link", path("real"));
    makeLink("dangling", path("made-through-link"));
    makeFolder("folder");
    writeFile("folder/inside", "kept too");
    const auto before = snapshot();
    for (const char* name : {"link", "dangling", "folder"}) {
        EXPECT_EQ(FailureOf([&] { manager_.replaceFile(at(name), DataOf("new")); }),
                  "2400 Cannot write to file")
            << name;
    }
    EXPECT_EQ(snapshot(), before);
    EXPECT_EQ(manager_.replaceFile(at("fresh"), DataOf("new")), 3u);
    EXPECT_EQ(readFile("fresh"), "new");
}

TEST_F(ContentsTest, AFullVolumeLosesNothingAndLeavesNothingOfOurs) {
    std::string why;
    if (!mountSmallVolume("small", 256, why)) {
        GTEST_SKIP() << why;
    }
    writeFile("small/report", "the original", 0640);
    const Data large = DataOf(std::string(1 << 20, 'x'));
    EXPECT_EQ(FailureOf([&] { manager_.replaceFile(at("small/report"), large); }),
              "2400 Cannot write to file");
    EXPECT_EQ(FailureOf([&] {
                  manager_.writeFile(at("small/new"), large, {0, 0});
              }),
              "2400 Cannot write to file");
    EXPECT_EQ(snapshot("small"),
              (std::map<std::string, std::string>{{"small/report", "the original"}}));
    EXPECT_EQ(modeOf("small/report"), 0640u);
}

// A child writes and is killed at some point of its work; what it leaves must be whole or gone.
TEST_F(ContentsTest, AKilledWriterLeavesTheFileWholeOrAbsent) {
    const std::string contents(48 << 20, 'n');
    writeFile("replaced", "the original");
    const Data data = DataOf(contents);
    for (const int delayMs : {0, 2, 10, 40, 150}) {
        KillPartWay(delayMs, [&] {
            slib::FileManager manager;
            manager.writeFile(at("new-" + std::to_string(delayMs)), data, {0, 0});
            manager.replaceFile(at("replaced"), data);
        });
        for (const auto& [name, content] : snapshot()) {
            // Only a replace killed between naming its whole file and the rename leaves a name.
            if (slib::IsTemporaryName(Text(name))) {
                EXPECT_TRUE(content == contents) << name;
            } else if (name == "replaced") {
                EXPECT_TRUE(content == "the original" || content == contents) << content.size();
            } else {
                EXPECT_TRUE(content == contents) << name;
            }
        }
    }
}

}  // namespace
}  // namespace posix_test
