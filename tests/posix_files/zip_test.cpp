// VFile_Compress and VFile_DeCompress on Linux, on real trees: modes and times that round-trip,
// links never followed nor created, nothing written through a link below the target, and
// archives that Info-ZIP reads as we do, both ways.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "archive/memory_io.h"
#include "archive/zip_operations.h"
#include "archive/zip_writer.h"
#include "foundation/temporary_names.h"
#include "posix_scratch.h"

namespace posix_test {
namespace {

using archive::CompressItem;
using archive::DecompressArchive;

// Runs a shell command; its exit status.
int Shell(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str());
}

std::string Quoted(const std::string& path) {
    return "'" + path + "'";
}

class ZipTest : public PosixScratchTest {
  protected:
    void compress(const std::string& source, const std::string& target) {
        CompressItem(at(source), at(target));
    }
    void decompress(const std::string& archivePath, const std::string& target) {
        DecompressArchive(at(archivePath), at(target));
    }
    std::map<std::string, mode_t> modes(const std::string& relative) const {
        std::map<std::string, mode_t> result;
        for (const auto& [name, what] : snapshot(relative)) {
            result[name.substr(relative.size() + 1)] = modeOf(name);
        }
        return result;
    }
    std::map<std::string, std::string> tree(const std::string& relative) const {
        std::map<std::string, std::string> result;
        for (const auto& [name, what] : snapshot(relative)) {
            result[name.substr(relative.size() + 1)] = what;
        }
        return result;
    }
    timespec modifiedOf(const std::string& relative) const {
        struct stat status = {};
        EXPECT_EQ(lstat(path(relative).c_str(), &status), 0) << relative;
        return status.st_mtim;
    }
    // An archive holding the one entry `name` with `mode`, written by our own writer.
    void writeArchiveWithMode(const std::string& relative, const std::u16string& name,
                              uint16_t mode) {
        archive::MemoryWriter out;
        {
            archive::ZipWriter zip(out, 1);
            archive::EntryTime time;
            time.unixMode = mode;
            const std::string script = "#!/bin/sh\n";
            archive::MemoryStream content(script);
            zip.addFile(name, time, content, 10);
            zip.finish();
        }
        std::ofstream file(path(relative), std::ios::binary);
        file.write(reinterpret_cast<const char*>(out.bytes.data()),
                   static_cast<std::streamsize>(out.bytes.size()));
    }

