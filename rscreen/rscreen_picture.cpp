#include "rscreen/rscreen_picture.h"

#include <QPainter>
#include <algorithm>

#include "form/accessible.h"

namespace quorvex {

namespace {

constexpr QSize kPicture{kScreenLineBytes * 8 * kScreenScale, kScreenLines* kScreenScale};
constexpr QRgb kOpaque = 0xFF000000;
constexpr QRgb kBlackPixel = kOpaque | kScreenInk;
constexpr QRgb kGreenPixel = kOpaque | kScreenGround;

}  // namespace

RScreenPicture::RScreenPicture(QWidget* parent) : QWidget(parent), image_(kPicture, QImage::Format_RGB32) {
    draw();
    setObjectName(QStringLiteral("Picture1"));
    setFixedSize(kPicture);
    setAccessibleRole(this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("The Beltpack's display"));
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
    const std::uint8_t* bytes = bits_.data();
    for (int line = 0; line < kScreenLines; ++line, bytes += kScreenLineBytes) {
        auto* const upper = reinterpret_cast<QRgb*>(image_.scanLine(line * kScreenScale));
        QRgb* pixel = upper;
        for (int column = 0; column < kScreenLineBytes * 8; ++column) {
            const bool isSet = (bytes[column / 8] & (0x80 >> column % 8)) != 0;
            pixel = std::fill_n(pixel, kScreenScale, isSet ? kBlackPixel : kGreenPixel);
        }
        for (int copy = 1; copy < kScreenScale; ++copy)
            std::copy_n(upper, kPicture.width(),
                        reinterpret_cast<QRgb*>(image_.scanLine(line * kScreenScale + copy)));
    }
}

void RScreenPicture::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(0, 0, image_);
}

}  // namespace quorvex
