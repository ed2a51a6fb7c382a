#include "calibration/calib_frame_widget.h"

#include <QLayout>

#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

namespace {

// Places from the frame's corner, and sizes, in twips.
constexpr int kLeft = grid::kFrameInset;
constexpr int kColumnTx = kLeft, kColumnMid = 1080, kColumnRx = 2115;
constexpr int kNarrowField = 915;
constexpr int kSingleColumn = 1920, kSingleField = 1110;
constexpr int kRight = kSingleColumn + kSingleField;
constexpr int kTopFm = 450, kTopFreq = 960, kTopFreqLabel = 1000, kTopKirk = 1320;
constexpr int kTopKirkLabels = kTopKirk + grid::kField + grid::kLabelGap;
constexpr int kLabelHeight = 240, kFreqLabelHeight = 300, kLabelWidth = kSingleColumn - kLeft - 30;
constexpr int kTopRssi = kTopKirkLabels + kLabelHeight + grid::kGap;
constexpr QRect kSingleFreq{kSingleColumn, kTopFreq, kSingleField, grid::kField};

// The first place below the values, for the button.
constexpr int kBelowSingle = kTopFreq + grid::kField + grid::kGap;
constexpr int kBelowKirkLabels = kTopRssi;
constexpr int kBelowRssi = kTopRssi + grid::kField + grid::kGap;

constexpr QRect inKirkRow(int left) {
    return {left, kTopKirk, kNarrowField, grid::kField};
}

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
    : Frame(QString::fromLatin1(names.title), parent),
      isBeltpack_(names.isBeltpack),
      ofModule_(isBeltpack_ ? QString() : QStringLiteral(", module ") + QString::fromStdString(names.suffix)),
      editFm_(placeField(names.fmField, {kSingleColumn, kTopFm, kSingleField, grid::kField})),
      editFreq_(placeField(named("Text", names.frequency, names), kSingleFreq)),
      editTx_(placeField(named("Text", names.frequency + "Tx", names), inKirkRow(kColumnTx))),
      editRx_(placeField(named("Text", names.frequency + "Rx", names), inKirkRow(kColumnRx))),
      editRssi_(isBeltpack_ ? placeField("TextRssiThr", {kSingleColumn, kTopRssi, kSingleField, grid::kField})
                            : nullptr),
      freqLabel_(place(named("Label", names.frequency, names), "Frequency Accuracy:", editFreq_,
                       {kLeft, kTopFreqLabel, kLabelWidth, kFreqLabelHeight})),
      calibrate_(makeButton(this, names.button.c_str(), "Calibrate", names.buttonHover.c_str())),
      kirkOnly_{editTx_, editRx_},
      fmDeviation_(editFm_),
      freqAccuracy_(editFreq_),
      freqAccuracyRx_(editRx_),
      freqAccuracyTx_(editTx_),
      rssiThreshold_(editRssi_) {
    place("", names.fmCaption, editFm_, {kLeft, kTopFm, kLabelWidth, grid::kField});
    placeKirkLabels(names);
    sayWhatTheFieldsAre(false);
    placeButton(kBelowSingle);
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
                              {left, kTopKirkLabels, kNarrowField, kLabelHeight});
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        kirkOnly_.push_back(label);
    }
    if (editRssi_) {
        kirkOnly_.push_back(editRssi_);
        kirkOnly_.push_back(
            place("LabelRssiThr", "RSSI Thr:", editRssi_, {kLeft, kTopRssi, kLabelWidth, grid::kField}));
    }
}

void CalibFrameWidget::sayWhatTheFieldsAre(bool threeFrequencies) {
    const auto say = [this](QWidget* field, const char* text) {
        field->setAccessibleName(QLatin1String(text) + ofModule_);
    };
    say(editFm_, "FM Deviation");
    say(editFreq_, threeFrequencies ? "Frequency Accuracy Mid" : "Frequency Accuracy");
    say(editTx_, "Frequency Accuracy Tx");
    say(editRx_, "Frequency Accuracy Rx");
}

QLabel* CalibFrameWidget::place(const std::string& name, const char* caption, QWidget* buddy, QRect twips) {
    QLabel* label = makeLabel(this, name.c_str(), caption, buddy);
    label->setGeometry(pixels(twips));
    label->setFont(fittingFace(label->font(), {{label->text(), label->width()}}));
    return label;
}

FieldEdit* CalibFrameWidget::placeField(const std::string& name, QRect twips) {
    constexpr int kCharacters = 3;
    FieldEdit* field = makeField(this, name.c_str(), kCharacters);
    field->setFixedWidth(pixels(twips.width()));
    field->setGeometry(pixels(twips));
    return field;
}

void CalibFrameWidget::placeButton(int topTwips) {
    calibrate_->move(pixels(kLeft), pixels(topTwips));
    setMinimumSize(pixels(kRight + kLeft), pixels(topTwips + grid::kField + grid::kFrameInset));
    setMaximumHeight(minimumHeight());
}

void CalibFrameWidget::resizeEvent(QResizeEvent* event) {
    Frame::resizeEvent(event);
    calibrate_->resize(width() - 2 * calibrate_->x(), pixels(grid::kField));
}

void CalibFrameWidget::onCalibrate(std::function<void()> handler) {
    onClick(calibrate_, std::move(handler));
}

void CalibFrameWidget::apply(const CalibLayout& layout) {
    calibrate_->setText(QString::fromStdString(layout.buttonCaption));
    for (QWidget* control : kirkOnly_)
        control->setVisible(layout.kirkControls);
    editFreq_->setFixedWidth(pixels(layout.kirkControls ? kNarrowField : kSingleField));
    editFreq_->move(pixels(layout.midLeft.value), pixels(layout.midTop.value));
    if (isBeltpack_)
        freqLabel_->move(freqLabel_->x(), pixels(layout.labelTop.value));
    sayWhatTheFieldsAre(layout.kirkControls);
    placeButton(!layout.kirkControls ? kBelowSingle : isBeltpack_ ? kBelowRssi : kBelowKirkLabels);
    // At once, so that no click meets a control that is about to move.
    if (parentWidget() && parentWidget()->layout())
        parentWidget()->layout()->activate();
}

}  // namespace quorvex
