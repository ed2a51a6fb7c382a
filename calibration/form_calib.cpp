#include "calibration/form_calib.h"

#include <QEvent>
#include <QKeyEvent>
#include <chrono>

#include "form/fixed_places.h"
#include "form/guard.h"
#include "form/key_filter.h"
#include "form/make.h"
#include "link/qt_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::chrono::milliseconds kTick{400};
constexpr int kThresholdCharacters = 10;
constexpr int kLabelHeightTwips = 255;
constexpr QSize kDialogTwips{4815, 4500};

/// What moves a slider.
bool isByHand(const QEvent& event) {
    switch (event.type()) {
        case QEvent::KeyPress:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
            return true;
        default:
            return false;
    }
}

}  // namespace

FormCalib::FormCalib(CommandLink& link, SettingsStore& store, CalResult& result, QWidget* parent)
    : QDialog(parent),
      frame1_(frame("Frame1", "FM Deviation", {120, 240, 4575, 855})),
      frameRm5_(frame("FrameRm5", "Frequency Accuracy", {120, 1320, 4575, 855})),
      frameKirk_(frame("FrameKirk", "Frequency Accuracy / DC Balance", {120, 1320, 4575, 1935})),
      frameRssiThreshold_(
          frame("FrameRssiThreshold", "RSSI -80.5dBm Threshold - Decimal", {120, 3480, 2895, 855})),
      fmDev_(slider(frame1_, "SliderFmDev", {120, 360, 3855, 375}, 0, 63),
             label(frame1_, "LabelFmDevValue", "1", {4080, 400}, 375),
             [this] { handle([this] { tuning_.SliderFmDev_Change(); }); }),
      freqAccr_(slider(frameRm5_, "SliderFreqAccr", {120, 360, 3855, 375}, -7, 7),
                label(frameRm5_, "LabelFreqAccrValue", "1", {4080, 400}, 375),
                [this] { handle([this] { tuning_.SliderFreqAccr_Change(); }); }),
      tx_(
          slider(frameKirk_, "SliderTx", {120, 480, 1455, 375}, 0, 7),
          label(frameKirk_, "LabelTxValue", "0", {1200, 300}, 315),
          [this] { handle([this] { tuning_.SliderTx_Change(); }); }, [this] { tuning_.SliderTx_Scroll(); }),
      mid_(slider(frameKirk_, "SliderMid", {1560, 480, 1455, 375}, 0, 7),
           label(frameKirk_, "LabelMidValue", "0", {2280, 300}, 315),
           [this] { handle([this] { tuning_.SliderMid_Change(); }); }),
      rx_(
          slider(frameKirk_, "SliderRx", {3000, 480, 1455, 375}, 0, 7),
          label(frameKirk_, "LabelRxValue", "0", {4080, 300}, 315),
          [this] { handle([this] { tuning_.SliderRx_Change(); }); }, [this] { tuning_.SliderRx_Scroll(); }),
      sliderDcBalance_(slider(frameKirk_, "SliderDCBalance", {240, 1080, 4095, 375}, 0, 200)),
      labelRssi_(label(frameKirk_, "LabelRssi", "RSSI:", {120, 1560}, 1935)),
      labelDcBal_(label(frameKirk_, "LabelDcBal", "DC Bal:", {3120, 1560}, 1335)),
      textRssiThr_(makeField(frameRssiThreshold_, "TextRssiThr", kThresholdCharacters,
                             "Set to 255 for non-USA Beltpacks")),
      rssiThreshold_(textRssiThr_),
      cmdSetRssiThr_(makeButton(frameRssiThreshold_, "CmdSetRssiThr", "&Update", "Send RF Carriers To BP")),
      commandOk_(makeButton(this, "CommandOK", "&OK")),
      commandCancel_(makeButton(this, "CommandCancel", "&Cancel")),
      timer1_(new QTimer(this)),
      tuning_(link, store, *this, {fmDev_, freqAccr_, tx_, mid_, rx_, rssiThreshold_}, result) {
    setObjectName(QStringLiteral("FormCalib"));
    setFixedSize(pixels(kDialogTwips.width()), pixels(kDialogTwips.height()));
    label(frameKirk_, "Label1", "Transmit:", {480, 300}, 720);
    label(frameKirk_, "Label2", "Mid:", {1920, 300}, 360);
    label(frameKirk_, "Label3", "Receive:", {3360, 300}, 720);
    buildDcBalance();
    buildButtons();
    fitFaces();
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(kTick);
    timer1_->setTimerType(Qt::PreciseTimer);
    connect(timer1_, &QTimer::timeout, this, [this] { handle([this] { tuning_.Timer1_Timer(); }); });
    tuning_.load();
}

QGroupBox* FormCalib::frame(const char* name, const char* caption, QRect twips) {
    auto* box = new QGroupBox(QString::fromLatin1(caption), this);
    box->setObjectName(QString::fromLatin1(name));
    box->setGeometry(pixels(twips));
    return box;
}

