#include "archive/zip_writer.h"

#include <zlib.h>

#include <algorithm>

#include "archive/archive_failures.h"
#include "archive/byte_order.h"
#include "archive/entry_names.h"
#include "archive/zip_format.h"
#include "foundation/utf_conversion.h"

namespace archive {

namespace {

constexpr size_t kBufferLimit = 256 * 1024;
// Deflate can grow incompressible data a little; a file this close to 4 GiB gets ZIP64 sizes in
// its local header, since the header is written before its compressed size is known.
constexpr uint64_t kZip64LocalThreshold = kMax32 - 64ull * 1024 * 1024;

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

uint32_t Clamp32(uint64_t value) {
    return value >= kMax32 ? kMax32 : static_cast<uint32_t>(value);
}

void AppendTimestampExtra(std::vector<uint8_t>& out, const EntryTime& time) {
    if (!time.hasUnixTime || !FitsUnixTimeField(time.unixTime)) {
        return;
    }
    AppendLe16(out, kTimestampExtraId);
    AppendLe16(out, 5);
    out.push_back(1);  // modification time present
    AppendLe32(out, static_cast<uint32_t>(static_cast<int32_t>(time.unixTime)));
}

// The exact time as Windows tools keep it. Only the modification time is known, so it stands
// for the access and creation times too (a zero there would read as 1601).
void AppendNtfsTimeExtra(std::vector<uint8_t>& out, const EntryTime& time) {
    if (!time.hasFileTime) {
        return;
    }
    uint8_t field[36] = {};
    StoreLe16(field, kNtfsExtraId);
    StoreLe16(field + 2, 32);
    StoreLe16(field + 8, kNtfsTimesTag);  // after four reserved bytes
    StoreLe16(field + 10, 24);
    for (size_t at = 12; at < sizeof field; at += 8) {
        StoreLe64(field + at, time.fileTime);
    }
    out.insert(out.end(), field, field + sizeof field);
}

}  // namespace

ZipWriter::ZipWriter(ByteWriter& out, unsigned workers)
    : out_(out), pipeline_(workers, kDeflateLevel) {
    buffer_.reserve(kBufferLimit);
}

size_t ZipWriter::beginEntry(std::u16string_view name, const EntryTime& time, bool folder) {
    Entry entry;
    entry.name = slib::Utf16ToUtf8(name);
    if (entry.name.size() > kMax16) {
        FailFileNotAdded();
    }
    entry.flags = IsAscii(entry.name) ? 0 : kFlagUtf8Name;
    entry.folder = folder;
    entry.time = time;
    entries_.push_back(std::move(entry));
    pending_.push_back({Pending::Kind::kHeader, entries_.size() - 1, nullptr});
    return entries_.size() - 1;
}

void ZipWriter::addFolder(std::u16string_view name, const EntryTime& time) {
    std::u16string folderName(name);
    if (folderName.empty() || folderName.back() != u'/') {
        folderName.push_back(u'/');
    }
    const size_t index = beginEntry(folderName, time, true);
    entries_[index].method = kMethodStored;
    pending_.push_back({Pending::Kind::kEnd, index, nullptr});
    drain(false);
}

void ZipWriter::addFile(std::u16string_view name, const EntryTime& time, ByteStream& content,
                        uint64_t sizeHint) {
    const size_t index = beginEntry(name, time, false);
    const bool deflate = !IsStoredWithoutCompression(name);
    entries_[index].method = deflate ? kMethodDeflated : kMethodStored;
    entries_[index].zip64Local = sizeHint >= kZip64LocalThreshold;
    // A file expected to fit is read into one block with a byte to spare: a block left short is
    // the whole file, deflated in one go; one filled up means the file grew since it was
    // listed, and the rest follows in parts, as a large file does.
    size_t blockBytes =
        sizeHint <= DeflatePipeline::kWholeEntryLimit
            ? std::max(static_cast<size_t>(sizeHint) + 1, DeflatePipeline::kBlockSize)
            : DeflatePipeline::kPartSize;
    for (;;) {
        DeflateBlock* block = nextFreeBlock(blockBytes);
        blockBytes = DeflatePipeline::kPartSize;
        size_t filled = 0;
        while (filled < block->input.size()) {
            const size_t got =
                content.read(block->input.data() + filled, block->input.size() - filled);
            if (got == 0) {
                break;
            }
            filled += got;
        }
        block->inputLength = filled;
        block->deflate = deflate;
        block->last = filled < block->input.size();
        const bool last = block->last;
        pipeline_.submit(block);
        pending_.push_back({Pending::Kind::kBlock, index, block});
        drain(false);
        if (last) {
            break;
        }
    }
    pending_.push_back({Pending::Kind::kEnd, index, nullptr});
    drain(false);
}

DeflateBlock* ZipWriter::nextFreeBlock(size_t inputBytes) {
    for (;;) {
        if (DeflateBlock* block = pipeline_.acquire(inputBytes)) {
            return block;
        }
        // Every block is queued: the oldest one is the next to go out.
        const Pending front = pending_.front();
        if (front.kind == Pending::Kind::kBlock) {
            pipeline_.waitFor(front.block);
        }
        pending_.pop_front();
        emit(front);
    }
}

void ZipWriter::drain(bool wait) {
    while (!pending_.empty()) {
        const Pending front = pending_.front();
        if (front.kind == Pending::Kind::kBlock) {
            if (wait) {
                pipeline_.waitFor(front.block);
            } else if (!front.block->done.load()) {
                break;
            }
        }
        pending_.pop_front();
        emit(front);
    }
}

void ZipWriter::emit(const Pending& pending) {
    Entry& entry = entries_[pending.entry];
    switch (pending.kind) {
        case Pending::Kind::kHeader:
            writeLocalHeader(entry);
            break;
        case Pending::Kind::kBlock: {
            DeflateBlock* block = pending.block;
            if (block->failed) {
                pipeline_.release(block);
                FailFileNotAdded();
            }
            append(block->data(), block->dataLength());
            entry.crc = static_cast<uint32_t>(
                crc32_combine(entry.crc, block->crc, static_cast<z_off_t>(block->inputLength)));
            entry.compressed += block->dataLength();
            entry.uncompressed += block->inputLength;
            pipeline_.release(block);
            break;
        }
        case Pending::Kind::kEnd:
            completeLocalHeader(entry);
            break;
    }
}

void ZipWriter::writeLocalHeader(Entry& entry) {
    entry.localOffset = bufferStart_ + buffer_.size();
    std::vector<uint8_t> header;
    header.reserve(kLocalHeaderSize + entry.name.size() + 32);
    AppendLe32(header, kLocalHeaderSignature);
    AppendLe16(header, entry.zip64Local ? kVersionZip64 : kVersionDeflate);
    AppendLe16(header, entry.flags);
    AppendLe16(header, entry.method);
    AppendLe16(header, entry.time.dosTime);
    AppendLe16(header, entry.time.dosDate);
    AppendLe32(header, 0);  // CRC and sizes follow once the data is out
    AppendLe32(header, entry.zip64Local ? kMax32 : 0);
    AppendLe32(header, entry.zip64Local ? kMax32 : 0);
    AppendLe16(header, static_cast<uint16_t>(entry.name.size()));
    std::vector<uint8_t> extra;
    if (entry.zip64Local) {
        AppendLe16(extra, kZip64ExtraId);
        AppendLe16(extra, 16);
        AppendLe64(extra, 0);
        AppendLe64(extra, 0);
    }
    AppendNtfsTimeExtra(extra, entry.time);
    AppendTimestampExtra(extra, entry.time);
    AppendLe16(header, static_cast<uint16_t>(extra.size()));
    header.insert(header.end(), entry.name.begin(), entry.name.end());
    header.insert(header.end(), extra.begin(), extra.end());
    append(header.data(), header.size());
}

void ZipWriter::completeLocalHeader(const Entry& entry) {
    if (entry.folder) {
        return;  // zero CRC and sizes, as written
    }
    uint8_t fields[12];
    StoreLe32(fields, entry.crc);
    patch(entry.localOffset + 14, fields, 4);
    if (entry.zip64Local) {
        uint8_t sizes[16];
        StoreLe64(sizes, entry.uncompressed);
        StoreLe64(sizes + 8, entry.compressed);
        patch(entry.localOffset + kLocalHeaderSize + entry.name.size() + 4, sizes, 16);
        return;
    }
    if (entry.compressed >= kMax32 || entry.uncompressed >= kMax32) {
        FailFileNotAdded();  // grew past 4 GiB after it was opened
    }
    StoreLe32(fields + 4, static_cast<uint32_t>(entry.compressed));
    StoreLe32(fields + 8, static_cast<uint32_t>(entry.uncompressed));
    patch(entry.localOffset + 18, fields + 4, 8);
}

void ZipWriter::writeCentralHeader(const Entry& entry) {
    std::vector<uint8_t> zip64;
    if (entry.uncompressed >= kMax32) {
        AppendLe64(zip64, entry.uncompressed);
    }
    if (entry.compressed >= kMax32) {
        AppendLe64(zip64, entry.compressed);
    }
    if (entry.localOffset >= kMax32) {
        AppendLe64(zip64, entry.localOffset);
    }
    const bool usesZip64 = !zip64.empty() || entry.zip64Local;
    std::vector<uint8_t> extra;
    if (!zip64.empty()) {
        AppendLe16(extra, kZip64ExtraId);
        AppendLe16(extra, static_cast<uint16_t>(zip64.size()));
        extra.insert(extra.end(), zip64.begin(), zip64.end());
    }
    AppendNtfsTimeExtra(extra, entry.time);
    AppendTimestampExtra(extra, entry.time);
    const uint16_t version = usesZip64 ? kVersionZip64 : kVersionDeflate;
    std::vector<uint8_t> header;
    header.reserve(kCentralHeaderSize + entry.name.size() + extra.size());
    AppendLe32(header, kCentralHeaderSignature);
    // Made by: MS-DOS attributes, or Unix ones where a mode is kept; this format version.
    AppendLe16(header, entry.time.unixMode != 0 ? static_cast<uint16_t>(kHostUnix << 8 | version)
                                                : version);
    AppendLe16(header, version);
    AppendLe16(header, entry.flags);
    AppendLe16(header, entry.method);
    AppendLe16(header, entry.time.dosTime);
    AppendLe16(header, entry.time.dosDate);
    AppendLe32(header, entry.crc);
    AppendLe32(header, Clamp32(entry.compressed));
    AppendLe32(header, Clamp32(entry.uncompressed));
    AppendLe16(header, static_cast<uint16_t>(entry.name.size()));
    AppendLe16(header, static_cast<uint16_t>(extra.size()));
    AppendLe16(header, 0);  // comment
    AppendLe16(header, 0);  // disk
    AppendLe16(header, 0);  // internal attributes
    AppendLe32(header, uint32_t{entry.time.unixMode} << 16 |
                           (entry.folder ? kDosAttributeFolder : kDosAttributeArchive) |
                           (entry.time.attributes & (kDosAttributeReadOnly | kDosAttributeHidden)));
    AppendLe32(header, Clamp32(entry.localOffset));
    header.insert(header.end(), entry.name.begin(), entry.name.end());
    header.insert(header.end(), extra.begin(), extra.end());
    append(header.data(), header.size());
}

void ZipWriter::writeEndRecords(uint64_t directoryOffset, uint64_t directorySize) {
    const uint64_t count = entries_.size();
    std::vector<uint8_t> records;
    if (count >= kMax16 || directoryOffset >= kMax32 || directorySize >= kMax32) {
        const uint64_t zip64Offset = directoryOffset + directorySize;
        AppendLe32(records, kZip64EndRecordSignature);
        AppendLe64(records, kZip64EndRecordSize - 12);
        AppendLe16(records, kVersionZip64);
        AppendLe16(records, kVersionZip64);
        AppendLe32(records, 0);
        AppendLe32(records, 0);
        AppendLe64(records, count);
        AppendLe64(records, count);
        AppendLe64(records, directorySize);
        AppendLe64(records, directoryOffset);
        AppendLe32(records, kZip64LocatorSignature);
        AppendLe32(records, 0);
        AppendLe64(records, zip64Offset);
        AppendLe32(records, 1);
    }
    const uint16_t count16 = count >= kMax16 ? kMax16 : static_cast<uint16_t>(count);
    AppendLe32(records, kEndRecordSignature);
    AppendLe16(records, 0);
    AppendLe16(records, 0);
    AppendLe16(records, count16);
    AppendLe16(records, count16);
    AppendLe32(records, Clamp32(directorySize));
    AppendLe32(records, Clamp32(directoryOffset));
    AppendLe16(records, 0);  // comment
    append(records.data(), records.size());
}

void ZipWriter::finish() {
    drain(true);
    const uint64_t directoryOffset = bufferStart_ + buffer_.size();
    for (const Entry& entry : entries_) {
        writeCentralHeader(entry);
    }
    const uint64_t directorySize = bufferStart_ + buffer_.size() - directoryOffset;
    writeEndRecords(directoryOffset, directorySize);
    flush();
}

void ZipWriter::append(const uint8_t* data, size_t length) {
    if (buffer_.size() + length > kBufferLimit) {
        flush();
        if (length >= kBufferLimit) {
            out_.writeAt(bufferStart_, data, length);
            bufferStart_ += length;
            return;
        }
    }
    buffer_.insert(buffer_.end(), data, data + length);
}

void ZipWriter::patch(uint64_t offset, const uint8_t* data, size_t length) {
    if (offset >= bufferStart_) {
        std::copy(data, data + length,
                  buffer_.begin() + static_cast<std::ptrdiff_t>(offset - bufferStart_));
    } else {
        out_.writeAt(offset, data, length);
    }
}

void ZipWriter::flush() {
    if (!buffer_.empty()) {
        out_.writeAt(bufferStart_, buffer_.data(), buffer_.size());
        bufferStart_ += buffer_.size();
        buffer_.clear();
    }
}

}  // namespace archive
