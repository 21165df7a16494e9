// The encoding keywords of VFile_Read and VFile_Write. A keyword's place in the table is its
// encoding number; the number selects the conversion.
#pragma once

#include <cstdint>

#include "fmx_functions.h"
#include "foundation/picture_sniffing.h"

namespace bridge {

namespace encoding {
constexpr int32_t kNone = -1;      // no keyword given (or, for writing, none matched)
constexpr int32_t kFirstText = 0;  // 0..36: the host's own text encodings, same numbers
constexpr int32_t kUtf8 = 1;
constexpr int32_t kLastText = 36;
constexpr int32_t kUtf16 = 37;  // UTF-16 LE code units, no byte-order mark
constexpr int32_t kRtf = 38;
constexpr int32_t kHexDump = 39;
constexpr int32_t kBase64 = 40;
constexpr int32_t kImage = 41;         // any picture
constexpr int32_t kFirstPicture = 41;  // 41..53: picture keywords
constexpr int32_t kLastPicture = 53;
constexpr int32_t kFile = 54;
constexpr int32_t kCount = 55;
}  // namespace encoding

extern const char* const kEncodingKeywords[encoding::kCount];

inline bool IsTextEncoding(int32_t number) {
    return number >= encoding::kFirstText && number <= encoding::kLastText;
}
inline bool IsPictureEncoding(int32_t number) {
    return number >= encoding::kFirstPicture && number <= encoding::kLastPicture;
}

// Whether a picture keyword (41..53) accepts a picture of that kind: "image" any, "gif" and
// "image/gif" GIF, and so on; "x-pict" and "image/x-pict" none (no PICT is recognised).
bool PictureKeywordAccepts(int32_t keyword, slib::PictureKind kind);

// The keyword's number, matched without regard to case or surrounding blanks; -1 for none.
int32_t MatchEncoding(const FmxText& keyword);
// True for the word "all" (VFile_Read's unlimited length), with the same matching.
bool MatchesAll(const FmxText& word);

}  // namespace bridge
