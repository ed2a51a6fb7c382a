#pragma once

#include <QWidget>
#include <memory>

#include "antenna/antenna_frame.h"
#include "antenna/antenna_read.h"
#include "calibration/calib_frame_widget.h"
#include "identity/dect_version_frame.h"

namespace quorvex {

/// The page "Active Antenna": places its frames.
class AntennaPage : public QWidget {
public:
    explicit AntennaPage(CommandLink& link, QWidget* parent = nullptr);

    /// Wires the operations that need the radio module type, and the calibration. Called once.
    void connectTo(RadioModule& module, CalibRun& calibRun);

    CalibFrame& moduleA() { return *moduleA_; }
    CalibFrame& moduleB() { return *moduleB_; }

private:
    CommandLink& link_;
    AntennaFrame* antenna_;
    CalibFrameWidget* moduleA_;
    CalibFrameWidget* moduleB_;
    DectVersionFrame* dectVersion_;
    std::unique_ptr<AntennaRead> read_;
};

}  // namespace quorvex
