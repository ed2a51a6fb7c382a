#pragma once

#include <QWidget>

namespace quorvex {

/// The buttons that read an Active Antenna and put it into TBR6 mode.
class AntennaFrame : public QWidget {
public:
    explicit AntennaFrame(QWidget* parent = nullptr);
};

}  // namespace quorvex
