#include "calibration/calib_frame_widget.h"

#include "form/fixed_places.h"
#include "form/make.h"

namespace quorvex {

namespace {

// Places in logical pixels from the frame's corner.
constexpr int kLeft = 8;
constexpr int kColumnTx = 8, kColumnMid = 72, kColumnRx = 136;
constexpr int kFieldWidth = 56, kFieldHeight = 24;
constexpr int kSingleColumn = 128;
constexpr int kTopFm = 26, kTopFreq = 64, kTopKirk = 88, kTopKirkLabels = 113, kTopRssi = 136;
constexpr int kFreqLabelTop = 67, kLabelHeight = 18;
constexpr int kLabelWidth = kSingleColumn - kLeft - 4;
constexpr QSize kFrameSize{204, 206};  ///< the least width; the height is fixed
constexpr QRect kButton{8, 170, 188, 28};

/// The name of a field or label: "TextFreqAdjRxA" is the one of `part` "FreqAdjRx" of module A.
std::string named(const char* kind, const std::string& part, const CalibFrameWidget::Names& names) {
    return kind + part + names.suffix;
}

}  // namespace

CalibFrameWidget::Names CalibFrameWidget::beltpack() {
    return {.title = "Radio Module Calibration",
            .fmCaption = "FM Dev:",
            .fmField = "TextFMDev",
            .frequency = "FreqAccr",
            .suffix = "",
            .button = "CommandCalibBp",
            .buttonHover = "Calibrate Beltpack",
            .isBeltpack = true};
}

CalibFrameWidget::Names CalibFrameWidget::module(const std::string& letter, const char* title) {
    return {.title = title,
            .fmCaption = "FM Deviation:",
            .fmField = "TextFmDev" + letter,
            .frequency = "FreqAdj",
            .suffix = letter,
            .button = "CommandCalibAA" + letter,
            .buttonHover = "Calibrate Module " + letter};
}

CalibFrameWidget::CalibFrameWidget(const Names& names, QWidget* parent)
    : QGroupBox(QString::fromLatin1(names.title), parent),
      isBeltpack_(names.isBeltpack),
      editFm_(placeField(names.fmField, {kSingleColumn, kTopFm})),
      editFreq_(placeField(named("Text", names.frequency, names), {kSingleColumn, kTopFreq})),
      editTx_(placeField(named("Text", names.frequency + "Tx", names), {kColumnTx, kTopKirk})),
      editRx_(placeField(named("Text", names.frequency + "Rx", names), {kColumnRx, kTopKirk})),
      editRssi_(isBeltpack_ ? placeField("TextRssiThr", {kSingleColumn, kTopRssi}) : nullptr),
      freqLabel_(place(named("Label", names.frequency, names), "Frequency Accuracy:", editFreq_,
                       {kLeft, kFreqLabelTop, kLabelWidth, kLabelHeight})),
      calibrate_(makeButton(this, names.button.c_str(), "Calibrate", names.buttonHover.c_str())),
      kirkOnly_{editTx_, editRx_},
      fmDeviation_(editFm_),
      freqAccuracy_(editFreq_),
      freqAccuracyRx_(editRx_),
      freqAccuracyTx_(editTx_),
      rssiThreshold_(editRssi_) {
    setMinimumSize(kFrameSize);
    setFixedHeight(kFrameSize.height());
    place("", names.fmCaption, editFm_, {kLeft, kTopFm + 3, kLabelWidth, kLabelHeight});
    placeKirkLabels(names);
    calibrate_->setGeometry(kButton);
    std::vector<QWidget*> chain{editFm_, editTx_, editFreq_, editRx_};
    if (editRssi_)
        chain.push_back(editRssi_);
    chain.push_back(calibrate_);
    setTabChain(chain);
    for (QWidget* control : kirkOnly_)
        control->setVisible(false);
}

void CalibFrameWidget::placeKirkLabels(const Names& names) {
    for (auto [part, buddy, left] :
         {std::tuple{"Tx", editTx_, kColumnTx}, {"Mid", editFreq_, kColumnMid}, {"Rx", editRx_, kColumnRx}}) {
        QLabel* label = place(named("Label", part, names), part, buddy,
                              {left, kTopKirkLabels, kFieldWidth, kLabelHeight});
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        kirkOnly_.push_back(label);
    }
    if (editRssi_) {
        kirkOnly_.push_back(editRssi_);
        kirkOnly_.push_back(
            place("LabelRssiThr", "RSSI Thr:", editRssi_, {kLeft, kTopRssi + 3, kLabelWidth, kLabelHeight}));
    }
}

QLabel* CalibFrameWidget::place(const std::string& name, const char* caption, QWidget* buddy, QRect at) {
    QLabel* label = makeLabel(this, name.c_str(), caption, buddy);
    label->setGeometry(at);
    label->setFont(fittingFace(label->font(), {{label->text(), label->width()}}));
    return label;
}

FieldEdit* CalibFrameWidget::placeField(const std::string& name, QPoint at) {
    FieldEdit* field = makeField(this, name.c_str(), 3);
    field->setFixedSize(kFieldWidth, kFieldHeight);
    field->move(at);
    return field;
}

void CalibFrameWidget::onCalibrate(std::function<void()> handler) {
    onClick(calibrate_, std::move(handler));
}

void CalibFrameWidget::apply(const CalibLayout& layout) {
    calibrate_->setText(QString::fromStdString(layout.buttonCaption));
    for (QWidget* control : kirkOnly_)
        control->setVisible(layout.kirkControls);
    editFreq_->move(pixels(layout.midLeft.value), pixels(layout.midTop.value));
    if (isBeltpack_)
        freqLabel_->move(freqLabel_->x(), pixels(layout.labelTop.value));
}

}  // namespace quorvex
