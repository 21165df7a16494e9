#include "codec_test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "foundation/error.h"
#include "foundation/exception.h"

// The sanitizers' allocation hook, when the test runs under them.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*malloc_hook)(const volatile void*,
                                                                             size_t),
                                                         void (*free_hook)(const volatile void*))
    __attribute__((weak));

namespace codectest {
namespace {

std::atomic<size_t> g_largest{0};

void NoteAllocation(const volatile void*, size_t size) {
    size_t seen = g_largest.load();
    while (size > seen && !g_largest.compare_exchange_weak(seen, size)) {
    }
}

void IgnoreFree(const volatile void*) {}

}  // namespace

slib::Raster Pattern(uint32_t width, uint32_t height, bool alpha) {
    slib::Raster raster;
    raster.width = width;
    raster.height = height;
    raster.hasAlpha = alpha;
    raster.rgba.resize(raster.stride() * height);
    for (uint32_t y = 0; y < height; ++y) {
        for (uint32_t x = 0; x < width; ++x) {
            uint8_t* pixel = raster.row(y) + size_t{x} * 4;
            const uint32_t i = y * width + x;
            pixel[0] = static_cast<uint8_t>(i * 37);
            pixel[1] = static_cast<uint8_t>(255 - i * 11);
            pixel[2] = static_cast<uint8_t>((x * 53) ^ (y * 29));
            pixel[3] = alpha ? static_cast<uint8_t>(i % 3 == 0 ? 255 : i % 3 == 1 ? 128 : 0) : 255;
        }
    }
    return raster;
}

slib::Raster Plain(uint32_t width, uint32_t height, uint32_t rgba) {
    slib::Raster raster;
    raster.width = width;
    raster.height = height;
    raster.hasAlpha = (rgba & 0xFF) != 0xFF;
    for (size_t i = 0; i < size_t{width} * height; ++i) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            raster.rgba.push_back(static_cast<uint8_t>(rgba >> shift));
        }
    }
    return raster;
}

std::vector<uint8_t> Convert(const std::string& arguments) {
    char path[] = "/tmp/vf-codec-XXXXXX";
    const int fd = mkstemp(path);
    if (fd < 0) {
        ADD_FAILURE() << "no temporary file";
        return {};
    }
    close(fd);
    // The output format is the last argument's prefix ("png48:"), the path follows it.
    const std::string command =
        std::string(VF_CONVERT) + " " + arguments + std::string(path) + " 2>&1";
    const int status = std::system(command.c_str());
    std::ifstream in(path, std::ios::binary);
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)),
                               std::istreambuf_iterator<char>());
    std::remove(path);
    if (status != 0 || bytes.empty()) {
        ADD_FAILURE() << "convert failed: " << command;
    }
    return bytes;
}

std::string Failure(const std::function<void()>& call) {
    try {
        call();
    } catch (const slib::Exception& failure) {
        return std::to_string(failure.error()->code()) + " " + failure.message();
    }
    return "";
}

void SaveSeed([[maybe_unused]] const std::string& name,
              [[maybe_unused]] const std::vector<uint8_t>& bytes) {
#ifdef VF_FUZZ_SEED_DIR
    if (!bytes.empty() && bytes.size() <= 16 * 1024) {
        std::ofstream(std::string(VF_FUZZ_SEED_DIR) + "/" + name, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
#endif
}

uint32_t PixelAt(const slib::Raster& raster, uint32_t x, uint32_t y) {
    const uint8_t* p = raster.row(y) + size_t{x} * 4;
    return (uint32_t{p[0]} << 24) | (uint32_t{p[1]} << 16) | (uint32_t{p[2]} << 8) | p[3];
}

size_t LargestAllocationDuring(const std::function<void()>& call) {
    if (__sanitizer_install_malloc_and_free_hooks == nullptr) {
        call();
        return 0;
    }
    static const bool installed =
        __sanitizer_install_malloc_and_free_hooks(&NoteAllocation, &IgnoreFree) != 0;
    g_largest = 0;
    call();
    return installed ? g_largest.load() : 0;
}

}  // namespace codectest
