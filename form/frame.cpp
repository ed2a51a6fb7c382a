#include "form/frame.h"

#include <QPainter>

#include "form/lengths.h"

namespace quorvex {

QFont headingFace(QFont face) {
    face.setWeight(QFont::DemiBold);
    return face;
}

void drawRule(QWidget& widget, int y, int inset) {
    constexpr float kStrength = 0.25F;
    QColor colour = widget.palette().color(QPalette::WindowText);
    colour.setAlphaF(kStrength);
    QPainter(&widget).fillRect(inset, y, widget.width() - 2 * inset, 1, colour);
}

void drawEdge(QPainter& painter, const QRect& area, const QPalette& window) {
    constexpr float kStrength = 0.3F;
    constexpr double kRadius = 2;
    constexpr double kHalfPixel = 0.5;
    QColor colour = window.color(QPalette::WindowText);
    colour.setAlphaF(kStrength);
    painter.setPen(colour);
    painter.drawRoundedRect(QRectF(area).adjusted(kHalfPixel, kHalfPixel, -kHalfPixel, -kHalfPixel), kRadius,
                            kRadius);
}

QSize Frame::minimumSizeHint() const {
    const int heading = QFontMetrics(headingFace(font())).horizontalAdvance(title());
    return QGroupBox::minimumSizeHint().expandedTo({heading + 2 * pixels(grid::kFrameInset), 0});
}

void Frame::paintEvent(QPaintEvent*) {
    const int inset = pixels(grid::kFrameInset);
    const int end = contentsMargins().top();
    QPainter painter(this);
    painter.setFont(headingFace(font()));
    painter.drawText(QRect(inset, 0, width() - inset, end), Qt::AlignLeft | Qt::AlignVCenter, title());
    painter.end();
    drawRule(*this, end, inset);
}

}  // namespace quorvex
