// VFile_Compress and VFile_DeCompress on disk through the emulated host: what lands where, every
// refusal with its code and message, and what a refusal leaves behind.
#include <algorithm>
#include <cmath>
#include <memory>

#include "archive/disk_files.h"
#include "archive/memory_io.h"
#include "archive/oem_names.h"
#include "archive/zip_format.h"
#include "archive/zip_reader.h"
#include "archive_test_support.h"
#include "foundation/utf_conversion.h"
#include "ignored_leaks.h"
#include "items_fixture.h"
#include "modified_time.h"

namespace items_test {
namespace {

using archive_test::Build;
using archive_test::Item;

// Name and method of every entry of an archive on disk, in order: "name:stored" / "name:deflated".
std::vector<std::string> Listing(const std::u16string& path) {
    const std::unique_ptr<archive::ByteSource> source = archive::OpenArchiveSource(path);
    if (!source) {
        return {"cannot open " + slib::Utf16ToUtf8(path)};
    }
    archive::ZipReader reader(*source, &archive::DecodeOemName);
    std::vector<std::string> entries;
    for (uint64_t i = 0, n = reader.entryCount(); i < n; ++i) {
        const archive::ArchiveEntry entry = reader.readEntry();
        entries.push_back(slib::Utf16ToUtf8(entry.name) +
                          (entry.method == archive::kMethodStored ? ":stored" : ":deflated"));
    }
    return entries;
}

class ZipFunctions : public ItemsTest {
  protected:
    void SetUp() override {
        ItemsTest::SetUp();
        makeFolder(u"src");
        makeFolder(u"src\\sub");
        makeFolder(u"src\\sub\\empty");
        writeFile(u"src\\a.txt", "alpha");
        writeFile(u"src\\sub\\gr\u00FC\u00DFe \u65E5\u672C.txt", archive_test::Text(300000, 1));
        writeFile(u"src\\sub\\noise.bin", archive_test::Noise(700000, 2));
        writeFile(u"src\\kept.GZ", "already compressed");
        makeFolder(u"only folders");
        makeFolder(u"only folders\\x");
        makeFolder(u"only folders\\x\\y");
        makeFolder(u"empty");
        writeFile(u"photo.JPG.zip", "not really a zip");
        writeFile(u"report.gzip", archive_test::Text(5000, 3));
    }
    void writeArchive(const std::u16string& relative, const std::vector<uint8_t>& bytes) {
        writeFile(relative, std::string(bytes.begin(), bytes.end()));
    }
};

TEST_F(ZipFunctions, CompressPacksFilesAndFolderContentsAndRefusesInOrder) {
    writeArchive(u"existing.zip", Build({{u"keep.txt", "keep"}}));
    writeFile(u"plain.txt", "not an archive");
    const std::string exists = *readFile(u"existing.zip");
    const struct {
        const char16_t* calculation;
        std::string outcome;
    } cases[] = {
        {uR"(VFile_Compress( "src" ))", Failed(-50, "Not enough parameters")},
        {uR"(VFile_Compress( 1 ; "x.zip" ))", Failed(-50, "Path parameter must be text")},
        {uR"(VFile_Compress( "src" ; 2 ))", Failed(-50, "Path parameter must be text")},
        {uR"(VFile_Compress( "src" ; "existing.zip" ))",
         Failed(-48, "File of the same name already exists.")},
        {uR"(VFile_Compress( "src" ; "no such folder/x.zip" ))",
         Failed(2400, "Unable to open zip.")},
        {uR"(VFile_Compress( "empty" ; "empty.zip" ))", Failed(-43, "Nothing to add.")},
        {uR"(VFile_Compress( "missing.txt" ; "missing.zip" ))",
         Failed(-43, "Unable to add file to zip.")},
        {uR"(VFile_Compress( "plain.txt" ; "plain.txt" ))",
         Failed(-43, "Unable to add file to zip.")},
        {uR"(VFile_Compress( "src" ; "src.zip" ))", Succeeded()},
        {uR"(VFile_Compress( "only folders" ; "folders.zip" ))", Succeeded()},
        {uR"(VFile_Compress( "only folders/" ; "folders again.zip" ))", Succeeded()},
        {uR"(VFile_Compress( "photo.JPG.zip" ; "photo.zip" ))", Succeeded()},
        {uR"(VFile_Compress( "report.gzip" ; "plain.txt.zip" ))", Succeeded()},
        // A target that is no archive is replaced.
        {uR"(VFile_Compress( "src/a.txt" ; "plain.txt" ))", Succeeded()},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), c.outcome) << Narrow(c.calculation);
    }
    EXPECT_EQ(readFile(u"existing.zip"), exists);
    for (const char16_t* absent : {u"empty.zip", u"missing.zip", u"no such folder"}) {
        EXPECT_FALSE(this->exists(absent)) << Narrow(absent);
    }
    EXPECT_EQ(Listing(path(u"src.zip")),
              (std::vector<std::string>{
                  "sub/:stored", "sub/empty/:stored", "a.txt:deflated", "kept.GZ:stored",
                  "sub/gr\u00FC\u00DFe \u65E5\u672C.txt:deflated", "sub/noise.bin:deflated"}));
    EXPECT_EQ(Listing(path(u"folders.zip")),
              (std::vector<std::string>{"x/:stored", "x/y/:stored"}));
    EXPECT_EQ(Listing(path(u"folders again.zip")), Listing(path(u"folders.zip")));
    EXPECT_EQ(Listing(path(u"photo.zip")), std::vector<std::string>{"photo.JPG.zip:stored"});
    EXPECT_EQ(Listing(path(u"plain.txt.zip")), std::vector<std::string>{"report.gzip:deflated"});
    EXPECT_EQ(Listing(path(u"plain.txt")), std::vector<std::string>{"a.txt:deflated"});
}

