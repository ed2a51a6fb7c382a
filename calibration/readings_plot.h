#pragma once

#include <QWidget>
#include <optional>

#include "calibration/readings.h"

namespace quorvex {

/// What a Kirk module streams, to see which way a slider leads: RSSI and DC balance in large digits, and as
/// curves over the last minute. It is only looked at; where the pointer rests, it tells what was there. It
/// is drawn anew when a reading comes, so it stands still while none does.
class ReadingsPlot : public QWidget {
public:
    explicit ReadingsPlot(QWidget* parent);

    void add(const Reading& reading);
    const Readings& readings() const { return readings_; }
    /// The reading at the pointer; null while that is elsewhere, or there is none.
    const Reading* pointed() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /// One of the two.
    struct Curve {
        QString heading;
        std::optional<int> (*valueOf)(const Reading&);
        int lowest, highest;
        int green = 0;  ///< the zone from minus this to this is green
    };
    Curve rssi() const;
    static Curve balance();

    QFont largeFace() const;
    /// In pixels from the left edge.
    int firstPlace() const;
    int lastPlace() const;
    double placeOf(const Reading& reading) const;

    void draw(QPainter& painter, const QRect& area, const Curve& curve) const;
    void drawGround(QPainter& painter, const QRect& ground, const Curve& curve) const;
    void drawLine(QPainter& painter, const QRect& ground, const Curve& curve) const;
    void drawPointed(QPainter& painter, const QRect& ground, const Curve& curve) const;
    void drawTimes(QPainter& painter, const QRect& line) const;

    Readings readings_;
    std::optional<int> pointerX_;
};

}  // namespace quorvex
