#include "calibration/labelled_slider.h"

#include <QScopedValueRollback>

namespace quorvex {

LabelledSlider::LabelledSlider(QSlider* slider, QLabel* label, const std::function<void()>& changed,
                               const std::function<void()>& scrolled)
    : slider_(slider), label_(label) {
    QObject::connect(slider, &QSlider::valueChanged, slider, [this, changed, scrolled] {
        const bool byUser = !byCode_;
        const QScopedValueRollback nested(byCode_, false);
        changed();
        if (byUser && scrolled)
            scrolled();
    });
}

std::int16_t LabelledSlider::value() const {
    return static_cast<std::int16_t>(slider_->value());
}

void LabelledSlider::setValue(std::int16_t value) {
    const QScopedValueRollback code(byCode_, true);
    slider_->setValue(value);
}

void LabelledSlider::showValue(std::int16_t value) {
    label_->setText(QString::number(value));
}

}  // namespace quorvex