TEST_F(ZipFunctions, AnArchiveInsideItsOwnSourceIsNotAddedToItself) {
    writeFile(u"src\\inside.zip", "an older file in the way");
    EXPECT_EQ(call(uR"(VFile_Compress( "src" ; "src/inside.zip" ))"), Succeeded());
    const std::vector<std::string> entries = Listing(path(u"src\\inside.zip"));
    EXPECT_EQ(std::count(entries.begin(), entries.end(), "inside.zip:deflated"), 0);
    EXPECT_EQ(entries.size(), 6u);
}

TEST_F(ZipFunctions, DecompressRestoresTreesNamesAndTimes) {
    const double before = ModifiedSeconds(path(u"src\\sub\\noise.bin"));
    ASSERT_EQ(call(uR"(VFile_Compress( "src" ; "src.zip" ))"), Succeeded());
    makeFolder(u"out");
    makeFolder(u"out\\deeper");
    writeFile(u"out\\deeper\\a.txt", "an older a.txt, replaced");
    EXPECT_EQ(call(uR"(VFile_DeCompress( "src.zip" ; "out/deeper" ))"), Succeeded());
    EXPECT_EQ(snapshot(u"out\\deeper"), snapshot(u"src"));
    const double after = ModifiedSeconds(path(u"out\\deeper\\sub\\noise.bin"));
    EXPECT_LT(std::fabs(after - before), 1.0);  // whole seconds are kept
}

