#include "rscreen/screen_bitmap.h"

namespace quorvex {

namespace {

constexpr int kWidth = kScreenLineBytes * 8 * kScreenScale;
constexpr int kHeight = kScreenLines * kScreenScale;
constexpr int kBitsPerPixel = 24;
constexpr int kFileHeader = 14;
constexpr int kInfoHeader = 40;
constexpr int kPixels =
    kWidth * kHeight * kBitsPerPixel / 8;  // a row is a multiple of 4 bytes, as it must be

void append(std::string& file, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        file += static_cast<char>(value >> 8 * i & 0xFFU);
}

void appendHeaders(std::string& file) {
    file += "BM";
    append(file, kFileHeader + kInfoHeader + kPixels, 4);
    append(file, 0, 4);
    append(file, kFileHeader + kInfoHeader, 4);
    append(file, kInfoHeader, 4);
    append(file, kWidth, 4);
    append(file, kHeight, 4);  // above 0: the lowest row comes first
    append(file, 1, 2);        // plane
    append(file, kBitsPerPixel, 2);
    append(file, 0, 4);  // not compressed
    append(file, kPixels, 4);
    for (int none = 0; none < 4;
         ++none)  // resolution both ways, colours in a table, those of them that matter
        append(file, 0, 4);
}

}  // namespace

std::string bitmapOf(const ScreenBits& bits) {
    std::string file;
    appendHeaders(file);
    for (int row = kHeight; row-- > 0;) {
        for (int column = 0; column < kWidth; ++column) {
            const int pixel = column / kScreenScale;
            const int at = row / kScreenScale * kScreenLineBytes + pixel / 8;
            append(file,
                   (bits[static_cast<std::size_t>(at)] & 0x80 >> pixel % 8) != 0 ? kScreenInk : kScreenGround,
                   kBitsPerPixel / 8);
        }
    }
    return file;
}

}  // namespace quorvex
