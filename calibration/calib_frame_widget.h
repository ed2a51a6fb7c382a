#pragma once

#include <QLabel>
#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

#include "calibration/calib_run.h"
#include "calibration/rf_module.h"
#include "form/field_edit.h"
#include "form/frame.h"
#include "form/qt_controls.h"

namespace quorvex {

/// A frame with the calibration values last read from a Beltpack or from one module of an Active Antenna,
/// and the button that calibrates it. A Kirk module has three frequency values, an RM5 a single one.
/// Its controls stand at fixed places, because the layout moves some of them by their position.
class CalibFrameWidget : public Frame, public CalibFrame {
public:
    struct Names {
        const char* title;
        const char* fmCaption;
        std::string fmField;
        std::string frequency;  ///< what the names of the frequency fields have in common
        std::string suffix;     ///< at the end of the names of fields and labels
        std::string button;
        std::string buttonHover;
        /// It alone has a threshold field, and the layout moves its label of the frequency.
        bool isBeltpack = false;
    };
    static Names beltpack();
    /// `letter` "A" or "B".
    static Names module(const std::string& letter, const char* title);

    CalibFrameWidget(const Names& names, QWidget* parent = nullptr);

    void apply(const CalibLayout& layout) override;

    /// Only where the frame has one.
    TextField& rssiThreshold() { return rssiThreshold_; }
    CalibrationFields fields() {
        return {.fmDeviation = fmDeviation_,
                .freqAccuracy = freqAccuracy_,
                .freqAccuracyRx = freqAccuracyRx_,
                .freqAccuracyTx = freqAccuracyTx_};
    }
    /// Runs `handler`, guarded, for each click on the frame's button.
    void onCalibrate(std::function<void()> handler);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* place(const std::string& name, const char* caption, QWidget* buddy, QRect twips);
    FieldEdit* placeField(const std::string& name, QRect twips);
    /// The frame ends below it.
    void placeButton(int topTwips);
    void placeKirkLabels(const Names& names);
    /// Said where neither the frame nor the labels around a field are seen.
    void sayWhatTheFieldsAre(bool threeFrequencies);

    bool isBeltpack_;
    QString ofModule_;  ///< ", module A"; empty for a Beltpack
    FieldEdit *editFm_, *editFreq_, *editTx_, *editRx_, *editRssi_ = nullptr;
    QLabel* freqLabel_;
    QPushButton* calibrate_;
    std::vector<QWidget*> kirkOnly_;
    LineEditField fmDeviation_, freqAccuracy_, freqAccuracyRx_, freqAccuracyTx_, rssiThreshold_;
};

}  // namespace quorvex
