// Damaged and hostile archives: each fails with its code and message at the right step, keeps
// the entries extracted before it, and leaves no half-written file behind.
#include <gtest/gtest.h>

#include <functional>

#include "archive/byte_order.h"
#include "archive/zip_format.h"
#include "archive/zip_reader.h"
#include "archive_test_support.h"

namespace archive_test {
namespace {

using archive::LoadLe16;
using archive::LoadLe32;
using archive::StoreLe16;
using archive::StoreLe32;
using Bytes = std::vector<uint8_t>;
using Tree = std::map<std::string, std::string>;

const char* const kNotOpened = "-43 Invalid archive path.";
const char* const kNoCount = "-50 Could not read properties of archive";
const char* const kUnreadable = "-50 Invalid or missing zip item";
const char* const kNotExtracted = "-50 Unable to get zip item";

const std::string kA = Text(2000, 11);
const std::string kB = Noise(3000, 12);
// Past the size up to which entries are inflated whole: the second entry then streams.
const std::string kLargeB = Text(archive::EntryDecoder::kWholeEntryLimit + 4096, 12);

Bytes TwoEntries(const std::string& second) {
    return Build({{u"a.txt", kA}, {u"b.bin", second}});
}

// Offsets of the records of a comment-less archive.
size_t EndRecord(const Bytes& bytes) {
    return bytes.size() - archive::kEndRecordSize;
}
size_t CentralHeader(const Bytes& bytes, int index) {
    size_t at = LoadLe32(&bytes[EndRecord(bytes) + 16]);
    for (int i = 0; i < index; ++i) {
        at += archive::kCentralHeaderSize + LoadLe16(&bytes[at + 28]) + LoadLe16(&bytes[at + 30]) +
              LoadLe16(&bytes[at + 32]);
    }
    return at;
}
size_t LocalHeader(const Bytes& bytes, int index) {
    return LoadLe32(&bytes[CentralHeader(bytes, index) + 42]);
}
// Flips 40 bytes inside an entry's deflate stream, past its first block header.
void DamageDeflateData(Bytes& bytes, int index) {
    const size_t local = LocalHeader(bytes, index);
    const size_t data = local + archive::kLocalHeaderSize + LoadLe16(&bytes[local + 26]) +
                        LoadLe16(&bytes[local + 28]);
    for (size_t i = 0; i < 40; ++i) {
        bytes[data + 20 + i] ^= 0x5A;
    }
}
void Add32(Bytes& bytes, size_t at, int32_t delta) {
    StoreLe32(&bytes[at], LoadLe32(&bytes[at]) + static_cast<uint32_t>(delta));
}

struct Case {
    const char* name;
    std::function<void(Bytes&)> damage;
    const char* failure;
    Tree extracted;
    int discarded;
};

TEST(Malformed, EachDamageFailsAtItsStepAndKeepsWhatCameBefore) {
    const Tree onlyA = {{"a.txt", kA}};
    const Case cases[] = {
        {"nothing", [](Bytes& b) { b.clear(); }, kNotOpened, {}, 0},
        {"not a zip", [](Bytes& b) { b.assign(100, 'z'); }, kNotOpened, {}, 0},
        {"truncated end record", [](Bytes& b) { b.resize(b.size() - 1); }, kNotOpened, {}, 0},
        {"truncated half", [](Bytes& b) { b.resize(b.size() / 2); }, kNotOpened, {}, 0},
        {"directory past its end record",
         [](Bytes& b) { Add32(b, EndRecord(b) + 16, 1); },
         kNotOpened,
         {},
         0},
        {"spanned archive",
         [](Bytes& b) { StoreLe16(&b[EndRecord(b) + 4], 1); },
         kNotOpened,
         {},
         0},
        {"entry count too large",
         [](Bytes& b) {
             StoreLe16(&b[EndRecord(b) + 8], 1000);
             StoreLe16(&b[EndRecord(b) + 10], 1000);
         },
         kNoCount,
         {},
         0},
        {"counts disagree", [](Bytes& b) { StoreLe16(&b[EndRecord(b) + 8], 1); }, kNoCount, {}, 0},
        {"second central header damaged", [](Bytes& b) { b[CentralHeader(b, 1)] = 'X'; },
         kUnreadable, onlyA, 0},
        {"name runs past the directory",
         [](Bytes& b) { StoreLe16(&b[CentralHeader(b, 1) + 28], 0xFFFF); }, kUnreadable, onlyA, 0},
        {"ZIP64 sizes without their extra field",
         [](Bytes& b) { StoreLe32(&b[CentralHeader(b, 1) + 24], 0xFFFFFFFF); }, kUnreadable, onlyA,
         0},
        {"bad CRC of the first",
         [](Bytes& b) { Add32(b, CentralHeader(b, 0) + 16, 1); },
         kNotExtracted,
         {},
         1},
        {"bad CRC of the second", [](Bytes& b) { Add32(b, CentralHeader(b, 1) + 16, 1); },
         kNotExtracted, onlyA, 1},
        {"uncompressed size too small", [](Bytes& b) { Add32(b, CentralHeader(b, 1) + 24, -1); },
         kNotExtracted, onlyA, 1},
        {"compressed size too small", [](Bytes& b) { Add32(b, CentralHeader(b, 1) + 20, -1); },
         kNotExtracted, onlyA, 1},
        // The local header's size saves none of these: it claims as much, or the central one
        // reaches past the archive.
        {"both compressed sizes into the directory",
         [](Bytes& b) {
             Add32(b, CentralHeader(b, 1) + 20, 100);
             Add32(b, LocalHeader(b, 1) + 18, 100);
         },
         kNotExtracted, onlyA, 0},
        {"both compressed sizes of the first into the second",
         [](Bytes& b) {
             Add32(b, CentralHeader(b, 0) + 20, 1);
             Add32(b, LocalHeader(b, 0) + 18, 1);
         },
         kNotExtracted, onlyA, 0},
        {"compressed size past the end of the archive",
         [](Bytes& b) { Add32(b, CentralHeader(b, 1) + 20, 1 << 20); }, kNotExtracted, onlyA, 0},
        {"local header out of range",
         [](Bytes& b) { StoreLe32(&b[CentralHeader(b, 1) + 42], 0x7FFFFFF0); }, kNotExtracted,
         onlyA, 0},
        {"local header signature", [](Bytes& b) { b[LocalHeader(b, 1)] = 'X'; }, kNotExtracted,
         onlyA, 0},
        {"entries overlap",
         [](Bytes& b) { StoreLe32(&b[CentralHeader(b, 1) + 42], LocalHeader(b, 0)); },
         kNotExtracted, onlyA, 0},
        {"deflate data damaged", [](Bytes& b) { DamageDeflateData(b, 0); }, kNotExtracted, {}, 1},
        {"deflate data of the second damaged", [](Bytes& b) { DamageDeflateData(b, 1); },
         kNotExtracted, onlyA, 1},
        {"method BZip2", [](Bytes& b) { StoreLe16(&b[CentralHeader(b, 1) + 10], 12); },
         "-50 Unable to get zip item \"b.bin\": its compression method BZip2 (12) is not "
         "supported (only stored and deflated are)",
         onlyA, 0},
        {"method LZMA", [](Bytes& b) { StoreLe16(&b[CentralHeader(b, 1) + 10], 14); },
         "-50 Unable to get zip item \"b.bin\": its compression method LZMA (14) is not "
         "supported (only stored and deflated are)",
         onlyA, 0},
        {"method 7", [](Bytes& b) { StoreLe16(&b[CentralHeader(b, 1) + 10], 7); },
         "-50 Unable to get zip item \"b.bin\": its compression method 7 is not supported (only "
         "stored and deflated are)",
         onlyA, 0},
        {"encrypted", [](Bytes& b) { b[CentralHeader(b, 1) + 8] |= 1; },
         "-50 Unable to get zip item \"b.bin\": it is encrypted, and encrypted entries cannot be "
         "unpacked",
         onlyA, 0},
        {"encrypted with AES", [](Bytes& b) { StoreLe16(&b[CentralHeader(b, 1) + 10], 99); },
         "-50 Unable to get zip item \"b.bin\": it is encrypted, and encrypted entries cannot be "
         "unpacked",
         onlyA, 0},
        {"NUL in the name",
         [](Bytes& b) { b[CentralHeader(b, 1) + archive::kCentralHeaderSize + 1] = 0; },
         "-50 Unable to get zip item \"b\\0bin\": its name holds a NUL character", onlyA, 0},
    };
    // Each damage to the second entry is met once by the whole-entry inflate and once by the
    // streaming one.
    for (const std::string* second : {&kB, &kLargeB}) {
        const std::string size = second == &kB ? " (whole)" : " (streamed)";
        for (const Case& c : cases) {
            Bytes bytes = TwoEntries(*second);
            c.damage(bytes);
            if (second == &kB) {
                SaveSeed(std::string("malformed ") + c.name, bytes);
            }
            const Outcome outcome = Extract(bytes);
            EXPECT_EQ(outcome.failure, c.failure) << c.name << size;
            EXPECT_EQ(outcome.tree, c.extracted) << c.name << size;
            // Files after the failing one may have been started alongside it, and were discarded.
            EXPECT_GE(outcome.discarded, c.discarded) << c.name << size;
        }
    }
}

// What Info-ZIP's unzip and Python's zipfile read, we read too: sizes claiming more than there is
// (the stream's end and the CRC decide, or for a stored entry the smaller size and the CRC), a
// central compressed size reaching into the next entry or the directory where the local header's
// is right, a comment length past the end, bytes behind the archive, and a stub in front whose
// size the offsets leave out. Each on a stored, a wholly inflated and a streamed second (last)
// entry.
TEST(Malformed, WhatOtherToolsForgiveUnpacks) {
    // Bytes between the last entry's data and the directory, which its compressed size counts.
    auto gapCounted = [](Bytes& b, bool sizeToo) {
        const size_t directory = LoadLe32(&b[EndRecord(b) + 16]);
        b.insert(b.begin() + static_cast<std::ptrdiff_t>(directory), 16, 0);
        Add32(b, EndRecord(b) + 16, 16);
        Add32(b, CentralHeader(b, 1) + 20, 16);
        if (sizeToo) {
            Add32(b, CentralHeader(b, 1) + 24, 16);
        }
    };
    struct Forgiven {
        const char* name;
        std::function<void(Bytes&)> change;
        bool storedToo;  // false: a stored entry has no end of its own, its CRC then fails
    };
    const Forgiven cases[] = {
        {"compressed size larger", [&](Bytes& b) { gapCounted(b, false); }, true},
        {"both sizes larger", [&](Bytes& b) { gapCounted(b, true); }, false},
        {"size larger", [&](Bytes& b) { Add32(b, CentralHeader(b, 1) + 24, 16); }, true},
        // The local header's smaller size, within the entry's own space, then bounds it.
        {"compressed size larger, into the directory",
         [](Bytes& b) { Add32(b, CentralHeader(b, 1) + 20, 16); }, true},
        {"compressed size of the first larger, into the second",
         [](Bytes& b) { Add32(b, CentralHeader(b, 0) + 20, 1); }, true},
        {"comment length past the end", [](Bytes& b) { StoreLe16(&b[b.size() - 2], 40); }, true},
        {"trailing bytes", [](Bytes& b) { b.insert(b.end(), 300, 'x'); }, true},
        {"stub in front",
         [](Bytes& b) {
             const Bytes stub = Build({{u"stub.txt", "a stub of sorts"}});
             b.insert(b.begin(), stub.begin(), stub.end());
         },
         true},
    };
    struct Second {
        const char* path;
        std::u16string name;
        std::string content;
        std::string file;
    };
    // A ".gz" is stored as it is.
    const Second seconds[] = {{"stored", u"b.gz", kB, "b.gz"},
                              {"whole", u"b.bin", Text(3000, 13), "b.bin"},
                              {"streamed", u"b.bin", kLargeB, "b.bin"}};
    for (const Second& second : seconds) {
        const bool stored = second.name == u"b.gz";
        for (const Forgiven& c : cases) {
            Bytes bytes = Build({{u"a.txt", kA}, {second.name, second.content}});
            c.change(bytes);
            if (second.content.size() < 10000) {
                SaveSeed(std::string("forgiven ") + c.name + " " + second.path, bytes);
            }
            const Outcome outcome = Extract(bytes);
            const std::string label = std::string(c.name) + " (" + second.path + ")";
            if (stored && !c.storedToo) {
                EXPECT_EQ(outcome.failure, kNotExtracted) << label;
                EXPECT_EQ(outcome.tree, (Tree{{"a.txt", kA}})) << label;
            } else {
                EXPECT_EQ(outcome.failure, "") << label;
                EXPECT_EQ(outcome.tree, (Tree{{"a.txt", kA}, {second.file, second.content}}))
                    << label;
            }
        }
    }
}

TEST(Malformed, ANulInANameLeavesThatEntryOutAndTheRestUnpacks) {
    Bytes bytes = Build({{u"a.txt", kA}, {u"n.txt", "nul"}, {u"b.bin", kB}, {u"c.txt", "c"}});
    bytes[CentralHeader(bytes, 1) + archive::kCentralHeaderSize + 1] = 0;
    bytes[CentralHeader(bytes, 3) + archive::kCentralHeaderSize + 1] = 0;
    const Outcome outcome = Extract(bytes);
    // The first entry left out is the one the call fails for, after all the others.
    EXPECT_EQ(outcome.failure,
              "-50 Unable to get zip item \"n\\0txt\": its name holds a NUL character");
    EXPECT_EQ(outcome.tree, (Tree{{"a.txt", kA}, {"b.bin", kB}}));
}

TEST(Malformed, NamesLandInsideTheTargetOrAreRefused) {
    const Outcome outcome = Extract(Build({{u"C:\\x\\..\\..\\evil.txt", "1"},
                                           {u"/etc/x", "2"},
                                           {u"a/b/../../c.txt", "3"},
                                           {u"d/b:stream", "6"},
                                           {u"aux.txt", "7"},
                                           {u"../outside.txt", "4"},
                                           {u"never.txt", "5"}}));
    EXPECT_EQ(outcome.failure, kNotExtracted);
    EXPECT_EQ(outcome.tree, (Tree{{"evil.txt", "1"},
                                  {"etc/x", "2"},
                                  {"c.txt", "3"},
                                  {"d/b_stream", "6"},
                                  {"aux_.txt", "7"}}));
}

TEST(Malformed, ANamePartLongerThanWindowsAllowsIsRefusedByName) {
    const std::u16string part(256, u'n');
    const Outcome outcome =
        Extract(Build({{u"ok/" + std::u16string(255, u'k'), "1"}, {u"d/" + part, "2"}}));
    EXPECT_EQ(outcome.failure, "-50 Unable to get zip item \"d/" + std::string(256, 'n') +
                                   "\": a part of its name is longer than the 255 characters "
                                   "Windows allows");
    EXPECT_EQ(outcome.tree, (Tree{{"ok/" + std::string(255, 'k'), "1"}}));
}

}  // namespace
}  // namespace archive_test
