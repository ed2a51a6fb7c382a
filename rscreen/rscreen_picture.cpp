#include "rscreen/rscreen_picture.h"

#include <QPainter>

namespace quorvex {

namespace {
constexpr QSize kPictureSize{256, 66};
constexpr QColor kClearPixel{0, 255, 0};
}  // namespace

RScreenPicture::RScreenPicture(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Picture1"));
    setFixedSize(kPictureSize);
}

void RScreenPicture::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), kClearPixel);
}

}  // namespace quorvex
