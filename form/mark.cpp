#include "form/mark.h"

#include <algorithm>

namespace quorvex {

Mark markOf(const QString& text, Colour colour) {
    const auto says = [&text](const char* word) { return text.contains(QLatin1String(word)); };
    if (text.isEmpty())
        return Mark::none;
    if (text.endsWith(QLatin1String("...")))
        return Mark::working;
    if (colour != kBlack)
        return colour == kRed ? Mark::failed : Mark::done;
    if (says("cancelled") || says("Cancelled"))
        return Mark::none;
    return says("Error") || says("Invalid") || says("could not") ? Mark::failed : Mark::done;
}

namespace {

void drawDots(QPainter& painter, const QRectF& square) {
    constexpr int kDots = 3;
    const double radius = square.width() / 9;
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    for (int dot = 0; dot < kDots; ++dot) {
        const double x = square.left() + square.width() * (2 * dot + 1) / (2.0 * kDots);
        painter.drawEllipse(QPointF(x, square.center().y()), radius, radius);
    }
}

/// A line through points of the square, each from 0 to 1.
void drawStroke(QPainter& painter, const QRectF& square, std::initializer_list<QPointF> points) {
    QPolygonF line;
    for (const QPointF& point : points)
        line << square.topLeft() + QPointF(point.x() * square.width(), point.y() * square.height());
    painter.drawPolyline(line);
}

}  // namespace

void drawMark(QPainter& painter, const QRectF& square, Mark mark) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(painter.pen().color(), std::max(square.width() / 6, 2.0), Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    switch (mark) {
        case Mark::none:
            break;
        case Mark::working:
            drawDots(painter, square);
            break;
        case Mark::done:
            drawStroke(painter, square, {{0.1, 0.55}, {0.4, 0.85}, {0.9, 0.2}});
            break;
        case Mark::failed:
            drawStroke(painter, square, {{0.15, 0.15}, {0.85, 0.85}});
            drawStroke(painter, square, {{0.85, 0.15}, {0.15, 0.85}});
            break;
    }
    painter.restore();
}

}  // namespace quorvex
