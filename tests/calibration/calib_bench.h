#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>
#include <memory>

#include "simulator/active_antenna.h"
#include "tests/support/bench.h"

namespace quorvex {

/// The main window with a unit on the wire, and the calibration dialog opened from it.
class CalibBench {
public:
    /// "Beltpack", "A" or "B"; the window believes the module that the unit has.
    CalibBench(const QString& target, sim::RfModule module) : target_(target) {
        bench.store.put("RfModule", module == kKirk ? "1" : "0");
        if (target == "Beltpack") {
            unit_ = &bench.startWith(module);
            return;
        }
        antenna_ = std::make_unique<sim::ActiveAntenna>(module);
        unit_ = antenna_.get();
        bench.wire.plugIn(antenna_.get());
        bench.start();
        bench.journal.take();
    }

    /// Opens the dialog by its button and lets `handling` have it until it has closed. The dialog's timer
    /// is made faster, so that closing takes no time.
    void calibrate(const std::function<void(QDialog&)>& handling) {
        bench.person.plan([&handling](QDialog& dialog) {
            dialog.findChild<QTimer*>("Timer1")->setInterval(1);
            handling(dialog);
            QTRY_VERIFY(!dialog.isVisible());
        });
        press();
    }
    void press() {
        if (target_ != "Beltpack")
            bench.clickTab("Active Antenna");
        bench.click(target_ == "Beltpack" ? "CommandCalibBp" : "CommandCalibAA" + target_);
    }
    sim::Unit& unit() { return *unit_; }

    Bench bench;

private:
    QString target_;
    sim::Unit* unit_ = nullptr;
    std::unique_ptr<sim::ActiveAntenna> antenna_;
};

template <typename Control = QWidget>
Control& part(QDialog& dialog, const QString& name) {
    auto* found = dialog.findChild<Control*>(name);
    if (!found)
        qFatal("no control %s", qPrintable(name));
    return *found;
}

inline void cancel(QDialog& dialog) {
    hand::click(part(dialog, "CommandCancel"));
}

inline QString captionOf(const QString& target) {
    return target == "Beltpack" ? QString("Calibrate Beltpack")
                                : "Calibrate Active Antenna - Module " + target;
}

inline QString dialogOpened(const QString& target) {
    return dialogEntry("FormCalib", captionOf(target));
}

}  // namespace quorvex
