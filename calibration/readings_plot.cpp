#include "calibration/readings_plot.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "form/accessible.h"
#include "form/lengths.h"

namespace quorvex {

namespace {

constexpr int kGap = 60;  ///< twips
constexpr double kLargeFactor = 2.5;
constexpr int kTens = 10, kLeastTens = 3;

QString shown(const std::optional<int>& value) {
    return value ? QString::number(*value) : QStringLiteral("No Conn");
}

std::optional<int> rssiOf(const Reading& reading) {
    return reading.rssi;
}

std::optional<int> balanceOf(const Reading& reading) {
    return reading.dcBalance;
}

double heightOf(int value, const QRect& ground, int lowest, int highest) {
    return ground.bottom() - static_cast<double>(ground.height() - 1) * (value - lowest) / (highest - lowest);
}

QColor faint(QColor colour, float strength) {
    colour.setAlphaF(strength);
    return colour;
}

}  // namespace

ReadingsPlot::ReadingsPlot(QWidget* parent) : QWidget(parent) {
    setMouseTracking(true);
    setAccessibleRole(this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("RSSI and DC balance over the last minute"));
}

void ReadingsPlot::add(const Reading& reading) {
    readings_.add(reading);
    setAccessibleDescription(
        QStringLiteral("RSSI %1, DC balance %2").arg(shown(reading.rssi), shown(reading.dcBalance)));
    update();
}

const Reading* ReadingsPlot::pointed() const {
    if (!pointerX_ || readings_.isEmpty())
        return nullptr;
    const int fromLatest = lastPlace() - *pointerX_;
    const int wide = lastPlace() - firstPlace();
    return &readings_.closestTo(
        static_cast<std::int32_t>(std::int64_t{fromLatest} * Readings::kSpanMs / wide));
}

void ReadingsPlot::mouseMoveEvent(QMouseEvent* event) {
    pointerX_ = qRound(event->position().x());
    update();
}

void ReadingsPlot::leaveEvent(QEvent* /*event*/) {
    pointerX_.reset();
    update();
}

/// In whole tens around what there is, so that small changes are seen and the scale seldom moves.
ReadingsPlot::Curve ReadingsPlot::rssi() const {
    int lowest = readings_.isEmpty() ? 0 : readings_.latest().rssi;
    int highest = lowest;
    for (std::size_t i = 0; i < readings_.size(); ++i) {
        lowest = std::min(lowest, readings_[i].rssi);
        highest = std::max(highest, readings_[i].rssi);
    }
    const int from = std::max(lowest / kTens - 1, 0);
    const int to = std::max(highest / kTens + 1, from + kLeastTens);
    return {QStringLiteral("RSSI"), rssiOf, from * kTens, to * kTens};
}

ReadingsPlot::Curve ReadingsPlot::balance() {
    return {QStringLiteral("DC balance"), balanceOf, -Reading::kBalanceLimit, Reading::kBalanceLimit,
            Reading::kGreenBalance};
}

QFont ReadingsPlot::largeFace() const {
    QFont face = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    face.setPointSizeF(font().pointSizeF() * kLargeFactor);
    return face;
}

int ReadingsPlot::firstPlace() const {
    return fontMetrics().horizontalAdvance(QStringLiteral("-100")) + pixels(kGap);
}

int ReadingsPlot::lastPlace() const {
    return width() - pixels(kGap);
}

double ReadingsPlot::placeOf(const Reading& reading) const {
    const int wide = lastPlace() - firstPlace();
    return lastPlace() - static_cast<double>(wide) * readings_.ageMs(reading) / Readings::kSpanMs;
}

void ReadingsPlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int times = fontMetrics().height() + pixels(kGap);
    const int half = (height() - times) / 2;
    draw(painter, {0, 0, width(), half}, rssi());
    draw(painter, {0, half, width(), half}, balance());
    drawTimes(painter, {0, 2 * half, width(), times});
}

void ReadingsPlot::draw(QPainter& painter, const QRect& area, const Curve& curve) const {
    const QFontMetrics digits(largeFace());
    const QRect head(area.left(), area.top(), lastPlace(), digits.height());
    const QRect ground(firstPlace(), head.bottom() + 1, lastPlace() - firstPlace() + 1,
                       area.height() - head.height() - pixels(kGap));
    const int baseLine = head.top() + digits.ascent();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(font());
    painter.drawText(firstPlace(), baseLine, curve.heading);
    if (!readings_.isEmpty()) {
        const QString value = shown(curve.valueOf(readings_.latest()));
        painter.setFont(largeFace());
        painter.drawText(lastPlace() - digits.horizontalAdvance(value), baseLine, value);
    }
    drawGround(painter, ground, curve);
    drawLine(painter, ground, curve);
    drawPointed(painter, ground, curve);
}

