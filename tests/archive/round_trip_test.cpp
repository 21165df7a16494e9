// Archives written by ZipWriter and read back by ZipReader, in memory: content, names, methods
// and the records every other tool relies on.
#include <gtest/gtest.h>
#include <libdeflate.h>

#include <algorithm>

#include "archive/byte_order.h"
#include "archive/deflate_pipeline.h"
#include "archive/memory_io.h"
#include "archive/zip_format.h"
#include "archive/zip_reader.h"
#include "archive/zip_writer.h"
#include "archive_test_support.h"
#include "foundation/utf_conversion.h"

namespace archive_test {
namespace {

using archive::LoadLe16;
using archive::LoadLe32;

constexpr size_t kBlock = archive::DeflatePipeline::kBlockSize;
constexpr size_t kPart = archive::DeflatePipeline::kPartSize;

std::u16string Latin1(std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

std::vector<archive::ArchiveEntry> Entries(const std::vector<uint8_t>& bytes) {
    archive::MemorySource source(bytes);
    archive::ZipReader reader(source, &Latin1);
    std::vector<archive::ArchiveEntry> entries;
    for (uint64_t i = 0, n = reader.entryCount(); i < n; ++i) {
        entries.push_back(reader.readEntry());
    }
    return entries;
}

TEST(RoundTrip, EveryKindOfContentComesBackAsItWent) {
    const std::vector<Item> items = {
        {u"empty folder", "", true},
        {u"sub", "", true},
        {u"empty.txt", ""},
        {u"tiny.txt", "x"},
        {u"sub/exact block.txt", Text(kBlock, 1)},
        {u"sub/block and one.txt", Text(kBlock + 1, 2)},
        {u"several blocks.txt", Text(3 * kBlock + 12345, 3)},
        // Told a smaller size than it has (a file that grew since it was listed), or no size.
        {u"grew.txt", Text(3 * kBlock + 5, 6), false, kBlock},
        {u"unknown size.txt", Text(2 * kBlock + 7, 8), false, 0},
        {u"noise.bin", Noise(kBlock + 777, 4)},
        {u"kept.GZ", Noise(5000, 5)},
        {u"gr\u00FC\u00DFe \u65E5\u672C.txt", "unicode"},
    };
    const std::vector<uint8_t> bytes = Build(items);
    SaveSeed("round-trip", bytes);
    const Outcome outcome = Extract(bytes);
    ASSERT_EQ(outcome.failure, "");
    std::map<std::string, std::string> expected;
    for (const Item& item : items) {
        expected[slib::Utf16ToUtf8(item.name)] = item.folder ? "<dir>" : item.content;
    }
    EXPECT_EQ(outcome.tree, expected);

    const std::vector<archive::ArchiveEntry> entries = Entries(bytes);
    ASSERT_EQ(entries.size(), items.size());
    for (size_t i = 0; i < items.size(); ++i) {
        const std::string name = slib::Utf16ToUtf8(items[i].name);
        const bool stored = items[i].folder || name == "kept.GZ";
        EXPECT_EQ(entries[i].method, stored ? archive::kMethodStored : archive::kMethodDeflated)
            << name;
        EXPECT_EQ(entries[i].folder, items[i].folder) << name;
        const bool ascii = std::all_of(name.begin(), name.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        EXPECT_EQ((entries[i].flags & archive::kFlagUtf8Name) != 0, !ascii) << name;
    }
    EXPECT_EQ(slib::Utf16ToUtf8(entries[0].name), "empty folder/");
}

TEST(RoundTrip, ALargeFileInPartsLosesUnderATenthOfAPercentAgainstOneStream) {
    const std::string text = Text(2 * kPart + 999, 7);
    // Without a size the file goes in parts, as files too large to deflate whole do.
    const std::vector<uint8_t> bytes = Build({{u"t.txt", text, false, 0}});
    libdeflate_compressor* compressor =
        libdeflate_alloc_compressor(archive::ZipWriter::kDeflateLevel);
    std::vector<uint8_t> whole(libdeflate_deflate_compress_bound(compressor, text.size()));
    const double oneStream = static_cast<double>(libdeflate_deflate_compress(
        compressor, text.data(), text.size(), whole.data(), whole.size()));
    libdeflate_free_compressor(compressor);
    ASSERT_GT(oneStream, 0);
    const std::vector<archive::ArchiveEntry> entries = Entries(bytes);
    const double ours = static_cast<double>(entries[0].compressed);
    EXPECT_LT(ours, oneStream * 1.001) << ours / oneStream;
    EXPECT_EQ(Extract(bytes).tree.at("t.txt"), text);
}

TEST(RoundTrip, MoreThan65534EntriesGetTheZip64EndRecords) {
    std::vector<Item> items;
    for (int i = 0; i < 65536; ++i) {
        items.push_back({u"f" + slib::Utf8ToUtf16(std::to_string(i)), std::to_string(i)});
    }
    const std::vector<uint8_t> bytes = Build(items);
    const uint8_t* end = bytes.data() + bytes.size() - archive::kEndRecordSize;
    EXPECT_EQ(LoadLe16(end + 10), 0xFFFF);
    EXPECT_EQ(LoadLe32(end - archive::kZip64LocatorSize), archive::kZip64LocatorSignature);
    const Outcome outcome = Extract(bytes);
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.tree.size(), items.size());
    EXPECT_EQ(outcome.tree.at("f65535"), "65535");
}

TEST(RoundTrip, StreamedEntriesCommentsAndTrailingBytesAreRead) {
    std::vector<uint8_t> bytes = Build({{u"a.txt", Text(3000, 1)}, {u"b.txt", "bee"}});
    // As a streaming writer leaves them: bit 3 set, CRC and sizes only in the central directory.
    const size_t directory = LoadLe32(bytes.data() + bytes.size() - 6);
    for (size_t at = 0; at < directory;) {
        const size_t nameLength = LoadLe16(&bytes[at + 26]);
        const size_t extraLength = LoadLe16(&bytes[at + 28]);
        const size_t compressed = LoadLe32(&bytes[at + 18]);
        bytes[at + 6] |= archive::kFlagDataDescriptor;
        std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(at + 14),
                  bytes.begin() + static_cast<std::ptrdiff_t>(at + 26), 0);
        at += archive::kLocalHeaderSize + nameLength + extraLength + compressed;
    }
    const std::string comment = "a comment that holds PK\x05\x06 in its text";
    bytes[bytes.size() - 2] = static_cast<uint8_t>(comment.size());
    bytes.insert(bytes.end(), comment.begin(), comment.end());
    const std::string junk(70000, 'j');  // more than a comment could be
    bytes.insert(bytes.end(), junk.begin(), junk.end());
    const Outcome outcome = Extract(bytes);
    EXPECT_EQ(outcome.failure, "");
    EXPECT_EQ(outcome.tree,
              (std::map<std::string, std::string>{{"a.txt", Text(3000, 1)}, {"b.txt", "bee"}}));
}

TEST(RoundTrip, TimesAndAttributesKeepWhatEachFieldCanHold) {
    struct Row {
        const char* what;
        archive::EntryTime time;
        bool unixField;  // written and read back
    };
    auto make = [](uint64_t fileTime, int64_t unixTime, uint8_t attributes) {
        archive::EntryTime time;
        time.hasFileTime = true;
        time.fileTime = fileTime;
        time.hasUnixTime = archive::FitsUnixTimeField(unixTime);
        time.unixTime = unixTime;
        time.attributes = attributes;
        return time;
    };
    const Row rows[] = {
        {"2110, hidden", make(160624512001234567, 4417977600, archive::kDosAttributeHidden), false},
        {"1969, read-only", make(116444735990000000, -1, archive::kDosAttributeReadOnly), false},
        {"2020, both", make(132223104000000000, 1577836800, 3), true},
    };
    archive::MemoryWriter out;
    {
        archive::ZipWriter writer(out, 1);
        for (const Row& row : rows) {
            const std::string text(row.what);
            archive::MemoryStream content(text);
            writer.addFile(Latin1(row.what), row.time, content, 0);
        }
        writer.finish();
    }
    const std::vector<archive::ArchiveEntry> entries = Entries(out.bytes);
    ASSERT_EQ(entries.size(), std::size(rows));
    for (size_t i = 0; i < entries.size(); ++i) {
        const archive::EntryTime& back = entries[i].time;
        EXPECT_TRUE(back.hasFileTime) << rows[i].what;
        EXPECT_EQ(back.fileTime, rows[i].time.fileTime) << rows[i].what;
        EXPECT_EQ(back.hasUnixTime, rows[i].unixField) << rows[i].what;
        EXPECT_EQ(back.attributes, rows[i].time.attributes) << rows[i].what;
    }
}

TEST(RoundTrip, DosTimesAreClampedToTheirRange) {
    constexpr uint64_t kDay = 864000000000;
    EXPECT_EQ(archive::ClampToDosRange(0), 119600064000000000u);                       // 1601
    EXPECT_EQ(archive::ClampToDosRange(119600064000000000 - 1), 119600064000000000u);  // 1979
    EXPECT_EQ(archive::ClampToDosRange(119600064000000000 + kDay), 119600064000000000 + kDay);
    EXPECT_EQ(archive::ClampToDosRange(160624512000000000), 159992927980000000u);  // 2110
    EXPECT_FALSE(archive::FitsUnixTimeField(-1));
    EXPECT_TRUE(archive::FitsUnixTimeField(0));
    EXPECT_TRUE(archive::FitsUnixTimeField(INT32_MAX));
    EXPECT_FALSE(archive::FitsUnixTimeField(int64_t{INT32_MAX} + 1));
}

}  // namespace
}  // namespace archive_test
