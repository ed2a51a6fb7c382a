#pragma once

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "calibration/balance_meter.h"
#include "calibration/calib_run.h"
#include "calibration/calib_tuning.h"
#include "calibration/labelled_slider.h"
#include "calibration/readings_plot.h"
#include "form/field_edit.h"
#include "form/qt_controls.h"
#include "link/qt_text.h"

namespace quorvex {

/// The calibration dialog. It closes only from its timer or on a failure there, so that no handler that
/// still waits for the unit loses it; closing it by its window button or Esc is Cancel.
class FormCalib : public QDialog, public CalibDialog, private CalibWindow {
public:
    FormCalib(CommandLink& link, SettingsStore& store, CalResult& result, QWidget* parent);

    void Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit, std::int16_t receive,
                      std::int16_t otherFm, const std::string& caption) override;
    void ShowRssiThreshold() override { tuning_.ShowRssiThreshold(); }
    TextField& rssiThreshold() override { return rssiThreshold_; }
    void StartCalTimer() override { tuning_.StartCalTimer(); }
    void showModally() override { exec(); }
    void reject() override {
        handle([this] { tuning_.CommandCancel_Click(); });
    }

private:
    using Handler = void (CalibTuning::*)();

    std::string caption() const override { return toLatin1(windowTitle()); }
    void setCaption(const std::string& caption) override;
    void showKirkFrame(bool shown) override;
    void showRssiThresholdFrame(bool shown) override { frameRssiThreshold_->setVisible(shown); }
    void startTimer() override { timer1_->start(); }
    void unload() override;
    void showRssi(const std::string& text) override { labelRssi_->setText(fromLatin1(text)); }
    void showDcBalance(const std::string& text) override { labelDcBal_->setText(fromLatin1(text)); }
    void setDcSlider(int position) override { sliderDcBalance_->setValue(position); }
    void plot(const Reading& reading) override { plot_->add(reading); }

    QGroupBox* frame(const char* name, const char* caption, QRect twips);
    QLabel* label(QWidget* parent, const char* name, const char* caption, QPoint twips, int widthTwips);
    static void place(QSlider* slider, const std::string& name, const QString& said, QRect twips);
    /// The label "LabelFmDevValue" for the name "FmDev", at its place.
    QLabel* valueLabel(QWidget* parent, const std::string& name, const char* initial, const QString& said,
                       QPoint twips, int widthTwips);
    /// "SliderFmDev" and its label "LabelFmDevValue" for the name "FmDev".
    LabelledSlider wideSlider(QGroupBox* parent, const std::string& name, int lowest, int highest,
                              int tickInterval, Handler changed);
    /// One of the three beside each other in the frame of a Kirk.
    LabelledSlider kirkSlider(const std::string& name, const char* said, int leftTwips, int valueLeftTwips,
                              Handler changed, Handler scrolled = nullptr);
    QPushButton* button(QWidget* parent, const char* name, const char* caption, QRect twips, Handler pressed);
    void drawScale();
    void buildThreshold();
    void buildTimer();
    void fitFaces();
    /// As wide as what it holds, and wide enough for its title.
    void fitSize();
    /// What runs the handler.
    std::function<void()> handled(Handler handler);
    /// Runs a handler of the dialog; a fault that it leaves uncaught ends the program, as everywhere.
    void handle(const std::function<void()>& handler);
    /// Kept on purpose: keys pressed on CommandOK, CommandCancel, SliderFmDev, SliderFreqAccr do nothing
    /// here.
    void CalKeyHook(int /*key*/) {}

    QGroupBox *frame1_, *frameRm5_, *frameKirk_, *frameRssiThreshold_;
    LabelledSlider fmDev_, freqAccr_, tx_, mid_, rx_;
    BalanceMeter* sliderDcBalance_;
    QLabel *labelRssi_, *labelDcBal_;
    FieldEdit* textRssiThr_;
    LineEditField rssiThreshold_;
    QTimer* timer1_;
    ReadingsPlot* plot_ = nullptr;  ///< only a Kirk streams
    CalibTuning tuning_;
};

}  // namespace quorvex
