#include "tests/rscreen/bitmap_file.h"

#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace quorvex {

namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kShortestInfoHeader = 40;

class Bytes {
public:
    explicit Bytes(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

    std::size_t size() const { return bytes_.size(); }
    std::uint32_t number(std::size_t at, int count) const {
        std::uint32_t value = 0;
        for (int i = count; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes_.at(at + static_cast<std::size_t>(i)));
        return value;
    }

private:
    std::vector<char> bytes_;
};

BitmapFile wrong(const QString& problem) {
    return {problem, {}};
}

}  // namespace

BitmapFile BitmapFile::read(const QString& path) {
    std::ifstream file(path.toStdString(), std::ios::binary);
    if (!file)
        return wrong("cannot be opened");
    const Bytes bytes({std::istreambuf_iterator<char>(file), {}});
    if (bytes.size() < kFileHeader + kShortestInfoHeader)
        return wrong("too short for its headers");
    if (bytes.number(0, 2) != 0x4D42)
        return wrong("does not begin with BM");
    if (bytes.number(2, 4) != bytes.size())
        return wrong("names another size than it has");
    const std::uint32_t pixelsAt = bytes.number(10, 4);
    const std::uint32_t infoSize = bytes.number(14, 4);
    const std::uint32_t width = bytes.number(18, 4);
    const std::uint32_t height = bytes.number(22, 4);
    const std::uint32_t bits = bytes.number(28, 2);
    if (infoSize < kShortestInfoHeader || pixelsAt < kFileHeader + infoSize)
        return wrong("pixels within the headers");
    if (bytes.number(26, 2) != 1 || bytes.number(30, 4) != 0)
        return wrong("more than one plane, or compressed");
    if (bits != 24 && bits != 32)
        return wrong(QStringLiteral("%1 bits a pixel").arg(bits));
    if (width == 0 || height == 0 || width > 10000 || height > 10000)
        return wrong("no size, or rows from the top");
    const std::size_t rowBytes = (width * bits + 31) / 32 * 4;
    if (bytes.size() != pixelsAt + rowBytes * height)
        return wrong("not as many pixels as it says");

    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t at = pixelsAt + (height - 1 - y) * rowBytes + x * (bits / 8);
            image.setPixel(static_cast<int>(x), static_cast<int>(y), 0xFF000000U | bytes.number(at, 3));
        }
    }
    return {{}, image};
}

}  // namespace quorvex
