// Parts deflated on their own must join into one stream that any inflater reads back as the
// parts' bytes in order: zlib streaming, and libdeflate in one call, as the two unpacking paths
// do. Many parts of mixed kinds and sizes end on every possible bit of their last byte.
#include <gtest/gtest.h>
#include <libdeflate.h>
#include <zlib.h>

#include <random>
#include <string>
#include <vector>

#include "archive/joinable_deflate.h"
#include "archive_test_support.h"

namespace archive_test {
namespace {

using Bytes = std::vector<uint8_t>;

Bytes ZlibInflate(const Bytes& stream, size_t expected) {
    z_stream inflater = {};
    EXPECT_EQ(inflateInit2(&inflater, -MAX_WBITS), Z_OK);
    Bytes out(expected + 1);
    inflater.next_in = const_cast<uint8_t*>(stream.data());
    inflater.avail_in = static_cast<uInt>(stream.size());
    inflater.next_out = out.data();
    inflater.avail_out = static_cast<uInt>(out.size());
    const int result = inflate(&inflater, Z_FINISH);
    EXPECT_EQ(result, Z_STREAM_END);
    EXPECT_EQ(inflater.avail_in, 0u) << "bytes after the stream's end";
    out.resize(inflater.total_out);
    inflateEnd(&inflater);
    return out;
}

Bytes LibdeflateInflate(const Bytes& stream, size_t expected) {
    libdeflate_decompressor* decompressor = libdeflate_alloc_decompressor();
    Bytes out(expected);
    size_t consumed = 0;
    size_t produced = 0;
    EXPECT_EQ(libdeflate_deflate_decompress_ex(decompressor, stream.data(), stream.size(),
                                               out.data(), out.size(), &consumed, &produced),
              LIBDEFLATE_SUCCESS);
    libdeflate_free_decompressor(decompressor);
    EXPECT_EQ(consumed, stream.size());
    out.resize(produced);
    return out;
}

std::string Part(std::mt19937& random, size_t size) {
    switch (random() % 4) {
        case 0:
            return Text(size, random());
        case 1:
            return Noise(size, random());  // libdeflate stores it
        case 2:
            return std::string(size, 'z');  // long matches
        default:
            return std::string(size, static_cast<char>(random()));
    }
}

TEST(JoinableDeflate, PartsJoinIntoOneStreamThatEveryInflaterReadsBack) {
    std::mt19937 random(20261125);
    archive::JoinableDeflater deflater(6);
    for (int round = 0; round < 6; ++round) {
        std::string whole;
        Bytes joined;
        Bytes output;
        const int parts = 1 + round * 7;
        for (int part = 0; part < parts; ++part) {
            const bool last = part + 1 == parts;
            // Tiny parts make one fixed-code block; large ones several dynamic blocks.
            const size_t size =
                last && round == 1 ? 0 : 1 + random() % (part % 3 == 0 ? 40 : 400000);
            const std::string bytes = Part(random, size);
            const size_t length = deflater.deflate(reinterpret_cast<const uint8_t*>(bytes.data()),
                                                   bytes.size(), last, output);
            ASSERT_NE(length, 0u);
            joined.insert(joined.end(), output.begin(), output.begin() + length);
            whole += bytes;
        }
        const Bytes expected(whole.begin(), whole.end());
        EXPECT_EQ(ZlibInflate(joined, whole.size()), expected) << "round " << round;
        EXPECT_EQ(LibdeflateInflate(joined, whole.size()), expected) << "round " << round;
    }
}

}  // namespace
}  // namespace archive_test
