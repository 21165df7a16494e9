#include "archive/zip_reader.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "archive/archive_failures.h"
#include "archive/byte_order.h"
#include "archive/raw_inflater.h"
#include "archive/zip_format.h"
#include "foundation/exception.h"

namespace archive {

namespace {

constexpr size_t kChunkSize = 256 * 1024;
// A decoder's buffers beyond this were grown for one large entry and are not kept for the next.
constexpr size_t kLargestKeptBuffer = 1024 * 1024;
constexpr size_t kWindowSize = 256 * 1024;
// How far from the end the end record is looked for: its largest comment, plus as much
// trailing junk again.
constexpr uint64_t kEndSearchSpan = kEndRecordSize + 0xFFFF + 0x10000;

// Raw inflate state for one entry.
bool AddWithin(uint64_t a, uint64_t b, uint64_t limit, uint64_t& sum) {
    if (a > limit || b > limit - a) {
        return false;
    }
    sum = a + b;
    return true;
}

constexpr size_t kLongestNamePart = 255;  // characters in one file or folder name

std::string MethodName(uint16_t method) {
    const char* name = nullptr;
    switch (method) {
        case kMethodDeflate64:
            name = "Deflate64";
            break;
        case kMethodBzip2:
            name = "BZip2";
            break;
        case kMethodLzma:
            name = "LZMA";
            break;
        case kMethodZstandard:
            name = "Zstandard";
            break;
        case kMethodXz:
            name = "XZ";
            break;
        case kMethodPpmd:
            name = "PPMd";
            break;
        default:
            return std::to_string(method);
    }
    return std::string(name) + " (" + std::to_string(method) + ")";
}

// The NTFS field: four reserved bytes, then tagged attributes; tag 1 holds the modification,
// access and creation times, of which the first is kept.
void ReadNtfsTimes(const uint8_t* field, size_t size, EntryTime& time) {
    for (size_t at = 4; at + 4 <= size;) {
        const uint16_t tag = LoadLe16(field + at);
        const size_t length = LoadLe16(field + at + 2);
        if (length > size - at - 4) {
            return;
        }
        if (tag == kNtfsTimesTag && length >= 8) {
            time.hasFileTime = true;
            time.fileTime = LoadLe64(field + at + 4);
            return;
        }
        at += 4 + length;
    }
}

// CRC and size of the bytes written so far, checked against the entry's claims as they arrive.
class VerifiedOutput {
  public:
    VerifiedOutput(const ArchiveEntry& entry, EntryFile& file) : entry_(entry), file_(file) {}
    void write(const uint8_t* data, size_t length) {
        if (length > entry_.uncompressed - written_) {
            FailEntryNotExtracted();  // more data than the entry claims
        }
        crc_ = libdeflate_crc32(crc_, data, length);
        written_ += length;
        file_.write(data, length);
    }
    // A stream may end before the size its headers claim: its CRC then says whether it is whole.
    void finish() const {
        if (crc_ != entry_.crc) {
            FailEntryNotExtracted();
        }
    }

