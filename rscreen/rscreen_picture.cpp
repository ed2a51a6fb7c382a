#include "rscreen/rscreen_picture.h"

#include <QPainter>

namespace quorvex {

namespace {

constexpr QSize kPicture{kScreenLineBytes * 8 * kScreenScale, kScreenLines* kScreenScale};
constexpr QRgb kBlackPixel = qRgb(0, 0, 0);
constexpr QRgb kGreenPixel = qRgb(0, 255, 0);

}  // namespace

RScreenPicture::RScreenPicture(QWidget* parent) : QWidget(parent), image_(kPicture, QImage::Format_RGB32) {
    draw();
    setObjectName(QStringLiteral("Picture1"));
    setFixedSize(kPicture);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void RScreenPicture::show(const ScreenBits& bits) {
    if (bits == bits_)
        return;
    bits_ = bits;
    draw();
    update();
}

void RScreenPicture::draw() {
    for (int y = 0; y < kPicture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image_.scanLine(y));
        const std::uint8_t* bytes = bits_.data() + y / kScreenScale * kScreenLineBytes;
        for (int x = 0; x < kPicture.width(); ++x) {
            const int column = x / kScreenScale;
            const int byte = bytes[column / 8];
            line[x] = (byte & (0x80 >> column % 8)) != 0 ? kBlackPixel : kGreenPixel;
        }
    }
}

void RScreenPicture::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(0, 0, image_);
}

}  // namespace quorvex
