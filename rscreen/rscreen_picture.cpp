#include "rscreen/rscreen_picture.h"

#include <QPainter>

namespace quorvex {

namespace {

constexpr QSize kDisplay{kScreenLineBytes * 8, kScreenLines};
constexpr QSize kPicture = kDisplay * kScreenScale;

}  // namespace

RScreenPicture::RScreenPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Picture1"));
    setFixedSize(kPicture);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void RScreenPicture::show(const ScreenBits& bits) {
    if (bits == bits_)
        return;
    bits_ = bits;
    update();
}

QImage RScreenPicture::display() const {
    // The bytes are a one-bit image as they stand.
    QImage image(bits_.data(), kDisplay.width(), kDisplay.height(), kScreenLineBytes, QImage::Format_Mono);
    image.setColorTable({qRgb(0, 255, 0), qRgb(0, 0, 0)});
    return image;
}

QImage RScreenPicture::image() const {
    return display().convertToFormat(QImage::Format_RGB32).scaled(kPicture);
}

void RScreenPicture::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(rect(), display());
}

}  // namespace quorvex
