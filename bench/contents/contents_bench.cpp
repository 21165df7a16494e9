// Speed of the "base64" and "hex-dump" conversions on 100 MB, beside the emulated host's own
// Base64Encode/Base64Decode of the same bytes as the reference. Run (optimised, no sanitizers):
//   cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF
//   cmake --build build/bench --target contents_bench && build/bench/bin/contents_bench
// Target: at least 300 MB/s for each of the four conversions.
#include <chrono>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "core/base64.h"
#include "foundation/base64.h"
#include "foundation/hex_dump.h"

namespace {

constexpr size_t kSize = 100u << 20;

template <typename Action>
double MegabytesPerSecond(Action&& action) {
    double best = 0;
    for (int round = 0; round < 3; ++round) {
        const auto start = std::chrono::steady_clock::now();
        action();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        best = std::max(best, kSize / 1e6 / took.count());
    }
    return best;
}

std::u16string Wide(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

// Decoding as VFile_Write does it: the host's text a range of 64 Ki units at a time.
template <typename Decoder>
std::vector<uint8_t> DecodeInPieces(const std::u16string& text) {
    constexpr size_t kPiece = 64 * 1024;
    Decoder decoder(text.size());
    for (size_t start = 0; start < text.size(); start += kPiece) {
        decoder.Feed(std::u16string_view(text).substr(start, kPiece));
    }
    return decoder.Finish();
}

void Report(const char* what, double ours, double reference) {
    std::printf("%-22s %8.0f MB/s   host reference %8.0f MB/s   ratio %.2f\n", what, ours,
                reference, ours / reference);
}

}  // namespace

int main() {
    std::vector<uint8_t> bytes(kSize);
    std::mt19937_64 random(42);
    for (size_t index = 0; index < kSize; index += 8) {
        const uint64_t value = random();
        for (size_t part = 0; part < 8 && index + part < kSize; ++part) {
            bytes[index + part] = static_cast<uint8_t>(value >> (8 * part));
        }
    }
    const std::u16string base64 = Wide(slib::EncodeBase64(bytes.data(), bytes.size()));
    const std::u16string dump = Wide(slib::EncodeHexDump(bytes.data(), bytes.size()));
    const std::u16string hostBase64 = fmhost::Base64Encode(bytes.data(), bytes.size());
    if (DecodeInPieces<slib::Base64Decoder>(base64) != bytes ||
        DecodeInPieces<slib::HexDumpDecoder>(dump) != bytes ||
        *fmhost::Base64Decode(hostBase64) != bytes) {
        std::printf("round trip failed\n");
        return 1;
    }
    const double hostEncode =
        MegabytesPerSecond([&] { fmhost::Base64Encode(bytes.data(), bytes.size()); });
    const double hostDecode = MegabytesPerSecond([&] { fmhost::Base64Decode(hostBase64); });
    std::printf("100 MB of random bytes (best of 3; MB/s of file bytes)\n");
    Report("base64 encode",
           MegabytesPerSecond([&] { slib::EncodeBase64(bytes.data(), bytes.size()); }), hostEncode);
    Report("base64 decode",
           MegabytesPerSecond([&] { DecodeInPieces<slib::Base64Decoder>(base64); }), hostDecode);
    Report("hex-dump encode",
           MegabytesPerSecond([&] { slib::EncodeHexDump(bytes.data(), bytes.size()); }),
           hostEncode);
    Report("hex-dump decode",
           MegabytesPerSecond([&] { DecodeInPieces<slib::HexDumpDecoder>(dump); }), hostDecode);
    return 0;
}
