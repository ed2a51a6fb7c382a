#pragma once

#include <QPushButton>
#include <QWidget>

namespace quorvex {

class AntennaRead;

/// The buttons that read an Active Antenna and put it into TBR6 mode.
class AntennaFrame : public QWidget {
public:
    explicit AntennaFrame(QWidget* parent = nullptr);

    void connectTo(AntennaRead& read);

private:
    QPushButton *commandRdSettingsAA_, *commandSetTbr6_;
};

}  // namespace quorvex