QLabel* FormCalib::label(QWidget* parent, const char* name, const char* caption, QPoint twips,
                         int widthTwips) {
    QLabel* made = makeLabel(parent, name, caption);
    made->setGeometry(pixels(QRect(twips, QSize(widthTwips, kLabelHeightTwips))));
    return made;
}

QSlider* FormCalib::slider(QWidget* parent, const char* name, QRect twips, int lowest, int highest) {
    auto* made = new QSlider(Qt::Horizontal, parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setGeometry(pixels(twips));
    made->setRange(lowest, highest);
    made->setPageStep(1);
    made->setTickPosition(QSlider::TicksBelow);
    return made;
}

void FormCalib::buildDcBalance() {
    drawScale();
    sliderDcBalance_->setTickInterval(10);
    sliderDcBalance_->setValue(100);
    sliderDcBalance_->setAccessibleName(QStringLiteral("DC balance"));
    // It only shows: neither the mouse nor a key moves it.
    sliderDcBalance_->setFocusPolicy(Qt::NoFocus);
    sliderDcBalance_->setAttribute(Qt::WA_TransparentForMouseEvents);
    sliderDcBalance_->installEventFilter(this);
    label(frameKirk_, "Label6", "0", {2235, 1560}, 240);
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
        line->setAutoFillBackground(true);
        line->setPalette(piece.colour);
        line->setGeometry(pixels(piece.fromX), pixels(piece.y) - kWidth / 2,
                          pixels(piece.toX) - pixels(piece.fromX), kWidth);
    }
}

void FormCalib::buildButtons() {
    const QRect field = pixels(QRect(120, 360, 1335, 375));
    textRssiThr_->setFixedSize(field.size());
    textRssiThr_->move(field.topLeft());
    textRssiThr_->setMaxLength(kThresholdCharacters);
    textRssiThr_->setAccessibleName(frameRssiThreshold_->title());
    textRssiThr_->setKeyFilter(upToNine);
    textRssiThr_->onKeyPress(
        [this](char16_t key) { handle([this, key] { tuning_.TextRssiThr_KeyPress(key); }); });
    cmdSetRssiThr_->setGeometry(pixels(QRect(1680, 360, 975, 375)));
    commandOk_->setGeometry(pixels(QRect(3240, 3480, 1455, 375)));
    commandCancel_->setGeometry(pixels(QRect(3240, 3960, 1455, 375)));
    // Enter in the threshold field sends the threshold; it must not press a button besides.
    for (QPushButton* button : {cmdSetRssiThr_, commandOk_, commandCancel_})
        button->setAutoDefault(false);
    const auto onPress = [this](QPushButton* button, void (CalibTuning::*handler)()) {
        connect(button, &QPushButton::clicked, this,
                [this, handler] { handle([&] { (tuning_.*handler)(); }); });
    };
    onPress(cmdSetRssiThr_, &CalibTuning::CmdSetRssiThr_Click);
    onPress(commandOk_, &CalibTuning::CommandOK_Click);
    onPress(commandCancel_, &CalibTuning::CommandCancel_Click);
    const QList<QWidget*> hooked{commandOk_, commandCancel_,
                                 findChild<QSlider*>(QStringLiteral("SliderFmDev")),
                                 findChild<QSlider*>(QStringLiteral("SliderFreqAccr"))};
    for (QWidget* control : hooked)
        control->installEventFilter(this);
}

/// One face for the whole dialog: the widest texts of the tightest places decide.
void FormCalib::fitFaces() {
    setFont(fittingFace(font(), {{frameRssiThreshold_->title(), pixels(2895 - 120)},
                                 {QStringLiteral("DC Bal: No Conn"), pixels(1335)},
                                 {QStringLiteral("Transmit:"), pixels(720)},
                                 {QStringLiteral("Receive:"), pixels(720)}}));
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

void FormCalib::showModally() {
    exec();
}

void FormCalib::unload() {
    // The modal show may have to wait for the box of a button; no tick comes in the meantime.
    timer1_->stop();
    done(QDialog::Accepted);
}

void FormCalib::reject() {
    handle([this] { tuning_.CommandCancel_Click(); });
}

bool FormCalib::eventFilter(QObject* watched, QEvent* event) {
    if (watched == sliderDcBalance_)
        return isByHand(*event);
    if (event->type() == QEvent::KeyPress)
        CalKeyHook(static_cast<QKeyEvent*>(event)->key());
    return QDialog::eventFilter(watched, event);
}

std::string FormCalib::caption() const {
    return toLatin1(windowTitle());
}

void FormCalib::setCaption(const std::string& caption) {
    setWindowTitle(fromLatin1(caption));
}

void FormCalib::showKirkFrame(bool shown) {
    frameKirk_->setVisible(shown);
    frameRm5_->setVisible(!shown);  // it lies beneath the other one
}

void FormCalib::showRssi(const std::string& text) {
    labelRssi_->setText(fromLatin1(text));
}

void FormCalib::showDcBalance(const std::string& text) {
    labelDcBal_->setText(fromLatin1(text));
}

}  // namespace quorvex
