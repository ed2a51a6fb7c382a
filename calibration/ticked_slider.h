#pragma once

#include <QSlider>

namespace quorvex {

/// A slider whose groove ends below the middle of its handle at either end, so that sliders side by side stay
/// apart, and whose ticks have the colour of text, so that they are seen in the dark too.
class TickedSlider : public QSlider {
public:
    TickedSlider(int lowest, int highest, int tickInterval, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Where a value lies, in pixels from the left edge.
    virtual double placeOf(int value) const;
    /// A tick each interval, `top` pixels below the upper edge.
    void drawTicks(QPainter& painter, int top) const;

private:
    QRect handleAt(int value) const;
};

}  // namespace quorvex
