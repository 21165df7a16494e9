#include "bridge/encoding_keywords.h"

#include <string>

#include "shell/host_text.h"
#include "shell/keyword_lookup.h"

namespace bridge {

const char* const kEncodingKeywords[encoding::kCount] = {
    "default",
    "utf-8",
    "dos",
    "windows-1252",
    "x-mac-roman",
    "iso-8859-1",
    "x-mac-japanese",
    "euc-jp",
    "x-mac-korean",
    "euc-kr",
    "johab",
    "x-mac-chinesetrad",
    "big5",
    "x-mac-chinesesimp",
    "gb2312",
    "x-mac-cyrillic",
    "windows-1251",
    "iso-8859-5",
    "x-mac-centraleurroman",
    "windows-1250",
    "iso-8859-2",
    "x-mac-turkish",
    "windows-1254",
    "iso-8859-3",
    "iso-8859-9",
    "windows-1257",
    "iso-8859-4",
    "x-mac-arabic",
    "windows-1256",
    "iso-8859-6",
    "x-mac-greek",
    "windows-1253",
    "iso-8859-7",
    "x-mac-hebrew",
    "windows-1255",
    "iso-8859-8",
    "iso-8859-15",
    "utf-16",
    "rtf",
    "hex-dump",
    "base64",
    "image",
    "image/gif",
    "gif",
    "image/png",
    "png",
    "image/jpeg",
    "jpeg",
    "image/tiff",
    "tiff",
    "image/x-pict",
    "x-pict",
    "image/bmp",
    "bmp",
    "file",
};

namespace {

bool IsBlank(char16_t unit) {
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

// The host's lookup, on the text without its surrounding blanks.
int32_t LookupTrimmed(const FmxText& text, const char* const* table, size_t count) {
    std::u16string units = fmlib::TextUnits(text);
    size_t end = units.size();
    while (end > 0 && IsBlank(units[end - 1])) {
        --end;
    }
    size_t begin = 0;
    while (begin < end && IsBlank(units[begin])) {
        ++begin;
    }
    if (begin == 0 && end == units.size()) {
        return fmlib::LookupKeyword(text, table, count);
    }
    const fmlib::TextPtr trimmed = fmlib::MakeText(units.substr(begin, end - begin));
    return fmlib::LookupKeyword(*trimmed, table, count);
}

}  // namespace

bool PictureKeywordAccepts(int32_t keyword, slib::PictureKind kind) {
    switch (keyword) {
        case encoding::kImage:
            return true;
        case 42:  // "image/gif", "gif"
        case 43:
            return kind == slib::PictureKind::kGif;
        case 44:  // "image/png", "png"
        case 45:
            return kind == slib::PictureKind::kPng;
        case 46:  // "image/jpeg", "jpeg"
        case 47:
            return kind == slib::PictureKind::kJpeg;
        case 48:  // "image/tiff", "tiff"
        case 49:
            return kind == slib::PictureKind::kTiff;
        case 52:  // "image/bmp", "bmp"
        case 53:
            return kind == slib::PictureKind::kBmp;
        default:
            return false;
    }
}

int32_t MatchEncoding(const FmxText& keyword) {
    return LookupTrimmed(keyword, kEncodingKeywords, encoding::kCount);
}

bool MatchesAll(const FmxText& word) {
    static const char* const kAll[] = {"all"};
    return LookupTrimmed(word, kAll, 1) == 0;
}

}  // namespace bridge
