// The calling thread's side of unpacking failing while the reading worker runs far ahead: the
// call ends with the target's failure (no hang, the worker joined), the files before the refused
// one stay, and nothing after it is created.
#include <gtest/gtest.h>

#include "archive/archive_failures.h"
#include "archive/memory_io.h"
#include "archive/zip_reader.h"
#include "archive_test_support.h"
#include "foundation/exception.h"

namespace archive_test {
namespace {

std::u16string AsciiOnly(std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

class CountingFile : public archive::EntryFile {
  public:
    CountingFile(int& committed, int& discarded) : committed_(committed), discarded_(discarded) {}
    ~CountingFile() override {
        if (!done_) {
            ++discarded_;
        }
    }
    void write(const uint8_t*, size_t) override {}
    void commit(const archive::EntryTime&) override {
        ++committed_;
        done_ = true;
    }

  private:
    int& committed_;
    int& discarded_;
    bool done_ = false;
};

// Refuses its `refuseAt`-th file (counting from 1).
class RefusingTarget : public archive::ExtractTarget {
  public:
    explicit RefusingTarget(int refuseAt) : refuseAt_(refuseAt) {}
    void makeFolder(const archive::RelativePath&) override {}
    std::unique_ptr<archive::EntryFile> createFile(const archive::RelativePath&) override {
        if (++created == refuseAt_) {
            archive::FailEntryNotExtracted();
        }
        return std::make_unique<CountingFile>(committed, discarded);
    }
    int created = 0;
    int committed = 0;
    int discarded = 0;

  private:
    int refuseAt_;
};

TEST(ExtractPipeline, TargetRefusingMidwayStopsTheWorkerAndKeepsWhatCameBefore) {
    // More entries than the worker may queue ahead, and an entry larger than its byte allowance.
    std::vector<Item> items;
    for (int i = 0; i < 6000; ++i) {
        const std::string name = "small/" + std::to_string(i) + ".txt";
        items.push_back({std::u16string(name.begin(), name.end()), Text(i % 7, i)});
    }
    items.push_back({u"large.bin", Noise(9 * 1024 * 1024, 3)});
    const std::vector<uint8_t> bytes = Build(items);

    for (int refuseAt : {1, 2, 5000, 6001}) {
        archive::MemorySource source(bytes);
        RefusingTarget target(refuseAt);
        try {
            archive::ExtractArchive(source, target, &AsciiOnly);
            ADD_FAILURE() << "refusing file " << refuseAt << " went unnoticed";
        } catch (const slib::Exception& failure) {
            EXPECT_EQ(failure.error()->code(), -50);
        }
        EXPECT_EQ(target.created, refuseAt);
        EXPECT_EQ(target.committed, refuseAt - 1);
        EXPECT_EQ(target.discarded, 0);
    }
}

}  // namespace
}  // namespace archive_test
