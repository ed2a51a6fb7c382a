#pragma once

#include <QWidget>

#include "form/button.h"

namespace quorvex {

class AntennaRead;

/// The buttons that read an Active Antenna and put it into TBR6 mode.
class AntennaFrame : public QWidget {
public:
    explicit AntennaFrame(QWidget* parent = nullptr);

    void connectTo(AntennaRead& read);

private:
    Button *commandRdSettingsAA_, *commandSetTbr6_;
};

}  // namespace quorvex
