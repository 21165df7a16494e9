// The deflate codec alone: libdeflate (whole buffers) against zlib (raw streams, as the archive
// code drives it) on every file below a folder. run_bench.py builds it and runs it on its
// large-files corpus; by hand, optimised:
//   cmake -S . -B build/bench -DCMAKE_BUILD_TYPE=Release -DVF_SANITIZE=OFF
//   cmake --build build/bench --target codec_bench
//   build/bench/bin/codec_bench FOLDER
// Prints MB/s of input for deflate at each level, inflate and CRC-32, the output sizes, and
// libdeflate's ratio to zlib. LARGEST_FILE_BYTES leaves out larger files (to measure the sizes
// that are deflated whole). Each figure is the best of three rounds in the same run.
#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

std::vector<Bytes> ReadFiles(const std::filesystem::path& folder, uintmax_t largest) {
    std::vector<Bytes> files;
    for (const auto& item : std::filesystem::recursive_directory_iterator(folder)) {
        if (item.is_regular_file() && item.file_size() <= largest) {
            std::ifstream in(item.path(), std::ios::binary);
            files.emplace_back(std::istreambuf_iterator<char>(in),
                               std::istreambuf_iterator<char>());
        }
    }
    return files;
}

double BestSeconds(const std::function<void()>& action) {
    double best = 1e30;
    for (int round = 0; round < 3; ++round) {
        const auto start = std::chrono::steady_clock::now();
        action();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
        best = std::min(best, took.count());
    }
    return best;
}

Bytes ZlibDeflate(const Bytes& in, int level) {
    z_stream stream = {};
    deflateInit2(&stream, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    Bytes out(deflateBound(&stream, in.size()) + 64);
    stream.next_in = const_cast<uint8_t*>(in.data());
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    deflate(&stream, Z_FINISH);
    out.resize(out.size() - stream.avail_out);
    deflateEnd(&stream);
    return out;
}

bool ZlibInflate(const Bytes& in, Bytes& out) {
    z_stream stream = {};
    inflateInit2(&stream, -MAX_WBITS);
    uint8_t none = 0;  // zlib refuses a null output even when nothing is to come out
    stream.next_in = const_cast<uint8_t*>(in.data());
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = out.empty() ? &none : out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    const bool ended = inflate(&stream, Z_FINISH) == Z_STREAM_END && stream.avail_out == 0;
    inflateEnd(&stream);
    return ended;
}

struct Codec {
    const char* name;
    std::function<Bytes(const Bytes&)> deflate;
    std::function<bool(const Bytes&, Bytes&)> inflate;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: codec_bench FOLDER [LARGEST_FILE_BYTES]\n");
        return 2;
    }
    const std::vector<Bytes> files =
        ReadFiles(argv[1], argc == 3 ? std::stoull(argv[2]) : UINTMAX_MAX);
    double total = 0;
    for (const Bytes& file : files) {
        total += static_cast<double>(file.size());
    }
    const double megabytes = total / 1e6;
    std::printf("%zu files, %.1f MB\n", files.size(), megabytes);

    std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> inflater(
        libdeflate_alloc_decompressor(), &libdeflate_free_decompressor);
    auto libdeflateAt = [&](int level) {
        return Codec{
            level == 6 ? "libdeflate -6" : "libdeflate -7",
            [level](const Bytes& in) {
                std::unique_ptr<libdeflate_compressor, decltype(&libdeflate_free_compressor)>
                    compressor(libdeflate_alloc_compressor(level), &libdeflate_free_compressor);
                Bytes out(libdeflate_deflate_compress_bound(compressor.get(), in.size()));
                out.resize(libdeflate_deflate_compress(compressor.get(), in.data(), in.size(),
                                                       out.data(), out.size()));
                return out;
            },
            [&inflater](const Bytes& in, Bytes& out) {
                size_t inUsed = 0;
                return libdeflate_deflate_decompress_ex(inflater.get(), in.data(), in.size(),
                                                        out.data(), out.size(), &inUsed,
                                                        nullptr) == LIBDEFLATE_SUCCESS &&
                       inUsed == in.size();
            }};
    };
    const Codec codecs[] = {
        {"zlib -6", [](const Bytes& in) { return ZlibDeflate(in, 6); }, ZlibInflate},
        libdeflateAt(6),
        libdeflateAt(7),
    };

    double zlibDeflate = 0, zlibInflate = 0, zlibSize = 0;
    for (const Codec& codec : codecs) {
        std::vector<Bytes> packed(files.size());
        const double deflateSeconds = BestSeconds([&] {
            for (size_t i = 0; i < files.size(); ++i) {
                packed[i] = codec.deflate(files[i]);
            }
        });
        double size = 0;
        for (const Bytes& p : packed) {
            size += static_cast<double>(p.size());
        }
        bool intact = true;
        const double inflateSeconds = BestSeconds([&] {
            for (size_t i = 0; i < files.size(); ++i) {
                Bytes out(files[i].size());
                intact = codec.inflate(packed[i], out) && out == files[i] && intact;
            }
        });
        if (zlibDeflate == 0) {
            zlibDeflate = deflateSeconds;
            zlibInflate = inflateSeconds;
            zlibSize = size;
        }
        std::printf(
            "%-14s deflate %7.1f MB/s (x%.2f)  inflate %7.1f MB/s (x%.2f)  size %.4f of "
            "zlib's%s\n",
            codec.name, megabytes / deflateSeconds, zlibDeflate / deflateSeconds,
            megabytes / inflateSeconds, zlibInflate / inflateSeconds, size / zlibSize,
            intact ? "" : "  ROUND TRIP FAILED");
    }

    uint32_t sink = 0;  // both routines' CRCs folded together: zero when they agree
    const double zlibCrc = BestSeconds([&] {
        for (const Bytes& file : files) {
            sink ^= static_cast<uint32_t>(crc32(0, file.data(), static_cast<uInt>(file.size())));
        }
    });
    const double libdeflateCrc = BestSeconds([&] {
        for (const Bytes& file : files) {
            sink ^= libdeflate_crc32(0, file.data(), file.size());
        }
    });
    std::printf("CRC-32         zlib %7.1f MB/s  libdeflate %7.1f MB/s (x%.2f)%s\n",
                megabytes / zlibCrc, megabytes / libdeflateCrc, zlibCrc / libdeflateCrc,
                sink == 0 ? "" : "  CRCs DIFFER");
    return 0;
}
