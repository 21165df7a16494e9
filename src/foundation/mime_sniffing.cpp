#include "foundation/mime_sniffing.h"

#include <cstring>

#include "foundation/picture_sniffing.h"
#include "foundation/text_detection.h"

namespace slib {

namespace {

struct Signature {
    size_t offset;
    const char* bytes;
    size_t length;
    const char* type;
};

const Signature kSignatures[] = {
    {0, "%PDF-", 5, "application/pdf"},
    {0, "PK\x03\x04", 4, "application/zip"},
    {0, "PK\x05\x06", 4, "application/zip"},
    {0, "\x1F\x8B", 2, "application/gzip"},
    {0, "7z\xBC\xAF\x27\x1C", 6, "application/x-7z-compressed"},
    {0, "Rar!\x1A\x07", 6, "application/vnd.rar"},
    {0, "{\\rtf", 5, "text/rtf"},
    {0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8, "application/x-ole-storage"},
    {0, "ID3", 3, "audio/mpeg"},
    {0, "OggS", 4, "audio/ogg"},
    {0, "fLaC", 4, "audio/flac"},
    {0, "MZ", 2, "application/vnd.microsoft.portable-executable"},
    {0, "\x00\x00\x01\x00", 4, "image/x-icon"},
    {4, "ftyp", 4, "video/mp4"},
    {0, "%!PS", 4, "application/postscript"},
    {0, "SQLite format 3", 15, "application/vnd.sqlite3"},
};

struct Extension {
    const char* extension;  // lower case, without the dot
    const char* type;
};

const Extension kExtensions[] = {
    {"txt", "text/plain"},
    {"text", "text/plain"},
    {"csv", "text/csv"},
    {"tab", "text/tab-separated-values"},
    {"tsv", "text/tab-separated-values"},
    {"htm", "text/html"},
    {"html", "text/html"},
    {"css", "text/css"},
    {"js", "text/javascript"},
    {"xml", "text/xml"},
    {"json", "text/json"},
    {"md", "text/markdown"},
    {"rtf", "text/rtf"},
    {"ics", "text/calendar"},
    {"vcf", "text/vcard"},
    {"log", "text/plain"},
    {"ini", "text/plain"},
    {"sql", "text/plain"},
    {"yaml", "text/yaml"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"png", "image/png"},
    {"gif", "image/gif"},
    {"bmp", "image/bmp"},
    {"tif", "image/tiff"},
    {"tiff", "image/tiff"},
    {"pdf", "application/pdf"},
    {"zip", "application/zip"},
    {"gz", "application/gzip"},
    {"mp3", "audio/mpeg"},
    {"wav", "audio/wav"},
    {"mp4", "video/mp4"},
    {"mov", "video/quicktime"},
    {"doc", "application/msword"},
    {"xls", "application/vnd.ms-excel"},
    {"docx", "application/vnd.openxmlformats-officedocument.wordprocessingml.document"},
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"fmp12", "application/x-filemaker"},
    {"exe", "application/vnd.microsoft.portable-executable"},
    {"dll", "application/vnd.microsoft.portable-executable"},
};

const char* PictureType(PictureKind kind) {
    switch (kind) {
        case PictureKind::kJpeg:
            return "image/jpeg";
        case PictureKind::kPng:
            return "image/png";
        case PictureKind::kGif:
            return "image/gif";
        case PictureKind::kBmp:
            return "image/bmp";
        case PictureKind::kTiff:
            return "image/tiff";
    }
    return "image/unknown";
}

// The lower-cased ASCII extension of the name's last component; empty when there is none or
// it holds other characters.
std::string ExtensionOf(std::u16string_view name) {
    const size_t dot = name.find_last_of(u'.');
    const size_t separator = name.find_last_of(u"/\\");
    if (dot == std::u16string_view::npos ||
        (separator != std::u16string_view::npos && separator > dot)) {
        return {};
    }
    std::string extension;
    for (const char16_t unit : name.substr(dot + 1)) {
        if (unit >= 128) {
            return {};
        }
        const char c = static_cast<char>(unit);
        extension += (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return extension;
}

const char* ExtensionType(std::u16string_view name) {
    const std::string extension = ExtensionOf(name);
    for (const Extension& entry : kExtensions) {
        if (extension == entry.extension) {
            return entry.type;
        }
    }
    return nullptr;
}

bool IsText(const uint8_t* head, size_t size) {
    if (DetectByteOrderMark(head, size) != ByteOrderMark::kNone) {
        return true;
    }
    // Control-free bytes are text whatever their encoding: UTF-8 and single-byte code pages alike.
    return LooksLikeText(head, size);
}

}  // namespace

std::string SniffMimeType(const uint8_t* head, size_t size, std::u16string_view fileName) {
    if (size == 0) {
        return "text/plain";
    }
    if (const std::optional<PictureFacts> picture = SniffPicture(head, size)) {
        return PictureType(picture->kind);
    }
    for (const Signature& signature : kSignatures) {
        if (size >= signature.offset + signature.length &&
            std::memcmp(head + signature.offset, signature.bytes, signature.length) == 0) {
            return signature.type;
        }
    }
    const char* byExtension = ExtensionType(fileName);
    if (IsText(head, size)) {
        const bool textExtension =
            byExtension != nullptr && std::strncmp(byExtension, "text/", 5) == 0;
        return textExtension ? byExtension : "text/plain";
    }
    return byExtension != nullptr ? byExtension : "application/octet-stream";
}

}  // namespace slib
