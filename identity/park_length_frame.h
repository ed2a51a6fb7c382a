#pragma once

#include "form/field_edit.h"
#include "form/frame.h"
#include "form/qt_controls.h"
#include "identity/pli_update.h"

namespace quorvex {

/// "Park Length Indicator (Hex)": the PLI.
class ParkLengthFrame : public Frame {
public:
    ParkLengthFrame(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);

    TextField& pli() { return pli_; }

private:
    FieldEdit* textPli_;
    LineEditField pli_{textPli_};
    PliUpdate update_;
};

}  // namespace quorvex