void ReadingsPlot::drawGround(QPainter& painter, const QRect& ground, const Curve& curve) const {
    const QColor text = palette().color(QPalette::WindowText);
    constexpr float kRule = 0.3F, kZone = 0.25F;
    painter.fillRect(ground, palette().color(QPalette::Base));
    const auto placeOfValue = [&](int value) { return heightOf(value, ground, curve.lowest, curve.highest); };
    if (curve.green > 0) {
        const QRectF zone(QPointF(ground.left(), placeOfValue(curve.green)),
                          QPointF(ground.right() + 1, placeOfValue(-curve.green)));
        painter.fillRect(zone, faint(QColor(0, 192, 0), kZone));
        painter.fillRect(QRectF(ground.left(), placeOfValue(0), ground.width(), 1), faint(text, kRule));
    }
    painter.setPen(faint(text, kRule));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(ground).adjusted(-0.5, -0.5, 0.5, 0.5));

    painter.setPen(text);
    painter.setFont(font());
    const int high = fontMetrics().height();
    const QRect numbers(0, ground.top() - high / 4, ground.left() - pixels(kGap), ground.height() + high / 2);
    painter.drawText(numbers, Qt::AlignRight | Qt::AlignTop, QString::number(curve.highest));
    painter.drawText(numbers, Qt::AlignRight | Qt::AlignBottom, QString::number(curve.lowest));
    if (curve.green > 0)
        painter.drawText(numbers, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("0"));
}

void ReadingsPlot::drawLine(QPainter& painter, const QRect& ground, const Curve& curve) const {
    constexpr double kThick = 1.5;
    QPainterPath line;
    bool isBroken = true;
    for (std::size_t i = 0; i < readings_.size(); ++i) {
        const std::optional<int> value = curve.valueOf(readings_[i]);
        if (value) {
            const QPointF place(placeOf(readings_[i]), heightOf(*value, ground, curve.lowest, curve.highest));
            isBroken ? line.moveTo(place) : line.lineTo(place);
        }
        isBroken = !value;
    }
    painter.setPen(QPen(palette().color(QPalette::Highlight), kThick));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(line);
    if (readings_.isEmpty() || !curve.valueOf(readings_.latest()))
        return;
    constexpr double kEnd = 2;  ///< half the width of the dot that ends the line, and is all of it at first
    painter.setBrush(palette().color(QPalette::Highlight));
    painter.drawEllipse(line.currentPosition(), kEnd, kEnd);
}

void ReadingsPlot::drawPointed(QPainter& painter, const QRect& ground, const Curve& curve) const {
    const Reading* reading = pointed();
    if (!reading)
        return;
    const QColor text = palette().color(QPalette::WindowText);
    const double place = placeOf(*reading);
    painter.setPen(text);
    painter.drawLine(QPointF(place, ground.top()), QPointF(place, ground.bottom()));
    const QString value = shown(curve.valueOf(*reading));
    painter.setFont(font());
    QRectF box(QPointF(), fontMetrics().size(Qt::TextSingleLine, value) + QSizeF(2.0 * pixels(kGap), 0));
    const bool isRight = place + pixels(kGap) + box.width() <= ground.right();
    box.moveTopLeft({isRight ? place + pixels(kGap) : place - pixels(kGap) - box.width(),
                     static_cast<double>(ground.top() + pixels(kGap))});
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(box);
    painter.drawText(box, Qt::AlignCenter, value);
}

void ReadingsPlot::drawTimes(QPainter& painter, const QRect& line) const {
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(font());
    const QRect times(firstPlace(), line.top(), lastPlace() - firstPlace() + 1, line.height());
    if (const Reading* reading = pointed()) {
        constexpr double kMsPerSecond = 1000;
        painter.drawText(times, Qt::AlignCenter,
                         QStringLiteral("%1 s ago").arg(qRound(readings_.ageMs(*reading) / kMsPerSecond)));
        return;
    }
    painter.drawText(times, Qt::AlignLeft | Qt::AlignBottom, QStringLiteral("1 min ago"));
    painter.drawText(times, Qt::AlignRight | Qt::AlignBottom, QStringLiteral("now"));
}

}  // namespace quorvex
