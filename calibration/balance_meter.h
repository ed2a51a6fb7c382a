#pragma once

#include "calibration/ticked_slider.h"

namespace quorvex {

/// `SliderDCBalance`: a meter from 0 to 200 with its zero at 100 and the green zone around that, filled from
/// there to its value. It is moved by the program alone: neither by mouse nor wheel nor keys, whoever sends
/// them.
class BalanceMeter : public TickedSlider {
public:
    /// Its scale in twips: from the meter's left edge, and how long it is.
    static constexpr int kScaleLeft = 120, kScaleLength = 3840;

    explicit BalanceMeter(QWidget* parent);

protected:
    bool event(QEvent* event) override { return isByHand(event->type()) || TickedSlider::event(event); }
    void paintEvent(QPaintEvent* event) override;
    double placeOf(int value) const override;

private:
    static bool isByHand(QEvent::Type type);
};

}  // namespace quorvex
