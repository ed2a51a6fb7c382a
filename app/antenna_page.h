#pragma once

#include <QWidget>

#include "antenna/antenna_frame.h"
#include "calibration/calib_frame_widget.h"
#include "identity/dect_version_frame.h"

namespace quorvex {

/// The page "Active Antenna": places its frames.
class AntennaPage : public QWidget {
public:
    explicit AntennaPage(CommandLink& link, QWidget* parent = nullptr);

    CalibFrame& moduleA() { return *moduleA_; }
    CalibFrame& moduleB() { return *moduleB_; }

private:
    AntennaFrame* antenna_;
    CalibFrameWidget* moduleA_;
    CalibFrameWidget* moduleB_;
    DectVersionFrame* dectVersion_;
};

}  // namespace quorvex
