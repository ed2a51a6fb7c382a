#pragma once

#include <QDialog>
#include <QRadioButton>

#include "calibration/rf_module.h"

namespace quorvex {

/// The dialog "Select Type Of RF Module".
class FormRfModule : public QDialog {
public:
    FormRfModule(bool kirk, QWidget* parent);
    bool isKirk() const { return !optionRm5_->isChecked(); }

private:
    QRadioButton* optionKirk_;
    QRadioButton* optionRm5_;
};

/// Shows FormRfModule over a window.
class FormRfModulePicker : public RfModuleDialog {
public:
    explicit FormRfModulePicker(QWidget* parent) : parent_(parent) {}
    bool pick(bool& kirk) override;

private:
    QWidget* parent_;
};

}  // namespace quorvex
