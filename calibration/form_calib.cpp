#include "calibration/form_calib.h"

#include <algorithm>
#include <chrono>

#include "form/accessible.h"
#include "form/guard.h"
#include "form/key_filter.h"
#include "form/lengths.h"
#include "form/make.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::chrono::milliseconds kTick{400};
constexpr int kThresholdCharacters = 10;
constexpr int kLabelHeightTwips = 255;
constexpr QSize kDialogTwips{4815, 4500};

// In twips.
constexpr QRect kPlot{4920, 240, 3600, 4095};
constexpr int kPlotRight = kPlot.x() + kPlot.width() + 120;
constexpr QRect kMeter{240, 1080, 4095, 375};

}  // namespace

FormCalib::FormCalib(CommandLink& link, SettingsStore& store, CalResult& result, QWidget* parent)
    : QDialog(parent),
      frame1_(frame("Frame1", "FM Deviation", {120, 240, 4575, 855})),
      frameRm5_(frame("FrameRm5", "Frequency Accuracy", {120, 1320, 4575, 855})),
      frameKirk_(frame("FrameKirk", "Frequency Accuracy / DC Balance", {120, 1320, 4575, 1935})),
      frameRssiThreshold_(
          frame("FrameRssiThreshold", "RSSI -80.5dBm Threshold - Decimal", {120, 3480, 2895, 855})),
      fmDev_(wideSlider(frame1_, "FmDev", 0, 63, 9, &CalibTuning::SliderFmDev_Change)),
      freqAccr_(wideSlider(frameRm5_, "FreqAccr", -7, 7, 1, &CalibTuning::SliderFreqAccr_Change)),
      tx_(kirkSlider("Tx", "Transmit", 120, 1200, &CalibTuning::SliderTx_Change,
                     &CalibTuning::SliderTx_Scroll)),
      mid_(kirkSlider("Mid", "Mid", 1560, 2280, &CalibTuning::SliderMid_Change)),
      rx_(kirkSlider("Rx", "Receive", 3000, 4080, &CalibTuning::SliderRx_Change,
                     &CalibTuning::SliderRx_Scroll)),
      sliderDcBalance_(new BalanceMeter(frameKirk_)),
      labelRssi_(label(frameKirk_, "LabelRssi", "RSSI:", {120, 1560}, 1935)),
      labelDcBal_(label(frameKirk_, "LabelDcBal", "DC Bal:", {3120, 1560}, 1335)),
      textRssiThr_(makeField(frameRssiThreshold_, "TextRssiThr", kThresholdCharacters,
                             "Set to 255 for non-USA Beltpacks")),
      rssiThreshold_(textRssiThr_),
      timer1_(new QTimer(this)),
      tuning_(link, store, *this, {fmDev_, freqAccr_, tx_, mid_, rx_, rssiThreshold_}, result) {
    setObjectName(QStringLiteral("FormCalib"));
    label(frameKirk_, "Label1", "Transmit:", {480, 300}, 720);
    label(frameKirk_, "Label2", "Mid:", {1920, 300}, 360);
    label(frameKirk_, "Label3", "Receive:", {3360, 300}, 720);
    place(sliderDcBalance_, "DCBalance", QStringLiteral("DC balance"), kMeter);
    drawScale();
    label(frameKirk_, "Label6", "0", {2235, 1560}, 240)
        ->setAccessibleDescription(QStringLiteral("Middle of the DC balance"));
    buildThreshold();
    button(this, "CommandOK", "&OK", {3240, 3480, 1455, 375}, &CalibTuning::CommandOK_Click);
    button(this, "CommandCancel", "&Cancel", {3240, 3960, 1455, 375}, &CalibTuning::CommandCancel_Click);
    fitFaces();
    buildTimer();
    tuning_.load();
}

QGroupBox* FormCalib::frame(const char* name, const char* caption, QRect twips) {
    auto* box = makeCaptioned<QGroupBox>(this, name, caption);
    box->setGeometry(pixels(twips));
    return box;
}

QLabel* FormCalib::label(QWidget* parent, const char* name, const char* caption, QPoint twips,
                         int widthTwips) {
    QLabel* made = makeLabel(parent, name, caption);
    made->setGeometry(pixels(QRect(twips, QSize(widthTwips, kLabelHeightTwips))));
    return made;
}

void FormCalib::place(QSlider* slider, const std::string& name, const QString& said, QRect twips) {
    slider->setObjectName(fromLatin1("Slider" + name));
    slider->setAccessibleName(said);
    slider->setGeometry(pixels(twips));
}

QLabel* FormCalib::valueLabel(QWidget* parent, const std::string& name, const char* initial,
                              const QString& said, QPoint twips, int widthTwips) {
    QLabel* made = label(parent, ("Label" + name + "Value").c_str(), initial, twips, widthTwips);
    made->setAccessibleDescription(said);  // a name would hide the value
    return made;
}

