#pragma once

#include <QGroupBox>

#include "identity/psn_update.h"
#include "link/field_edit.h"
#include "link/qt_controls.h"

namespace quorvex {

/// "Beltpack ID": the serial number.
class BeltpackIdFrame : public QGroupBox {
public:
    BeltpackIdFrame(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);

    TextField& beltpackId() { return beltpackId_; }

private:
    FieldEdit* textBeltpackId_;
    LineEditField beltpackId_{textBeltpackId_};
    PsnUpdate update_;
};

}  // namespace quorvex
