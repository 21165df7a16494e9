// Telling text from pictures and other files by their first bytes and their names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foundation/mime_sniffing.h"
#include "foundation/picture_sniffing.h"
#include "foundation/text_detection.h"

namespace slib {
namespace {

std::string Mime(const std::string& bytes, const std::u16string& name) {
    return SniffMimeType(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), name);
}

std::string Png(uint32_t width, uint32_t height) {
    std::string png = "\x89PNG\r\n\x1A\n" + std::string("\0\0\0\x0DIHDR", 8);
    for (const uint32_t value : {width, height}) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            png += static_cast<char>(value >> shift & 0xFF);
        }
    }
    return png + std::string("\x08\x02\0\0\0", 5);
}

// SOI, an APP0 segment to skip, then a baseline frame header.
std::string Jpeg(uint16_t width, uint16_t height) {
    std::string jpeg("\xFF\xD8\xFF\xE0\x00\x06JFIF", 10);
    jpeg += std::string("\xFF\xC0\x00\x11\x08", 5);
    jpeg += {static_cast<char>(height >> 8), static_cast<char>(height & 0xFF),
             static_cast<char>(width >> 8), static_cast<char>(width & 0xFF)};
    return jpeg + std::string(12, '\0');
}

std::string Gif(uint16_t width, uint16_t height) {
    return std::string("GIF89a") + static_cast<char>(width & 0xFF) + static_cast<char>(width >> 8) +
           static_cast<char>(height & 0xFF) + static_cast<char>(height >> 8) + std::string(3, '\0');
}

std::string Bmp(int32_t width, int32_t height) {
    std::string bmp("BM", 2);
    bmp += std::string(12, '\0');
    auto le32 = [&bmp](uint32_t value) {
        for (int shift = 0; shift < 32; shift += 8) {
            bmp += static_cast<char>(value >> shift & 0xFF);
        }
    };
    le32(40);
    le32(static_cast<uint32_t>(width));
    le32(static_cast<uint32_t>(height));
    return bmp + std::string(28, '\0');
}

TEST(PictureSniffing, KindAndSizeFromTheHeader) {
    struct Row {
        std::string bytes;
        PictureKind kind;
        uint16_t width;
        uint16_t height;
    };
    for (const Row& row : {Row{Png(640, 480), PictureKind::kPng, 640, 480},
                           Row{Jpeg(1024, 768), PictureKind::kJpeg, 1024, 768},
                           Row{Gif(33, 17), PictureKind::kGif, 33, 17},
                           Row{Bmp(20, -30), PictureKind::kBmp, 20, 30},  // top-down rows
                           Row{std::string("II*\0", 4), PictureKind::kTiff, 0, 0},
                           Row{std::string("MM\0*", 4), PictureKind::kTiff, 0, 0},
                           // Too large for the host's 16-bit size: kind only.
                           Row{Png(40000, 10), PictureKind::kPng, 0, 0},
                           // A frame header beyond the bytes given: kind only.
                           Row{Jpeg(5, 5).substr(0, 14), PictureKind::kJpeg, 0, 0}}) {
        const auto facts =
            SniffPicture(reinterpret_cast<const uint8_t*>(row.bytes.data()), row.bytes.size());
        ASSERT_TRUE(facts.has_value()) << row.bytes.size();
        EXPECT_EQ(facts->kind, row.kind);
        EXPECT_EQ(facts->width, row.width);
        EXPECT_EQ(facts->height, row.height);
    }
    for (const std::string& other :
         {std::string("BMW is a car, not a bitmap picture header"), std::string("GIF8"),
          std::string("\x89PNG", 4), std::string()}) {
        EXPECT_FALSE(SniffPicture(reinterpret_cast<const uint8_t*>(other.data()), other.size()))
            << other;
    }
}

TEST(MimeSniffing, ContentFirstThenTextThenExtension) {
    struct Row {
        std::string bytes;
        std::u16string name;
        std::string type;
    };
    for (const Row& row : {
             Row{Png(1, 1), u"photo.txt", "image/png"},  // content beats the name
             Row{Jpeg(1, 1), u"noext", "image/jpeg"},
             Row{"%PDF-1.7\n...", u"a.bin", "application/pdf"},
             Row{std::string("PK\x03\x04", 4) + std::string(20, '\0'), u"a.docx",
                 "application/zip"},
             Row{"plain words\r\n", u"notes", "text/plain"},
             Row{"a,b\r\n1,2", u"data.CSV", "text/csv"},
             Row{"caf\xC3\xA9 \xE2\x82\xAC", u"utf8", "text/plain"},
             Row{"caf\xE9", u"latin1", "text/plain"},  // single-byte text is text too
             Row{"\xFF\xFE" + std::string("h\0i\0", 4), u"u16", "text/plain"},
             Row{"", u"empty.dat", "text/plain"},
             Row{std::string("\0\x01\x02", 3), u"blob.mp3", "audio/mpeg"},
             Row{std::string("\0\x01\x02", 3), u"dir.txt\\blob", "application/octet-stream"},
             Row{std::string("\0\x01\x02", 3), u"blob.txt", "text/plain"},
         }) {
        EXPECT_EQ(Mime(row.bytes, row.name), row.type)
            << std::string(row.name.begin(), row.name.end());
    }
}

TEST(TextDetection, Utf8ValidityAndByteOrderMarks) {
    struct Row {
        std::string bytes;
        bool valid;
    };
    for (const Row& row : {Row{"", true}, Row{"ascii", true}, Row{"\xC3\xA9", true},
                           Row{"\xF0\x9F\x98\x80", true}, Row{"\xC0\xAF", false},   // overlong
                           Row{"\xE0\x80\xAF", false}, Row{"\xED\xA0\x80", false},  // surrogate
                           Row{"\xF4\x90\x80\x80", false},                          // > U+10FFFF
                           Row{"\xC3", false}, Row{"\xE9t\xE9", false}, Row{"\x80", false}}) {
        EXPECT_EQ(IsValidUtf8(reinterpret_cast<const uint8_t*>(row.bytes.data()), row.bytes.size()),
                  row.valid);
    }
    const std::string cut = "ok \xE2\x82";
    EXPECT_TRUE(IsValidUtf8(reinterpret_cast<const uint8_t*>(cut.data()), cut.size(), true));

    const std::string marks[] = {"\xEF\xBB\xBFx", "\xFF\xFEx\0", "\xFE\xFF\0x", "x"};
    const ByteOrderMark expected[] = {ByteOrderMark::kUtf8, ByteOrderMark::kUtf16LittleEndian,
                                      ByteOrderMark::kUtf16BigEndian, ByteOrderMark::kNone};
    for (size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(DetectByteOrderMark(reinterpret_cast<const uint8_t*>(marks[index].data()),
                                      marks[index].size()),
                  expected[index]);
    }
}

}  // namespace
}  // namespace slib