LabelledSlider FormCalib::wideSlider(QGroupBox* parent, const std::string& name, int lowest, int highest,
                                     int tickInterval, Handler changed) {
    auto* slider = new TickedSlider(lowest, highest, tickInterval, parent);
    place(slider, name, parent->title(), {120, 360, 3855, 375});
    return {slider, valueLabel(parent, name, "1", parent->title(), {4080, 400}, 375), handled(changed)};
}

LabelledSlider FormCalib::kirkSlider(const std::string& name, const char* said, int leftTwips,
                                     int valueLeftTwips, Handler changed, Handler scrolled) {
    const QString caption = QString::fromLatin1(said);
    auto* slider = new TickedSlider(0, 7, 1, frameKirk_);
    place(slider, name, caption, {leftTwips, 480, 1455, 375});
    return {slider, valueLabel(frameKirk_, name, "0", caption, {valueLeftTwips, 300}, 315), handled(changed),
            scrolled ? handled(scrolled) : nullptr};
}

QPushButton* FormCalib::button(QWidget* parent, const char* name, const char* caption, QRect twips,
                               Handler pressed) {
    QPushButton* made = makeButton(parent, name, caption);
    made->setFixedSize(pixels(twips).size());
    made->move(pixels(twips).topLeft());
    // Enter in the threshold field sends the threshold; it must not press a button besides.
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, handled(pressed));
    return made;
}

void FormCalib::drawScale() {
    struct Piece {
        const char* name;
        int fromX, toX, y;
        QColor colour;
    };
    const QColor red(192, 0, 0);
    const QColor green(0, 192, 0);
    for (const Piece& piece : {Piece{"Line3", 360, 1800, 1035, red}, Piece{"Line1", 1800, 2760, 1040, green},
                               Piece{"Line2", 2760, 4200, 1035, red}}) {
        constexpr int kWidth = 2;
        auto* line = new QWidget(frameKirk_);
        line->setObjectName(QString::fromLatin1(piece.name));
        setAccessibleRole(line, QAccessible::Separator);
        line->setAutoFillBackground(true);
        line->setPalette(piece.colour);
        line->setGeometry(pixels(piece.fromX), pixels(piece.y) - kWidth / 2,
                          pixels(piece.toX) - pixels(piece.fromX), kWidth);
    }
}

void FormCalib::buildThreshold() {
    const QRect field = pixels(QRect(120, 360, 1335, 375));
    textRssiThr_->setFixedSize(field.size());
    textRssiThr_->move(field.topLeft());
    textRssiThr_->setMaxLength(kThresholdCharacters);
    textRssiThr_->setAccessibleName(frameRssiThreshold_->title());
    textRssiThr_->setKeyFilter(upToNine);
    textRssiThr_->onKeyPress(
        [this](char16_t key) { handle([this, key] { tuning_.TextRssiThr_KeyPress(key); }); });
    button(frameRssiThreshold_, "CmdSetRssiThr", "&Update", {1680, 360, 975, 375},
           &CalibTuning::CmdSetRssiThr_Click)
        ->setToolTip(QStringLiteral("Send RF Carriers To BP"));
}

void FormCalib::buildTimer() {
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(kTick);
    timer1_->setTimerType(Qt::PreciseTimer);
    connect(timer1_, &QTimer::timeout, this, handled(&CalibTuning::Timer1_Timer));
}

/// One face for the whole dialog: the widest texts of the tightest places decide.
void FormCalib::fitFaces() {
    setFont(fittingFace(font(), {{frameRssiThreshold_->title(), pixels(2895 - 120)},
                                 {QStringLiteral("DC Bal: No Conn"), pixels(1335)},
                                 {QStringLiteral("Transmit:"), pixels(720)},
                                 {QStringLiteral("Receive:"), pixels(720)}}));
}

void FormCalib::fitSize() {
    const int forControls = pixels(plot_ ? kPlotRight : kDialogTwips.width());
    setFixedSize(std::max(widthForTitle(windowTitle()), forControls), pixels(kDialogTwips.height()));
}

std::function<void()> FormCalib::handled(Handler handler) {
    return [this, handler] { handle([this, handler] { (tuning_.*handler)(); }); };
}

void FormCalib::handle(const std::function<void()>& handler) {
    guarded([&] {
        try {
            handler();
        } catch (const RuntimeFault&) {
            timer1_->stop();  // no tick comes in between while the fault is told
            throw;
        }
    });
}

void FormCalib::Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit,
                             std::int16_t receive, std::int16_t otherFm, const std::string& caption) {
    tuning_.Set_Cal_Data(fm, frequency, transmit, receive, otherFm, caption);
}

void FormCalib::setCaption(const std::string& caption) {
    setWindowTitle(fromLatin1(caption));
    fitSize();
}

void FormCalib::unload() {
    // The modal show may have to wait for the box of a button; no tick comes in the meantime.
    timer1_->stop();
    done(QDialog::Accepted);
}

void FormCalib::showKirkFrame(bool shown) {
    frameKirk_->setVisible(shown);
    frameRm5_->setVisible(!shown);  // it lies beneath the other one
    if (!shown)
        return;
    plot_ = new ReadingsPlot(this);
    plot_->setGeometry(pixels(kPlot));
}

}  // namespace quorvex
