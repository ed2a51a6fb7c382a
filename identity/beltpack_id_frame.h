#pragma once

#include "form/field_edit.h"
#include "form/frame.h"
#include "form/qt_controls.h"
#include "identity/psn_update.h"

namespace quorvex {

/// "Beltpack ID": the serial number.
class BeltpackIdFrame : public Frame {
public:
    BeltpackIdFrame(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);

    TextField& beltpackId() { return beltpackId_; }

private:
    FieldEdit* textBeltpackId_;
    LineEditField beltpackId_{textBeltpackId_};
    PsnUpdate update_;
};

}  // namespace quorvex