  private:
    const ArchiveEntry& entry_;
    EntryFile& file_;
    uint64_t written_ = 0;
    uint32_t crc_ = 0;
};

// The directory an end record describes, or nothing when the record only looks like one. Bytes
// in front of the archive (a self-extractor's stub) whose offsets were not adjusted show as the
// directory ending before the record that follows it: the difference is applied to every offset
// when the directory is really found there.
std::optional<DirectoryLocation> ReadEndRecords(ByteSource& source, const uint8_t* record,
                                                uint64_t recordOffset) {
    uint64_t disk = LoadLe16(record + 4);
    uint64_t directoryDisk = LoadLe16(record + 6);
    uint64_t onDisk = LoadLe16(record + 8);
    uint64_t total = LoadLe16(record + 10);
    uint64_t directorySize = LoadLe32(record + 12);
    uint64_t directoryOffset = LoadLe32(record + 16);
    uint64_t directoryLimit = recordOffset;
    if (recordOffset >= kZip64LocatorSize) {
        uint8_t locator[kZip64LocatorSize];
        uint8_t zip64[kZip64EndRecordSize];
        const uint64_t locatorOffset = recordOffset - kZip64LocatorSize;
        if (source.readAt(locatorOffset, locator, sizeof locator) &&
            LoadLe32(locator) == kZip64LocatorSignature) {
            auto zip64At = [&](uint64_t offset) {
                return offset <= locatorOffset && locatorOffset - offset >= kZip64EndRecordSize &&
                       source.readAt(offset, zip64, sizeof zip64) &&
                       LoadLe32(zip64) == kZip64EndRecordSignature;
            };
            // Behind a stub the locator's offset is short by the stub's size; the record then
            // lies right before the locator, where it usually is.
            uint64_t zip64Offset = LoadLe64(locator + 8);
            if (!zip64At(zip64Offset)) {
                zip64Offset =
                    locatorOffset - std::min<uint64_t>(locatorOffset, kZip64EndRecordSize);
                if (!zip64At(zip64Offset)) {
                    return std::nullopt;
                }
            }
            disk = LoadLe32(zip64 + 16);
            directoryDisk = LoadLe32(zip64 + 20);
            onDisk = LoadLe64(zip64 + 24);
            total = LoadLe64(zip64 + 32);
            directorySize = LoadLe64(zip64 + 40);
            directoryOffset = LoadLe64(zip64 + 48);
            directoryLimit = zip64Offset;
        }
    }
    uint64_t directoryEnd = 0;
    if (disk != 0 || directoryDisk != 0 ||
        !AddWithin(directoryOffset, directorySize, directoryLimit, directoryEnd)) {
        return std::nullopt;  // a spanned archive, or a record that only looks like one
    }
    DirectoryLocation location{directoryOffset, directoryEnd, onDisk, total};
    const uint64_t shift = directoryLimit - directoryEnd;
    uint8_t signature[4];
    if (shift != 0 && directorySize >= sizeof signature &&
        source.readAt(directoryOffset + shift, signature, sizeof signature) &&
        LoadLe32(signature) == kCentralHeaderSignature) {
        location.offset += shift;
        location.end += shift;
        location.shift = shift;
    }
    return location;
}

}  // namespace

std::optional<DirectoryLocation> FindCentralDirectory(ByteSource& source) {
    const uint64_t size = source.size();
    if (size < kEndRecordSize) {
        return std::nullopt;
    }
    const uint64_t span = std::min<uint64_t>(size, kEndSearchSpan);
    const uint64_t base = size - span;
    std::vector<uint8_t> tail(static_cast<size_t>(span));
    if (!source.readAt(base, tail.data(), tail.size())) {
        return std::nullopt;
    }
    // A record whose comment fits in the file wins; only then one whose comment-length field
    // runs past the end (other tools read such archives, taking the comment as what is there).
    for (const bool commentMustFit : {true, false}) {
        for (size_t at = tail.size() - kEndRecordSize + 1; at-- > 0;) {
            const uint8_t* record = tail.data() + at;
            if (LoadLe32(record) != kEndRecordSignature) {
                continue;
            }
            const uint64_t recordOffset = base + at;
            if (commentMustFit && recordOffset + kEndRecordSize + LoadLe16(record + 20) > size) {
                continue;
            }
            if (std::optional<DirectoryLocation> location =
                    ReadEndRecords(source, record, recordOffset)) {
                return location;
            }
        }
    }
    return std::nullopt;
}

ZipReader::ZipReader(ByteSource& source, OemDecoder decodeOem)
    : source_(source), decodeOem_(decodeOem) {
    const std::optional<DirectoryLocation> directory = FindCentralDirectory(source);
    if (!directory) {
        FailArchiveNotOpened();
    }
    directory_ = *directory;
    cursor_ = directory_.offset;
}

uint64_t ZipReader::entryCount() const {
    if (directory_.entriesOnDisk != directory_.entryCount ||
        directory_.entryCount > (directory_.end - directory_.offset) / kCentralHeaderSize) {
        FailEntryCountUnreadable();
    }
    return directory_.entryCount;
}

bool ZipReader::readCached(uint64_t offset, uint8_t* buffer, size_t length) {
    if (length > kWindowSize) {
        return source_.readAt(offset, buffer, length);
    }
    if (window_.empty() || offset < windowOffset_ || offset - windowOffset_ > window_.size() ||
        window_.size() - (offset - windowOffset_) < length) {
        const uint64_t available = directory_.end - std::min(offset, directory_.end);
        window_.resize(static_cast<size_t>(std::min<uint64_t>(kWindowSize, available)));
        windowOffset_ = offset;
        if (window_.size() < length || !source_.readAt(offset, window_.data(), window_.size())) {
            window_.clear();
            return false;
        }
    }
    std::memcpy(buffer, window_.data() + (offset - windowOffset_), length);
    return true;
}

ArchiveEntry ZipReader::readEntry() {
    uint8_t header[kCentralHeaderSize];
    uint64_t fixedEnd = 0;
    if (!AddWithin(cursor_, kCentralHeaderSize, directory_.end, fixedEnd) ||
        !readCached(cursor_, header, sizeof header) ||
        LoadLe32(header) != kCentralHeaderSignature) {
        FailEntryUnreadable();
    }
    const size_t nameLength = LoadLe16(header + 28);
    const size_t extraLength = LoadLe16(header + 30);
    const size_t commentLength = LoadLe16(header + 32);
    uint64_t entryEnd = 0;
    if (!AddWithin(fixedEnd, nameLength + extraLength + commentLength, directory_.end, entryEnd)) {
        FailEntryUnreadable();
    }
    std::vector<uint8_t> variable(nameLength + extraLength);
    if (!variable.empty() && !readCached(fixedEnd, variable.data(), variable.size())) {
        FailEntryUnreadable();
    }
    cursor_ = entryEnd;

    ArchiveEntry entry;
    entry.flags = LoadLe16(header + 8);
    entry.method = LoadLe16(header + 10);
    entry.time.dosTime = LoadLe16(header + 12);
    entry.time.dosDate = LoadLe16(header + 14);
    entry.crc = LoadLe32(header + 16);
    entry.compressed = LoadLe32(header + 20);
    entry.uncompressed = LoadLe32(header + 24);
    entry.localOffset = LoadLe32(header + 42);
    const uint32_t external = LoadLe32(header + 38);
    entry.time.attributes =
        static_cast<uint8_t>(external & (kDosAttributeReadOnly | kDosAttributeHidden));
    if (header[5] == kHostUnix) {
        entry.time.unixMode = static_cast<uint16_t>(external >> 16);
    }

    const uint8_t* extra = variable.data() + nameLength;
    std::optional<std::string_view> unicodeName;
    bool hasZip64Extra = false;
    uint32_t unicodeNameCrc = 0;
    for (size_t at = 0; at + 4 <= extraLength;) {
        const uint16_t id = LoadLe16(extra + at);
        const size_t size = LoadLe16(extra + at + 2);
        const uint8_t* field = extra + at + 4;
        if (size > extraLength - at - 4) {
            break;  // a damaged tail of the extra data; what came before stands
        }
        if (id == kZip64ExtraId) {
            hasZip64Extra = true;
            size_t used = 0;
            for (uint64_t* value : {&entry.uncompressed, &entry.compressed, &entry.localOffset}) {
                if (*value != kMax32) {
                    continue;
                }
                if (size - used < 8) {
                    FailEntryUnreadable();
                }
                *value = LoadLe64(field + used);
                used += 8;
            }
        } else if (id == kUnicodePathExtraId && size >= 5 && field[0] == 1) {
            unicodeName = std::string_view(reinterpret_cast<const char*>(field + 5), size - 5);
            unicodeNameCrc = LoadLe32(field + 1);
        } else if (id == kTimestampExtraId && size >= 5 && (field[0] & 1) != 0) {
            entry.time.hasUnixTime = true;
            entry.time.unixTime = static_cast<int32_t>(LoadLe32(field + 1));
        } else if (id == kNtfsExtraId) {
            ReadNtfsTimes(field, size, entry.time);
        }
        at += 4 + size;
    }

    if (!hasZip64Extra && (entry.compressed == kMax32 || entry.uncompressed == kMax32 ||
                           entry.localOffset == kMax32)) {
        FailEntryUnreadable();  // a ZIP64 marker without the ZIP64 field
    }
    // Offsets count from the archive's start, wherever a stub in front moved it to (an offset
    // pushed out of range fails where it is used).
    entry.localOffset += std::min(directory_.shift, UINT64_MAX - entry.localOffset);

    const std::string_view rawName(reinterpret_cast<const char*>(variable.data()), nameLength);
    entry.folder = !rawName.empty() && (rawName.back() == '/' || rawName.back() == '\\');
    // Info-ZIP keeps the UTF-8 form of a name it could not flag as UTF-8 in an extra field, valid
    // only while the CRC of the stored name still matches.
    const bool unicodeNameHolds =
        unicodeName && crc32(0, variable.data(), static_cast<uInt>(nameLength)) == unicodeNameCrc;
    // Unix tools store names in the user's encoding, UTF-8 nowadays, without setting bit 11; the
    // OEM code page is right only for names from DOS and Windows.
    const uint8_t madeBy = header[5];
    const bool utf8 = (entry.flags & kFlagUtf8Name) != 0 ||
                      ((madeBy == kHostUnix || madeBy == kHostMacOs) && IsUtf8(rawName));
    entry.name =
        SanitiseEntryName(unicodeNameHolds ? DecodeStoredName(*unicodeName, true, decodeOem_)
                                           : DecodeStoredName(rawName, utf8, decodeOem_));
    return entry;
}

void ZipReader::claimSpan(uint64_t start, uint64_t end) {
    auto next = spans_.upper_bound(start);
    if (next != spans_.end() && next->first < end) {
        FailEntryNotExtracted();
    }
    auto previous = next == spans_.begin() ? spans_.end() : std::prev(next);
    if (previous != spans_.end() && previous->second > start) {
        FailEntryNotExtracted();
    }
    // Entries usually follow each other without a gap: joined spans keep the map small however
    // many entries the archive has.
    if (next != spans_.end() && next->first == end) {
        end = next->second;
        spans_.erase(next);
    }
    if (previous != spans_.end() && previous->second == start) {
        previous->second = end;
    } else {
        spans_.emplace(start, end);
    }
}

EntryData ZipReader::locateData(ArchiveEntry& entry) {
    if ((entry.flags & (kFlagEncrypted | kFlagStrongEncryption)) != 0 ||
        entry.method == kMethodAes) {
        FailEntryRefused(entry.name, "it is encrypted, and encrypted entries cannot be unpacked");
    }
    if (entry.method != kMethodStored && entry.method != kMethodDeflated) {
        FailEntryRefused(entry.name, "its compression method " + MethodName(entry.method) +
                                         " is not supported (only stored and deflated are)");
    }
    if (entry.name.find(u'\0') != std::u16string::npos) {
        FailEntryRefused(entry.name, "its name holds a NUL character");
    }
    std::optional<RelativePath> path = ResolveInsideFolder(entry.name);
    if (!path || (!entry.folder && path->empty())) {
        FailEntryNotExtracted();
    }
    for (const std::u16string& part : *path) {
        if (part.size() > kLongestNamePart) {
            FailEntryRefused(entry.name, "a part of its name is longer than the " +
                                             std::to_string(kLongestNamePart) +
                                             " characters Windows allows");
        }
    }
    EntryData data;
    data.path = std::move(*path);
    if (entry.folder) {
        return data;
    }

    // Entry data lies before the central directory and nowhere else. Its sizes may claim more
    // than the data holds: the decoder then goes by the stream's end, or for a stored entry by
    // the smaller size, and the CRC.
    uint8_t header[kLocalHeaderSize];
    uint64_t dataEnd = 0;
    if (!AddWithin(entry.localOffset, kLocalHeaderSize, directory_.offset, data.start) ||
        !source_.readAt(entry.localOffset, header, sizeof header) ||
        LoadLe32(header) != kLocalHeaderSignature ||
        !AddWithin(data.start, uint64_t{LoadLe16(header + 26)} + LoadLe16(header + 28),
                   directory_.offset, data.start)) {
        FailEntryNotExtracted();
    }
    settleCompressedSize(entry, header, data.start);
    if (!AddWithin(data.start, entry.compressed, directory_.offset, dataEnd)) {
        FailEntryNotExtracted();
    }
    claimSpan(entry.localOffset, std::max(dataEnd, entry.localOffset + 1));
    return data;
}

void ZipReader::settleCompressedSize(ArchiveEntry& entry, const uint8_t* localHeader,
                                     uint64_t dataStart) {
    // Only a smaller compressed size in the local header, of an entry without a data descriptor
    // (whose local sizes are not its own), and only a central one that stays within the archive.
    const uint64_t local = LoadLe32(localHeader + 18);
    if ((LoadLe16(localHeader + 6) & kFlagDataDescriptor) != 0 || local >= entry.compressed ||
        local == kMax32 || entry.compressed > source_.size() - dataStart) {
        return;
    }
    const uint64_t limit = nextHeaderAfter(entry.localOffset);
    if (dataStart + entry.compressed > limit && dataStart + local <= limit) {
        entry.compressed = local;
    }
}

uint64_t ZipReader::nextHeaderAfter(uint64_t localOffset) {
    if (!localOffsetsRead_) {
        localOffsetsRead_ = true;
        // A reader of its own goes through the directory once; a damaged header ends the list,
        // and the entries it leaves out fail where they are met.
        try {
            ZipReader scan(source_, decodeOem_);
            const uint64_t count = scan.entryCount();
            for (uint64_t index = 0; index < count; ++index) {
                localOffsets_.push_back(scan.readEntry().localOffset);
            }
        } catch (const slib::Exception&) {
        }
        std::sort(localOffsets_.begin(), localOffsets_.end());
    }
    const auto next = std::upper_bound(localOffsets_.begin(), localOffsets_.end(), localOffset);
    return next == localOffsets_.end() ? directory_.offset : std::min(*next, directory_.offset);
}

void ZipReader::readData(const ArchiveEntry& entry, const EntryData& data,
                         std::vector<uint8_t>& bytes) {
    bytes.resize(static_cast<size_t>(entry.compressed));
    if (!bytes.empty() && !source_.readAt(data.start, bytes.data(), bytes.size())) {
        FailEntryNotExtracted();
    }
}

void ZipReader::extractEntry(ArchiveEntry entry, ExtractTarget& target) {
    const EntryData data = locateData(entry);
    if (entry.folder) {
        target.makeFolder(data.path);
        return;
    }
    std::unique_ptr<EntryFile> file = target.createFile(data.path);
    decoder_.decode(entry, source_, data.start, *file);
    file->commit(entry.time);
}

void EntryDecoder::decode(const ArchiveEntry& entry, ByteSource& source, uint64_t start,
                          EntryFile& file) {
    if (entry.method == kMethodStored) {
        input_.resize(kChunkSize);
        copyStored(entry, source, start, file);
    } else if (DecodesWhole(entry)) {
        inflateWhole(entry, source, start, file);
        if (output_.capacity() > kLargestKeptBuffer || input_.capacity() > kLargestKeptBuffer) {
            output_ = {};
            input_ = {};
        }
    } else {
        input_.resize(kChunkSize);
        output_.resize(kChunkSize);
        inflateData(entry, source, start, file);
    }
}

bool EntryDecoder::DecodesWhole(const ArchiveEntry& entry) {
    return entry.compressed <= kWholeEntryLimit &&
           (entry.method == kMethodStored || entry.uncompressed <= kWholeEntryLimit);
}

size_t EntryDecoder::WholeEntryBytes(const ArchiveEntry& entry) {
    const uint64_t decoded = entry.method == kMethodStored ? 0 : entry.uncompressed;
    return static_cast<size_t>(entry.compressed + decoded);
}

void EntryDecoder::inflateWhole(const ArchiveEntry& entry, ByteSource& source, uint64_t dataStart,
                                EntryFile& file) {
    if (!decompressor_) {
        decompressor_.reset(libdeflate_alloc_decompressor());
        if (!decompressor_) {
            FailEntryNotExtracted();
        }
    }
    const size_t compressed = static_cast<size_t>(entry.compressed);
    input_.resize(std::max<size_t>(compressed, 1));
    output_.resize(std::max<size_t>(static_cast<size_t>(entry.uncompressed), 1));
    if (compressed != 0 && !source.readAt(dataStart, input_.data(), compressed)) {
        FailEntryNotExtracted();
    }
    // The stream must end within the entry's compressed bytes, and its output may not outgrow
    // the declared size (libdeflate stops there and says so).
    size_t consumed = 0;
    size_t produced = 0;
    if (libdeflate_deflate_decompress_ex(decompressor_.get(), input_.data(), compressed,
                                         output_.data(), static_cast<size_t>(entry.uncompressed),
                                         &consumed, &produced) != LIBDEFLATE_SUCCESS) {
        FailEntryNotExtracted();
    }
    VerifiedOutput output(entry, file);
    output.write(output_.data(), produced);
    output.finish();
}

void EntryDecoder::copyStored(const ArchiveEntry& entry, ByteSource& source, uint64_t dataStart,
                              EntryFile& file) {
    // Without a stream end of its own, a stored entry is as long as the smaller of its sizes
    // says; the CRC decides whether that is all of it.
    const uint64_t size = std::min(entry.compressed, entry.uncompressed);
    VerifiedOutput output(entry, file);
    for (uint64_t done = 0; done < size;) {
        const size_t length = static_cast<size_t>(std::min<uint64_t>(kChunkSize, size - done));
        if (!source.readAt(dataStart + done, input_.data(), length)) {
            FailEntryNotExtracted();
        }
        output.write(input_.data(), length);
        done += length;
    }
    output.finish();
}

void EntryDecoder::inflateData(const ArchiveEntry& entry, ByteSource& source, uint64_t dataStart,
                               EntryFile& file) {
    RawInflater inflater;
    if (!inflater.ready()) {
        FailEntryNotExtracted();
    }
    z_stream& stream = inflater.stream();
    VerifiedOutput output(entry, file);
    uint64_t consumed = 0;  // bytes handed to zlib so far
    for (;;) {
        if (stream.avail_in == 0 && consumed < entry.compressed) {
            const size_t length =
                static_cast<size_t>(std::min<uint64_t>(kChunkSize, entry.compressed - consumed));
            if (!source.readAt(dataStart + consumed, input_.data(), length)) {
                FailEntryNotExtracted();
            }
            stream.next_in = input_.data();
            stream.avail_in = static_cast<uInt>(length);
            consumed += length;
        }
        stream.next_out = output_.data();
        stream.avail_out = static_cast<uInt>(output_.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        output.write(output_.data(), output_.size() - stream.avail_out);
        if (result == Z_STREAM_END) {
            break;
        }
        // Z_BUF_ERROR means no progress was possible: only when the input has run out.
        if (result != Z_OK &&
            !(result == Z_BUF_ERROR && stream.avail_in == 0 && consumed < entry.compressed)) {
            FailEntryNotExtracted();
        }
    }
    output.finish();
}

}  // namespace archive
