// Unpacking failing while the reading worker runs far ahead and the writer pool has files in
// flight: the call ends with the first failure in archive order (no hang, every thread joined),
// every file before the failing one is committed, and nothing after it is.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <set>
#include <thread>

#include "archive/archive_failures.h"
#include "archive/byte_order.h"
#include "archive/memory_io.h"
#include "archive/zip_format.h"
#include "archive/zip_reader.h"
#include "archive_test_support.h"
#include "foundation/error_boxes.h"
#include "foundation/exception.h"

namespace archive_test {
namespace {

std::u16string AsciiOnly(std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

struct Ledger {
    std::mutex mutex;
    std::set<std::u16string> committed;
    int created = 0;
    int discarded = 0;
};

class LedgerFile : public archive::EntryFile {
  public:
    LedgerFile(Ledger& ledger, std::u16string name) : ledger_(ledger), name_(std::move(name)) {}
    ~LedgerFile() override {
        if (!done_) {
            const std::lock_guard<std::mutex> lock(ledger_.mutex);
            ++ledger_.discarded;
        }
    }
    void write(const uint8_t*, size_t) override {}
    void commit(const archive::EntryTime&) override {
        const std::lock_guard<std::mutex> lock(ledger_.mutex);
        ledger_.committed.insert(name_);
        done_ = true;
    }

  private:
    Ledger& ledger_;
    std::u16string name_;
    bool done_ = false;
};

// Refuses to create the file named `refused`, slowly, so that files after it are done first.
class RefusingTarget : public archive::ExtractTarget {
  public:
    explicit RefusingTarget(std::u16string refused) : refused_(std::move(refused)) {}
    void makeFolder(const archive::RelativePath&) override {}
    std::unique_ptr<archive::EntryFile> createFile(const archive::RelativePath& path) override {
        {
            const std::lock_guard<std::mutex> lock(ledger.mutex);
            ++ledger.created;
        }
        if (path.back() == refused_) {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            archive::FailEntryNotExtracted();
        }
        return std::make_unique<LedgerFile>(ledger, path.back());
    }
    Ledger ledger;

  private:
    std::u16string refused_;
};

std::u16string SmallName(int index) {
    const std::string name = std::to_string(index) + ".txt";
    return std::u16string(name.begin(), name.end());
}

// More entries than the worker may queue ahead, then one too large to decode whole (a writer
// thread streams it from the archive), then more small ones.
std::vector<uint8_t> ManyThenLargeThenMore() {
    std::vector<Item> items;
    for (int i = 0; i < 6000; ++i) {
        items.push_back({u"small/" + SmallName(i), Text(i % 7, i)});
    }
    items.push_back({u"large.bin", Noise(9 * 1024 * 1024, 3)});
    for (int i = 6000; i < 6100; ++i) {
        items.push_back({u"small/" + SmallName(i), Text(i % 7, i)});
    }
    return Build(items);
}

void ExpectOnlyFilesBefore(const Ledger& ledger, int failingIndex, const std::string& what) {
    EXPECT_EQ(ledger.committed.size(), static_cast<size_t>(failingIndex)) << what;
    for (int i = 0; i < failingIndex && i < 6000; ++i) {
        EXPECT_EQ(ledger.committed.count(SmallName(i)), 1u) << what << " lacks " << i;
    }
    // Files made after the failing one, alongside it, were all thrown away.
    EXPECT_EQ(ledger.discarded, ledger.created - 1 - failingIndex) << what;
}

TEST(ExtractPipeline, FailingFileEndsTheCallWithEverythingBeforeItAndNothingAfter) {
    const std::vector<uint8_t> bytes = ManyThenLargeThenMore();
    for (const auto& [refused, index] :
         std::vector<std::pair<std::u16string, int>>{{SmallName(0), 0},
                                                     {SmallName(1), 1},
                                                     {SmallName(4999), 4999},
                                                     {u"large.bin", 6000},
                                                     {SmallName(6050), 6051}}) {
        archive::MemorySource source(bytes);
        RefusingTarget target(refused);
        try {
            archive::ExtractArchive(source, target, &AsciiOnly);
            ADD_FAILURE() << "refusing file " << index << " went unnoticed";
        } catch (const slib::Exception& failure) {
            EXPECT_EQ(failure.error()->code(), -50);
        }
        ExpectOnlyFilesBefore(target.ledger, index, "refused " + std::to_string(index));
    }
}

TEST(ExtractPipeline, DamagedLargeEntryIsRemovedAfterTheFilesBeforeItAreCommitted) {
    std::vector<uint8_t> bytes = ManyThenLargeThenMore();
    // The large entry's CRC in its central header (the 6001st header).
    size_t at = archive::LoadLe32(&bytes[bytes.size() - archive::kEndRecordSize + 16]);
    for (int i = 0; i < 6000; ++i) {
        at += archive::kCentralHeaderSize + archive::LoadLe16(&bytes[at + 28]) +
              archive::LoadLe16(&bytes[at + 30]) + archive::LoadLe16(&bytes[at + 32]);
    }
    ASSERT_EQ(bytes[at + 46], 'l');
    bytes[at + 16] ^= 1;
    archive::MemorySource source(bytes);
    RefusingTarget target(u"none");
    EXPECT_THROW(archive::ExtractArchive(source, target, &AsciiOnly), slib::Exception);
    EXPECT_EQ(target.ledger.committed.size(), 6000u);
    // The large file and any made after it, alongside it, were all thrown away.
    EXPECT_EQ(target.ledger.discarded, target.ledger.created - 6000);
    EXPECT_GE(target.ledger.discarded, 1);
}

TEST(ExtractPipeline, LargeFilesStreamedAtOnceStopAtTheFirstDamagedOneInArchiveOrder) {
    // Too large to travel whole: each writer thread streams its own from the archive.
    const std::string large = Text(archive::EntryDecoder::kWholeEntryLimit + 1024, 5);
    std::vector<Item> items;
    for (int i = 0; i < 4; ++i) {
        items.push_back({u"large " + SmallName(i), large});
        items.push_back({u"small/" + SmallName(i), Text(100, i)});
    }
    std::vector<uint8_t> bytes = Build(items);
    // The third entry's CRC, in its central header.
    size_t at = archive::LoadLe32(&bytes[bytes.size() - archive::kEndRecordSize + 16]);
    for (int i = 0; i < 2; ++i) {
        at += archive::kCentralHeaderSize + archive::LoadLe16(&bytes[at + 28]) +
              archive::LoadLe16(&bytes[at + 30]) + archive::LoadLe16(&bytes[at + 32]);
    }
    bytes[at + 16] ^= 1;
    archive::MemorySource source(bytes);
    RefusingTarget target(u"none");
    EXPECT_THROW(archive::ExtractArchive(source, target, &AsciiOnly), slib::Exception);
    EXPECT_EQ(target.ledger.committed,
              (std::set<std::u16string>{u"large " + SmallName(0), SmallName(0)}));
    EXPECT_EQ(target.ledger.discarded, target.ledger.created - 2);
}

// Counts every archive read and file operation made with the system's error boxes on.
struct BoxesSeen {
    std::atomic<int> reads{0};
    std::atomic<int> files{0};
};

class WatchedSource : public archive::MemorySource {
  public:
    WatchedSource(const std::vector<uint8_t>& bytes, BoxesSeen& seen)
        : MemorySource(bytes), seen_(seen) {}
    bool readAt(uint64_t offset, uint8_t* buffer, size_t length) override {
        seen_.reads += slib::ErrorBoxesAreOff() ? 0 : 1;
        return MemorySource::readAt(offset, buffer, length);
    }

  private:
    BoxesSeen& seen_;
};

class WatchedFile : public archive::EntryFile {
  public:
    explicit WatchedFile(BoxesSeen& seen) : seen_(seen) {}
    void write(const uint8_t*, size_t) override { seen_.files += slib::ErrorBoxesAreOff() ? 0 : 1; }
    void commit(const archive::EntryTime&) override {
        seen_.files += slib::ErrorBoxesAreOff() ? 0 : 1;
    }

  private:
    BoxesSeen& seen_;
};

class WatchedTarget : public archive::ExtractTarget {
  public:
    explicit WatchedTarget(BoxesSeen& seen) : seen_(seen) {}
    void makeFolder(const archive::RelativePath&) override {}
    std::unique_ptr<archive::EntryFile> createFile(const archive::RelativePath&) override {
        seen_.files += slib::ErrorBoxesAreOff() ? 0 : 1;
        return std::make_unique<WatchedFile>(seen_);
    }

  private:
    BoxesSeen& seen_;
};

// The call holds the scope on its own thread; the reading worker and the writer threads, which
// do the reading and writing, must hold it too.
TEST(ExtractPipeline, EveryThreadReadsAndWritesWithoutSystemErrorBoxes) {
    const std::string large = Text(archive::EntryDecoder::kWholeEntryLimit + 1024, 5);
    std::vector<Item> items{{u"large.txt", large}};
    for (int i = 0; i < 50; ++i) {
        items.push_back({u"small/" + SmallName(i), Text(100, i)});
    }
    const std::vector<uint8_t> bytes = Build(items);
    BoxesSeen seen;
    WatchedSource source(bytes, seen);
    WatchedTarget target(seen);
    {
        const slib::NoErrorBoxes call;
        archive::ExtractArchive(source, target, &AsciiOnly);
    }
    EXPECT_EQ(seen.reads.load(), 0);
    EXPECT_EQ(seen.files.load(), 0);
}

}  // namespace
}  // namespace archive_test
