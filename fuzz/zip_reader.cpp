// fuzz-sources: src/archive/*.cpp src/foundation/*.cpp
// fuzz-libs: -lz -ldeflate
// The whole unpacking path on an archive held in memory: end records, central directory, names,
// containment, inflate and verification, into a memory target that only counts what it gets and
// checks that every name it is given is one Windows can use.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "archive/memory_io.h"
#include "archive/zip_reader.h"
#include "foundation/exception.h"
#include "foundation/item_name_rules.h"

namespace {

class CountingFile : public archive::EntryFile {
  public:
    void write(const uint8_t* data, size_t length) override {
        for (size_t i = 0; i < length; ++i) {
            sum_ += data[i];
        }
    }
    void commit(const archive::EntryTime&) override {}

  private:
    uint64_t sum_ = 0;
};

class CountingTarget : public archive::ExtractTarget {
  public:
    void makeFolder(const archive::RelativePath& path) override { check(path); }
    std::unique_ptr<archive::EntryFile> createFile(const archive::RelativePath& path) override {
        check(path);
        return std::make_unique<CountingFile>();
    }

  private:
    static void check(const archive::RelativePath& path) {
        for (const std::u16string& part : path) {
            if (part.empty() || part == u"." || part == u".." ||
                part.find_first_of(u"/\\:") != std::u16string::npos) {
                __builtin_trap();  // a component that could leave the target folder
            }
            if (slib::CheckNameComponent(part) != slib::NameProblem::kNone || part.size() > 255) {
                __builtin_trap();  // a name Windows could not use, or not hold
            }
        }
    }
};

std::u16string Latin1(std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    archive::MemorySource source(data, size);
    CountingTarget target;
    try {
        archive::ExtractArchive(source, target, &Latin1);
    } catch (const slib::Exception&) {
    }
    return 0;
}