TEST_F(ZipFunctions, DecompressRefusesInOrderAndNeverLeavesTheTarget) {
    writeFile(u"not a zip.zip", std::string(500, 'x'));
    writeArchive(u"hostile.zip", Build({{u"C:\\x\\..\\..\\evil.txt", "1"},
                                        {u"/etc/x", "2"},
                                        {u"../outside.txt", "3"},
                                        {u"never.txt", "4"}}));
    std::vector<uint8_t> badCrc = Build({{u"good.txt", "good"}, {u"a.txt", "new content"}});
    // The last central header, "a.txt" (no extra field: the default time has no Unix seconds).
    const size_t second = badCrc.size() - archive::kEndRecordSize - archive::kCentralHeaderSize -
                          5;  // "a.txt" with its 9-byte timestamp field
    ASSERT_EQ(badCrc[second], 'P');
    badCrc[second + 16] ^= 1;
    writeArchive(u"bad crc.zip", badCrc);
    makeFolder(u"crc");
    writeFile(u"crc\\a.txt", "old content");
    std::vector<uint8_t> tooMany = Build({{u"a.txt", "a"}});
    tooMany[tooMany.size() - 12] = 200;
    writeArchive(u"count.zip", tooMany);
    const struct {
        const char16_t* calculation;
        std::string outcome;
    } cases[] = {
        {uR"(VFile_DeCompress( "hostile.zip" ))", Failed(-50, "Not enough parameters")},
        {uR"(VFile_DeCompress( 1 ; "out" ))", Failed(-50, "Path parameter must be text")},
        {uR"(VFile_DeCompress( "hostile.zip" ; 2 ))", Failed(-50, "Path parameter must be text")},
        {uR"(VFile_DeCompress( "missing.zip" ; "out" ))", Failed(-43, "Invalid archive path.")},
        {uR"(VFile_DeCompress( "not a zip.zip" ; "out" ))", Failed(-43, "Invalid archive path.")},
        {uR"(VFile_DeCompress( "count.zip" ; "out" ))",
         Failed(-50, "Could not read properties of archive")},
        {uR"(VFile_DeCompress( "hostile.zip" ; "jail/inside" ))",
         Failed(-50, "Unable to get zip item")},
        {uR"(VFile_DeCompress( "bad crc.zip" ; "crc" ))", Failed(-50, "Unable to get zip item")},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(call(c.calculation), c.outcome) << Narrow(c.calculation);
    }
    EXPECT_EQ(snapshot(u"jail"), (Tree{{u"inside", "<dir>"},
                                       {u"inside\\evil.txt", "1"},
                                       {u"inside\\etc", "<dir>"},
                                       {u"inside\\etc\\x", "2"}}));
    // The damaged entry leaves the older file as it was, and nothing half-written.
    EXPECT_EQ(snapshot(u"crc"), (Tree{{u"good.txt", "good"}, {u"a.txt", "old content"}}));
    EXPECT_FALSE(exists(u"out"));
}

// Every call to the host failing in turn, while packing and while unpacking on their threads:
// each call is answered, and the host goes on working.
TEST_F(ZipFunctions, EachFailingHostCallIsAnsweredAndTheHostGoesOn) {
    ASSERT_EQ(call(uR"(VFile_Compress( "src" ; "src.zip" ))"), Succeeded());
    int failed = 0;
    for (uint32_t n = 1; n <= 40; ++n) {
        for (const int32_t code : {1, 2}) {
            SCOPED_TRACE("host call " + std::to_string(n) + ", error " + std::to_string(code));
            const IgnoredLeaks failedDeletes;
            host_.FailCall(n, code, kFmhostFaultEachFunctionCall);
            const fmhost::driver::Evaluation packed =
                host_.Evaluate(uR"(VFile_Compress( "src" ; "again.zip" ))");
            const fmhost::driver::Evaluation unpacked =
                host_.Evaluate(uR"(VFile_DeCompress( "src.zip" ; "out" ))");
            host_.FailCall(0, 0, kFmhostFaultEachFunctionCall);
            failed += (packed.error != 0 || packed.text != "0") +
                      (unpacked.error != 0 || unpacked.text != "0");
            slib::test::RemoveTree(path(u"again.zip"));
            slib::test::RemoveTree(path(u"out"));
        }
    }
    EXPECT_GT(failed, 0) << "no injected failure reached a call";
    EXPECT_EQ(call(uR"(VFile_DeCompress( "src.zip" ; "out" ))"), Succeeded());
    EXPECT_EQ(snapshot(u"out"), snapshot(u"src"));
}

}  // namespace
}  // namespace items_test
