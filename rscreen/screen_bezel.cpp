#include "rscreen/screen_bezel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <chrono>

namespace quorvex {

ScreenBezel::ScreenBezel(QWidget* picture, QWidget* parent) : QWidget(parent) {
    constexpr std::chrono::milliseconds kFlash{250};
    light_.setSingleShot(true);
    light_.setInterval(kFlash);
    connect(&light_, &QTimer::timeout, this, [this] { update(); });
    auto* row = new QHBoxLayout(this);
    const int margin = 2 * fontMetrics().height();
    row->setContentsMargins(margin, margin, margin, margin);
    row->addWidget(picture, 0, Qt::AlignCenter);
}

void ScreenBezel::flash() {
    light_.start();
    update();
}

void ScreenBezel::paintEvent(QPaintEvent* /*event*/) {
    constexpr double kRadius = 6;
    constexpr float kEdge = 0.35F;
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(kEdge);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(edge);
    painter.setBrush(isLit() ? palette().color(QPalette::Highlight) : QColor(28, 30, 33));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

}  // namespace quorvex
