#pragma once

#include <QLabel>
#include <QSlider>
#include <functional>

#include "calibration/calib_tuning.h"

namespace quorvex {

/// A QSlider and its value label as the dialog's logic sees them.
class LabelledSlider : public CalibSlider {
public:
    /// `changed` is called for each change of value, `scrolled` after one that the user made.
    LabelledSlider(QSlider* slider, QLabel* label, const std::function<void()>& changed,
                   const std::function<void()>& scrolled = {});

    std::int16_t value() const override;
    void setValue(std::int16_t value) override;
    void showValue(std::int16_t value) override;

private:
    QSlider* slider_;
    QLabel* label_;
    bool byCode_ = false;
};

}  // namespace quorvex
