#include "calibration/balance_meter.h"

#include <QEvent>
#include <QPainter>
#include <cstdlib>

#include "calibration/readings.h"
#include "form/lengths.h"

namespace quorvex {

namespace {

constexpr int kMiddle = Reading::kBalanceLimit;
constexpr int kTickInterval = 10;
// In twips from the upper edge.
constexpr int kTop = 45, kBottom = 210, kMarkerBottom = 240;

}  // namespace

BalanceMeter::BalanceMeter(QWidget* parent) : TickedSlider(0, 2 * kMiddle, kTickInterval, parent) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setValue(kMiddle);
}

bool BalanceMeter::isByHand(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::MouseButtonPress ||
           type == QEvent::MouseButtonDblClick || type == QEvent::MouseMove || type == QEvent::Wheel;
}

double BalanceMeter::placeOf(int value) const {
    return pixels(kScaleLeft) + static_cast<double>(pixels(kScaleLength)) * value / maximum();
}

void BalanceMeter::paintEvent(QPaintEvent* /*event*/) {
    const QColor text = palette().color(QPalette::WindowText);
    const QColor red(192, 0, 0);
    const QColor green(0, 192, 0);
    QPainter painter(this);
    const auto fill = [&](int from, int to, QColor colour, float strength) {
        colour.setAlphaF(strength);
        painter.fillRect(QRectF(QPointF(placeOf(from), pixels(kTop)), QPointF(placeOf(to), pixels(kBottom))),
                         colour);
    };
    constexpr float kZone = 0.25F;
    constexpr int kGreen = Reading::kGreenBalance;
    fill(minimum(), kMiddle - kGreen, red, kZone);
    fill(kMiddle - kGreen, kMiddle + kGreen, green, kZone);
    fill(kMiddle + kGreen, maximum(), red, kZone);
    fill(kMiddle, value(), std::abs(value() - kMiddle) > kGreen ? red : green, 1);

    constexpr int kMarker = 3;
    painter.fillRect(
        QRectF(placeOf(value()) - kMarker / 2.0, pixels(kTop), kMarker, pixels(kMarkerBottom) - pixels(kTop)),
        text);
    drawTicks(painter, pixels(kMarkerBottom) + 2);
}

}  // namespace quorvex
