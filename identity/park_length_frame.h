#pragma once

#include <QGroupBox>

#include "link/command_link.h"
#include "link/qt_controls.h"

namespace quorvex {

/// "Park Length Indicator (Hex)": the PLI.
class ParkLengthFrame : public QGroupBox {
public:
    explicit ParkLengthFrame(QWidget* parent = nullptr);

    TextField& pli() { return pli_; }

private:
    QLineEdit* textPli_;
    LineEditField pli_{textPli_};
};

}  // namespace quorvex