    // A tree with the kinds of item a folder holds: modes, a read-only file, an empty folder,
    // names beyond ASCII, a deep path.
    void makeSampleTree(const std::string& relative) {
        makeFolder(relative);
        writeFile(relative + "/plain.txt", std::string(5000, 'p'), 0644);
        writeFile(relative + "/script.sh", "#!/bin/sh\necho hi\n", 0755);
        writeFile(relative + "/private", "secret", 0600);
        writeFile(relative + "/frozen.txt", "read only", 0444);
        writeFile(relative + "/Ünïcödé ✓.txt", "names", 0640);
        writeFile(relative + "/already.gz", std::string(300, 'z'), 0644);
        makeFolder(relative + "/empty", 0750);
        makeFolder(relative + "/deep");
        makeFolder(relative + "/deep/er");
        writeFile(relative + "/deep/er/file", "below", 0664);
    }
};

TEST_F(ZipTest, ModesTimesAndContentsRoundTrip) {
    makeSampleTree("src");
    compress("src", "out.zip");
    decompress("out.zip", "back");
    EXPECT_EQ(tree("back"), tree("src"));
    std::map<std::string, mode_t> expected = modes("src");
    // Folders are made with the default mode; only files take theirs from the archive.
    const mode_t mask = umask(022);
    umask(mask);
    for (const char* folder : {"empty", "deep", "deep/er"}) {
        expected[folder] = 0777 & ~mask;
    }
    EXPECT_EQ(modes("back"), expected);
    for (const char* file : {"plain.txt", "deep/er/file", "frozen.txt"}) {
        const timespec was = modifiedOf(std::string("src/") + file);
        const timespec now = modifiedOf(std::string("back/") + file);
        EXPECT_EQ(now.tv_sec, was.tv_sec) << file;
        EXPECT_EQ(now.tv_nsec, was.tv_nsec / 100 * 100) << file;  // 100 ns steps
    }
}

TEST_F(ZipTest, TheSameTreePacksToTheSameBytesInWindowsOrder) {
    if (Shell("command -v unzip") != 0) {
        GTEST_SKIP() << "no unzip on this machine to list the entries";
    }
    makeFolder("src");
    for (const char* name : {"b", "A", "a2", "C.txt", "_x"}) {
        writeFile(std::string("src/") + name, name);
    }
    compress("src", "one.zip");
    compress("src", "two.zip");
    EXPECT_EQ(readFile("one.zip"), readFile("two.zip"));
    // NTFS lists names compared in upper case: "_" (0x5F) after the letters.
    FILE* listing = popen(("unzip -Z1 " + Quoted(path("one.zip"))).c_str(), "r");
    ASSERT_NE(listing, nullptr);
    std::string names;
    char line[256];
    while (fgets(line, sizeof line, listing) != nullptr) {
        names += line;
    }
    pclose(listing);
    EXPECT_EQ(names, "A\na2\nb\nC.txt\n_x\n");
}

TEST_F(ZipTest, SetIdAndStickyBitsAreNeverRestored) {
    const struct {
        uint16_t stored;
        mode_t unpacked;
    } cases[] = {
        {0104755, 0755}, {0102750, 0750}, {0101777, 0777}, {0100640, 0640}, {0100000, 0000},
    };
    for (const auto& c : cases) {
        writeArchiveWithMode("crafted.zip", u"tool", c.stored);
        decompress("crafted.zip", "out");
        EXPECT_EQ(modeOf("out/tool"), c.unpacked) << std::oct << c.stored;
        chmod(path("out/tool").c_str(), 0600);
        unlink(path("out/tool").c_str());
    }
}

TEST_F(ZipTest, LinksInAPackedFolderAreLeftOut) {
    makeFolder("outside");
    writeFile("outside/secret", "not to be packed");
    makeFolder("src");
    writeFile("src/kept", "kept");
    makeLink("src/file-link", path("outside/secret"));
    makeLink("src/folder-link", path("outside"));
    makeLink("src/loop", path("src"));
    ASSERT_EQ(mkfifo(path("src/pipe").c_str(), 0600), 0);
    compress("src", "out.zip");
    decompress("out.zip", "back");
    EXPECT_EQ(tree("back"), (std::map<std::string, std::string>{{"kept", "kept"}}));
}

TEST_F(ZipTest, ANamedLinkIsFollowedForTheSourceAndTheTarget) {
    makeSampleTree("src");
    makeLink("source-link", path("src"));
    writeFile("file", "the file");
    makeLink("file-link", path("file"));
    makeFolder("real-target");
    makeLink("target-link", path("real-target"));
    compress("source-link", "folder.zip");
    compress("file-link", "file.zip");
    decompress("folder.zip", "target-link");
    decompress("file.zip", "target-link");
    std::map<std::string, std::string> expected = tree("src");
    expected["file-link"] = "the file";
    EXPECT_EQ(tree("real-target"), expected);
}

TEST_F(ZipTest, NothingIsUnpackedThroughALinkBelowTheTarget) {
    makeFolder("src");
    makeFolder("src/sub");
    writeFile("src/sub/evil.txt", "planted?");
    writeFile("src/victim", "new contents");
    compress("src", "attack.zip");

    makeFolder("outside");
    writeFile("outside/victim", "untouched");
    const auto outsideBefore = snapshot("outside");
    const struct {
        const char* what;
        const char* link;
        const char* leadsTo;
        std::string failure;
    } cases[] = {
        {"folder link", "sub", "outside",
         "-50 Unable to get zip item \"sub\": its folder \"sub\" is a symbolic link, and "
         "nothing is unpacked through a link"},
        {"file link", "victim", "outside/victim",
         "-50 Unable to get zip item \"victim\": a symbolic link is in its place, and nothing is "
         "unpacked through a link"},
    };
    for (const auto& c : cases) {
        makeFolder("target");
        makeLink(std::string("target/") + c.link, path(c.leadsTo));
        EXPECT_EQ(FailureOf([&] { decompress("attack.zip", "target"); }), c.failure) << c.what;
        EXPECT_EQ(snapshot("outside"), outsideBefore) << c.what;
        EXPECT_EQ(snapshot("target").count(std::string("target/") + c.link), 1u) << c.what;
        TearDown();
        SetUp();
        makeFolder("outside");
        writeFile("outside/victim", "untouched");
        makeFolder("src");
        makeFolder("src/sub");
        writeFile("src/sub/evil.txt", "planted?");
        writeFile("src/victim", "new contents");
        compress("src", "attack.zip");
    }
}

TEST_F(ZipTest, FailuresComeInTheirOrderAndLeaveNothing) {
    makeFolder("empty");
    makeSampleTree("src");
    compress("src", "existing.zip");
    writeFile("not-a-zip", "plain text");
    makeLink("link.zip", path("not-a-zip"));
    const auto before = snapshot();
    EXPECT_EQ(FailureOf([&] { compress("empty", "new.zip"); }), "-43 Nothing to add.");
    EXPECT_EQ(FailureOf([&] { compress("missing", "new.zip"); }), "-43 Unable to add file to zip.");
    EXPECT_EQ(FailureOf([&] { compress("src", "existing.zip"); }),
              "-48 File of the same name already exists.");
    EXPECT_EQ(FailureOf([&] { compress("src", "absent/new.zip"); }), "-38 Unable to open zip.");
    EXPECT_EQ(FailureOf([&] { compress("src", "link.zip"); }), "-38 Unable to open zip.");
    EXPECT_EQ(FailureOf([&] { decompress("missing.zip", "out"); }), "-43 Invalid archive path.");
    EXPECT_EQ(FailureOf([&] { decompress("not-a-zip", "out"); }), "-43 Invalid archive path.");
    EXPECT_EQ(snapshot(), before);
    // A file that is no archive is replaced.
    compress("src", "not-a-zip");
    decompress("not-a-zip", "back");
    EXPECT_EQ(tree("back"), tree("src"));
}

TEST_F(ZipTest, InfoZipUnpacksOursIdentically) {
    if (Shell("command -v unzip") != 0) {
        GTEST_SKIP() << "no unzip on this machine";
    }
    makeSampleTree("src");
    compress("src", "ours.zip");
    ASSERT_EQ(Shell("unzip -q " + Quoted(path("ours.zip")) + " -d " + Quoted(path("theirs"))), 0);
    EXPECT_EQ(tree("theirs"), tree("src"));
    std::map<std::string, mode_t> theirs = modes("theirs");
    std::map<std::string, mode_t> expected = modes("src");
    EXPECT_EQ(theirs, expected);
    EXPECT_EQ(modifiedOf("theirs/plain.txt").tv_sec, modifiedOf("src/plain.txt").tv_sec);
}

TEST_F(ZipTest, WeUnpackInfoZipsArchivesIdenticallyButNeverMakeLinks) {
    if (Shell("command -v zip") != 0) {
        GTEST_SKIP() << "no zip on this machine";
    }
    makeSampleTree("src");
    ASSERT_EQ(Shell("cd " + Quoted(path("src")) + " && zip -q -r ../theirs.zip ."), 0);
    decompress("theirs.zip", "back");
    EXPECT_EQ(tree("back"), tree("src"));
    std::map<std::string, mode_t> expected = modes("src");
    const mode_t mask = umask(022);
    umask(mask);
    for (const char* folder : {"empty", "deep", "deep/er"}) {
        expected[folder] = 0777 & ~mask;
    }
    EXPECT_EQ(modes("back"), expected);

    // zip -y stores a link as a link entry: it comes back as a plain file holding its text.
    makeFolder("linked");
    makeLink("linked/to-passwd", "/etc/passwd");
    ASSERT_EQ(Shell("cd " + Quoted(path("linked")) + " && zip -q -y ../links.zip to-passwd"), 0);
    decompress("links.zip", "unlinked");
    EXPECT_EQ(tree("unlinked"), (std::map<std::string, std::string>{{"to-passwd", "/etc/passwd"}}));
}

// A child unpacks and is killed at some point of its work: each file is whole or absent, and
// nothing of ours is left, since every file is unnamed until whole.
TEST_F(ZipTest, AKilledUnpackLeavesEachFileWholeOrAbsent) {
    makeFolder("src");
    std::string contents;
    for (uint64_t i = 0; contents.size() < (6u << 20); ++i) {
        contents += std::to_string(i * 7919 % 100003) + (i % 13 == 0 ? "\n" : " ");
    }
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h"}) {
        writeFile(std::string("src/") + name, contents + name);
    }
    compress("src", "big.zip");
    for (const int delayMs : {20, 80, 150, 250, 400}) {
        const std::string target = "out-" + std::to_string(delayMs);
        KillPartWay(delayMs, [&] { decompress("big.zip", target); });
        for (const auto& [name, content] : tree(target)) {
            EXPECT_FALSE(slib::IsTemporaryName(Text(name))) << name;
            EXPECT_TRUE(content == contents + name) << target << "/" << name;
        }
    }
}

}  // namespace
}  // namespace posix_test
