// fuzz-sources: src/archive/*.cpp src/foundation/*.cpp src/foundation/posix/error_boxes.cpp
// fuzz-libs: -lz -ldeflate
// The whole unpacking path on an archive held in memory, on this thread, as the unpacking worker
// and the writer threads run it: end records, central directory, names, containment, then each
// file decoded whole (libdeflate) or streamed from the archive (zlib) and verified, into a file
// that only counts what it gets. Every name given for the disk must be one Windows can use.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

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

// A component that could leave the target folder, or one Windows could not use or hold, traps.
void CheckPath(const archive::RelativePath& path) {
    for (const std::u16string& part : path) {
        if (part.empty() || part == u"." || part == u".." ||
            part.find_first_of(u"/\\:") != std::u16string::npos) {
            __builtin_trap();
        }
        if (slib::CheckNameComponent(part) != slib::NameProblem::kNone || part.size() > 255) {
            __builtin_trap();
        }
    }
}

std::u16string Latin1(std::string_view bytes) {
    return std::u16string(bytes.begin(), bytes.end());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    archive::MemorySource source(data, size);
    try {
        archive::ZipReader reader(source, &Latin1);
        archive::EntryDecoder decoder;
        std::vector<uint8_t> bytes;
        for (uint64_t index = 0, count = reader.entryCount(); index < count; ++index) {
            archive::ArchiveEntry entry = reader.readEntry();  // locating settles its sizes
            if (entry.name.find(u'\0') != std::u16string::npos) {
                continue;  // left out, as unpacking leaves it out
            }
            const archive::EntryData located = reader.locateData(entry);
            CheckPath(located.path);
            if (entry.folder) {
                continue;
            }
            CountingFile file;
            if (archive::EntryDecoder::DecodesWhole(entry)) {
                reader.readData(entry, located, bytes);
                archive::MemorySource encoded(bytes);
                decoder.decode(entry, encoded, 0, file);
            } else {
                decoder.decode(entry, source, located.start, file);
            }
        }
    } catch (const slib::Exception&) {
    }
    return 0;
}
