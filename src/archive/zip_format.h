#pragma once
// Record signatures, fixed sizes and field limits of the zip format (the APPNOTE's layout).

#include <cstdint>

namespace archive {

constexpr uint32_t kLocalHeaderSignature = 0x04034b50;
constexpr uint32_t kCentralHeaderSignature = 0x02014b50;
constexpr uint32_t kEndRecordSignature = 0x06054b50;
constexpr uint32_t kZip64EndRecordSignature = 0x06064b50;
constexpr uint32_t kZip64LocatorSignature = 0x07064b50;

constexpr uint32_t kLocalHeaderSize = 30;
constexpr uint32_t kCentralHeaderSize = 46;
constexpr uint32_t kEndRecordSize = 22;
constexpr uint32_t kZip64EndRecordSize = 56;
constexpr uint32_t kZip64LocatorSize = 20;

constexpr uint16_t kZip64ExtraId = 0x0001;
constexpr uint16_t kNtfsExtraId = 0x000A;
constexpr uint16_t kNtfsTimesTag = 0x0001;  // inside 0x000A: modified, accessed, created
constexpr uint16_t kTimestampExtraId = 0x5455;
constexpr uint16_t kUnicodePathExtraId = 0x7075;

constexpr uint16_t kMethodStored = 0;
constexpr uint16_t kMethodDeflated = 8;
constexpr uint16_t kMethodDeflate64 = 9;
constexpr uint16_t kMethodBzip2 = 12;
constexpr uint16_t kMethodLzma = 14;
constexpr uint16_t kMethodZstandard = 93;
constexpr uint16_t kMethodXz = 95;
constexpr uint16_t kMethodPpmd = 98;
constexpr uint16_t kMethodAes = 99;  // WinZip's encryption, the real method inside

constexpr uint16_t kFlagEncrypted = 1 << 0;
constexpr uint16_t kFlagDataDescriptor = 1 << 3;
constexpr uint16_t kFlagStrongEncryption = 1 << 6;
constexpr uint16_t kFlagUtf8Name = 1 << 11;

// "Version needed to extract": 2.0 for deflate and folders, 4.5 once ZIP64 fields appear.
constexpr uint16_t kVersionDeflate = 20;
constexpr uint16_t kVersionZip64 = 45;

constexpr uint16_t kMax16 = 0xFFFF;
constexpr uint32_t kMax32 = 0xFFFFFFFF;

// Upper byte of "version made by": the system whose conventions the names and attributes follow.
constexpr uint8_t kHostUnix = 3;
constexpr uint8_t kHostMacOs = 19;

constexpr uint32_t kDosAttributeReadOnly = 0x01;
constexpr uint32_t kDosAttributeHidden = 0x02;
constexpr uint32_t kDosAttributeFolder = 0x10;
constexpr uint32_t kDosAttributeArchive = 0x20;

}  // namespace archive
