#pragma once

#include "form/field_edit.h"
#include "form/frame.h"
#include "form/qt_controls.h"
#include "identity/rf_carriers_update.h"

namespace quorvex {

/// "RF Carriers": the carrier mask, and beneath it a control of somebody else's with its label.
class RfCarriersFrame : public Frame {
public:
    struct Guest {
        QWidget* label;
        QWidget* control;
    };

    RfCarriersFrame(CommandLink& link, SettingsImage& image, Guest guest, QWidget* parent = nullptr);

    TextField& rfCarriers() { return rfCarriers_; }

private:
    FieldEdit* textRfCarrs_;
    LineEditField rfCarriers_{textRfCarrs_};
    RfCarriersUpdate update_;
};

}  // namespace quorvex
