#include "calibration/ticked_slider.h"

#include <QPainter>
#include <QStyleOptionSlider>

namespace quorvex {

TickedSlider::TickedSlider(int lowest, int highest, int tickInterval, QWidget* parent)
    : QSlider(Qt::Horizontal, parent) {
    setRange(lowest, highest);
    setPageStep(1);
    setTickPosition(QSlider::TicksBelow);
    setTickInterval(tickInterval);
}

QRect TickedSlider::handleAt(int value) const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.sliderPosition = value;
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

double TickedSlider::placeOf(int value) const {
    return QRectF(handleAt(value)).center().x();
}

void TickedSlider::drawTicks(QPainter& painter, int top) const {
    constexpr int kLength = 4;
    constexpr float kStrength = 0.6F;
    QColor colour = palette().color(QPalette::WindowText);
    colour.setAlphaF(kStrength);
    for (int value = minimum(); value <= maximum(); value += tickInterval())
        painter.fillRect(QRectF(placeOf(value) - 0.5, top, 1, kLength), colour);
}

void TickedSlider::paintEvent(QPaintEvent* /*event*/) {
    constexpr double kGroove = 4;
    const QRect handle = handleAt(sliderPosition());
    const double from = placeOf(minimum());
    const double middle = QRectF(handle).center().y() - kGroove / 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto drawGroove = [&](double to, const QColor& colour) {
        painter.setBrush(colour);
        painter.drawRoundedRect(QRectF(from, middle, to - from, kGroove), kGroove / 2, kGroove / 2);
    };
    constexpr float kStrength = 0.25F;
    QColor empty = palette().color(QPalette::WindowText);
    empty.setAlphaF(kStrength);
    drawGroove(placeOf(maximum()), empty);
    drawGroove(placeOf(sliderPosition()), palette().color(QPalette::Highlight));
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawTicks(painter, handle.bottom() + 3);

    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_SliderHandle;
    style()->drawComplexControl(QStyle::CC_Slider, &option, &painter, this);
}

}  // namespace quorvex
