#pragma once

#include <QGroupBox>

#include "link/command_link.h"
#include "link/qt_controls.h"

namespace quorvex {

/// "Beltpack ID": the serial number.
class BeltpackIdFrame : public QGroupBox {
public:
    explicit BeltpackIdFrame(QWidget* parent = nullptr);

    TextField& beltpackId() { return beltpackId_; }

private:
    QLineEdit* textBeltpackId_;
    LineEditField beltpackId_{textBeltpackId_};
};

}  // namespace quorvex
