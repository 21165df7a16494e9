#pragma once
// Writes a zip archive front to back: local headers and entry data in the order entries are added,
// then the central directory and the end records. Content goes through the deflate pipeline, so
// reading the next file overlaps with deflating the previous ones; local headers are completed
// (CRC and sizes) once an entry's last block is out. ZIP64 fields appear exactly where a size, an
// offset or the entry count needs them. Names are stored with "/" separators, as UTF-8 with
// general-purpose bit 11 when they are not plain ASCII.
//
// Failures: -43 "Unable to add file to zip." (a name too long for the format, the codec refusing, a
// file grown past what its header allows); whatever the ByteStream or ByteWriter throw.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "archive/archive_io.h"
#include "archive/deflate_pipeline.h"
#include "archive/entry_time.h"

namespace archive {

class ZipWriter {
  public:
    static constexpr int kDeflateLevel = 6;

    ZipWriter(ByteWriter& out, unsigned workers);

    // A folder entry ("/" is appended when the name lacks it); stored, no data.
    void addFolder(std::u16string_view name, const EntryTime& time);
    // A file entry with `content` read to its end, stored or deflated by its name's extension.
    // `sizeHint` is the file's size when it was opened: from 4 GiB on (less a safety margin for
    // deflate's growth) the local header carries ZIP64 sizes.
    void addFile(std::u16string_view name, const EntryTime& time, ByteStream& content,
                 uint64_t sizeHint);
    // Everything still in flight, then the central directory and the end records.
    void finish();

    uint64_t entryCount() const { return entries_.size(); }

  private:
    struct Entry {
        std::string name;  // UTF-8
        uint16_t flags = 0;
        uint16_t method = 0;
        bool folder = false;
        bool zip64Local = false;
        EntryTime time;
        uint32_t crc = 0;
        uint64_t compressed = 0;
        uint64_t uncompressed = 0;
        uint64_t localOffset = 0;
    };
    struct Pending {
        enum class Kind { kHeader, kBlock, kEnd } kind;
        size_t entry;
        DeflateBlock* block;
    };

    size_t beginEntry(std::u16string_view name, const EntryTime& time, bool folder);
    DeflateBlock* nextFreeBlock(size_t inputBytes);
    void drain(bool wait);
    void emit(const Pending& pending);
    void writeLocalHeader(Entry& entry);
    void completeLocalHeader(const Entry& entry);
    void writeCentralHeader(const Entry& entry);
    void writeEndRecords(uint64_t directoryOffset, uint64_t directorySize);
    void append(const uint8_t* data, size_t length);
    void patch(uint64_t offset, const uint8_t* data, size_t length);
    void flush();

    ByteWriter& out_;
    DeflatePipeline pipeline_;
    std::vector<Entry> entries_;
    std::deque<Pending> pending_;
    std::vector<uint8_t> buffer_;  // small records gathered before they go out
    uint64_t bufferStart_ = 0;     // archive offset of buffer_[0]
};

}  // namespace archive
