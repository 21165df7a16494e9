#pragma once
// Reads a zip archive through its central directory and extracts entries one at a time. Every
// offset and length from the archive is checked against the file before it is used: a malformed
// archive fails with one of the codes below and never makes the reader read or write out of
// range, loop, or allocate what its headers claim. Stored and deflated entries only; each is
// verified before its file is kept: its data (as long as its compressed size says) overlaps no
// other entry's, a deflate stream ends within it and yields no more than the size, and the CRC-32
// matches. Sizes that claim more than the stream holds are forgiven, as other tools do.

#include <libdeflate.h>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "archive/archive_io.h"
#include "archive/entry_names.h"
#include "archive/entry_time.h"
#include "archive/extract_target.h"
#include "foundation/unique_resource.h"

namespace archive {

struct ArchiveEntry {
    std::u16string name;  // decoded and sanitised
    bool folder = false;  // the stored name ends in a separator
    uint16_t flags = 0;
    uint16_t method = 0;
    uint32_t crc = 0;
    uint64_t compressed = 0;
    uint64_t uncompressed = 0;
    uint64_t localOffset = 0;
    EntryTime time;
};

// Where an archive's central directory lies, from its end records.
struct DirectoryLocation {
    uint64_t offset = 0;
    uint64_t end = 0;
    uint64_t entriesOnDisk = 0;
    uint64_t entryCount = 0;
    // Bytes in front of the archive that its offsets leave out (offset and end count them).
    uint64_t shift = 0;
};
// The end record is looked for behind a comment and trailing bytes too, and one whose comment
// length runs past the end is taken when no other fits; a ZIP64 end record is followed when its
// locator is there. Nothing when `source` holds no readable zip archive.
std::optional<DirectoryLocation> FindCentralDirectory(ByteSource& source);

// Where an entry's data lies, once its header, name and span passed their checks.
struct EntryData {
    RelativePath path;   // below the target folder
    uint64_t start = 0;  // of the stored or deflated bytes in the archive (files only)
};

// Turns an entry's stored or deflated bytes into its file's content, verifying the stream's end,
// the size and the CRC-32 (-50 "Unable to get zip item" on any mismatch). A deflated entry is as
// long as its stream, a stored one as the smaller of its sizes. Keeps its buffers from one entry
// to the next; one decoder per thread.
class EntryDecoder {
  public:
    // A deflated entry up to this size (both sizes) is read whole and inflated in one libdeflate
    // call into a buffer of its declared size; a larger one streams through zlib, so memory
    // stays bounded whatever the archive claims.
    static constexpr uint64_t kWholeEntryLimit = 8u << 20;

    static bool DecodesWhole(const ArchiveEntry& entry);
    // What decoding `entry` whole holds in memory: its encoded bytes, and the decoded ones when
    // they differ.
    static size_t WholeEntryBytes(const ArchiveEntry& entry);

    void decode(const ArchiveEntry& entry, ByteSource& source, uint64_t start, EntryFile& file);

  private:
    void copyStored(const ArchiveEntry& entry, ByteSource& source, uint64_t start, EntryFile& file);
    void inflateWhole(const ArchiveEntry& entry, ByteSource& source, uint64_t start,
                      EntryFile& file);
    void inflateData(const ArchiveEntry& entry, ByteSource& source, uint64_t start,
                     EntryFile& file);

    using Decompressor =
        slib::UniqueResource<libdeflate_decompressor*, &libdeflate_free_decompressor>;

    std::vector<uint8_t> input_;
    std::vector<uint8_t> output_;
    Decompressor decompressor_;
};

class ZipReader {
  public:
    // -43 "Invalid archive path." when FindCentralDirectory finds nothing.
    ZipReader(ByteSource& source, OemDecoder decodeOem);

    // -50 "Could not read properties of archive" when the count cannot be right (more entries
    // than the central directory has room for, or a count that differs between the records).
    uint64_t entryCount() const;

    // The next entry of the central directory (entries are read in order, from 0).
    // -50 "Invalid or missing zip item" when its header is damaged.
    ArchiveEntry readEntry();

    // -50 "Unable to get zip item": encrypted or neither stored nor deflated, a name that leaves
    // the target folder, data out of range or overlapping another entry, a CRC or size that
    // does not match, or the target refusing.
    void extractEntry(ArchiveEntry entry, ExtractTarget& target);

    // extractEntry in two halves, for decoding elsewhere: every check before the data (with its
    // failures), then the entry's stored or deflated bytes, as they are, into `bytes`. The first
    // settles the compressed size the entry is decoded with: a central size that reaches into
    // the next entry or the directory gives way to the local header's smaller one where that
    // fits (the stream's end and the CRC still decide).
    EntryData locateData(ArchiveEntry& entry);
    void readData(const ArchiveEntry& entry, const EntryData& data, std::vector<uint8_t>& bytes);

  private:
    bool readCached(uint64_t offset, uint8_t* buffer, size_t length);
    void claimSpan(uint64_t start, uint64_t end);
    void settleCompressedSize(ArchiveEntry& entry, const uint8_t* localHeader, uint64_t dataStart);
    // Where the next entry's local header starts after `localOffset`, or the central directory.
    uint64_t nextHeaderAfter(uint64_t localOffset);

    ByteSource& source_;
    OemDecoder decodeOem_;
    DirectoryLocation directory_;
    uint64_t cursor_ = 0;                 // the next central header
    std::map<uint64_t, uint64_t> spans_;  // start to end of the bytes entries extracted so far use
    std::vector<uint64_t> localOffsets_;  // of every entry, sorted; read when first needed
    bool localOffsetsRead_ = false;
    std::vector<uint8_t> window_;  // central directory bytes read ahead
    uint64_t windowOffset_ = 0;
    EntryDecoder decoder_;
};

// The whole unpacking of an archive: count, then each entry read and extracted in order, the
// reading and inflating on a worker thread (extract_pipeline.h). Entries extracted before a
// failure stay where they are.
void ExtractArchive(ByteSource& source, ExtractTarget& target, OemDecoder decodeOem);

}  // namespace archive
