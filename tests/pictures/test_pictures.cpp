#include "test_pictures.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "exif_segment.h"
#include "picture_io.h"

namespace picturetest {
namespace {

const uint32_t kColours[4] = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFF00};

// Where a stored pixel shows once the orientation's turn is applied (stored size sw x sh).
void Displayed(uint16_t orientation, int x, int y, int sw, int sh, int& dx, int& dy) {
    const int mx = sw - 1 - x, my = sh - 1 - y, tx = sh - 1 - y, ty = sw - 1 - x;
    const int table[9][2] = {{x, y}, {x, y},  {mx, y},  {mx, my}, {x, my},
                             {y, x}, {tx, x}, {tx, ty}, {y, ty}};
    dx = table[orientation][0];
    dy = table[orientation][1];
}

}  // namespace

std::string MakePicture(const wchar_t* mimeType, int width, int height, uint16_t orientation,
                        bool bigEndianExif) {
    const bool sideways = orientation >= 5;
    const int sw = sideways ? height : width;
    const int sh = sideways ? width : height;
    Pixels pixels{uint32_t(sw), uint32_t(sh), std::vector<uint32_t>(size_t(sw) * sh)};
    for (int y = 0; y < sh; ++y) {
        for (int x = 0; x < sw; ++x) {
            int dx = 0, dy = 0;
            Displayed(orientation, x, y, sw, sh, dx, dy);
            pixels.argb[size_t(y) * sw + x] =
                kColours[(dy * 2 >= height ? 2 : 0) + (dx * 2 >= width ? 1 : 0)];
        }
    }
    std::string bytes = EncodePixels(mimeType, pixels);
    if (orientation != 0 && std::wstring(mimeType) == L"image/jpeg") {
        bytes = SpliceAfterStart(bytes, ExifApp1(orientation, bigEndianExif, 2));
    }
    return bytes;
}

std::string MakeFramedPicture(int width, int height) {
    Pixels pixels{uint32_t(width), uint32_t(height),
                  std::vector<uint32_t>(size_t(width) * height, 0xFFFFFFFF)};
    for (int y = height / 4; y < height * 3 / 4; ++y) {
        for (int x = width / 4; x < width * 3 / 4; ++x) {
            pixels.argb[size_t(y) * width + x] = 0xFF000000;
        }
    }
    return EncodePixels(L"image/png", pixels);
}

int DarkestEdgeChannel(const std::string& bytes) {
    const std::optional<Pixels> pixels = DecodePixels(bytes);
    if (!pixels) {
        return -1;
    }
    int darkest = 255;
    const auto look = [&](uint32_t x, uint32_t y) {
        for (int shift = 0; shift <= 24; shift += 8) {
            darkest = std::min(darkest, static_cast<int>((pixels->at(x, y) >> shift) & 0xFF));
        }
    };
    for (uint32_t x = 0; x < pixels->width; ++x) {
        look(x, 0);
        look(x, pixels->height - 1);
    }
    for (uint32_t y = 0; y < pixels->height; ++y) {
        look(0, y);
        look(pixels->width - 1, y);
    }
    return darkest;
}

std::string Describe(const std::string& bytes) {
    const auto starts = [&](const char* signature) { return bytes.rfind(signature, 0) == 0; };
    std::string text = starts("\xFF\xD8\xFF")          ? "jpeg"
                       : starts("\x89PNG")             ? "png"
                       : starts("GIF8")                ? "gif"
                       : starts("BM")                  ? "bmp"
                       : starts("II*") || starts("MM") ? "tiff"
                                                       : "?";
    const std::optional<Pixels> pixels = DecodePixels(bytes);
    if (!pixels) {
        return "no picture";
    }
    const uint32_t width = pixels->width, height = pixels->height;
    text += " " + std::to_string(width) + "x" + std::to_string(height) + " ";
    for (uint32_t quadrant = 0; quadrant < 4; ++quadrant) {
        const uint32_t pixel =
            pixels->at(width * (1 + quadrant % 2 * 2) / 4, height * (1 + quadrant / 2 * 2) / 4);
        char nearest = '?';
        for (int i = 0; i < 4; ++i) {
            int distance = 0;
            for (int shift = 0; shift <= 16; shift += 8) {
                const int d = int((pixel >> shift) & 0xFF) - int((kColours[i] >> shift) & 0xFF);
                distance += d * d;
            }
            nearest = distance < 3 * 80 * 80 ? "RGBY"[i] : nearest;
        }
        text += nearest;
    }
    return text;
}

std::u16string Base64(const std::string& bytes) {
    static const char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::u16string text;
    for (size_t i = 0; i < bytes.size(); i += 3) {
        uint32_t group = 0;
        for (size_t k = 0; k < 3; ++k) {
            group = group << 8 | (i + k < bytes.size() ? uint8_t(bytes[i + k]) : 0);
        }
        for (size_t digit = 0; digit < 4; ++digit) {
            text += digit <= bytes.size() - i ? kDigits[(group >> (18 - 6 * digit)) & 63] : '=';
        }
    }
    return text;
}

}  // namespace picturetest
