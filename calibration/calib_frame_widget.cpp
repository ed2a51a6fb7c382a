#include "calibration/calib_frame_widget.h"

#include <cmath>

#include "form/make.h"

namespace quorvex {

namespace {

constexpr double kTwipsPerPixel = 15;

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

int pixels(Twips twips) {
    return static_cast<int>(std::lround(twips.value / kTwipsPerPixel));
}

/// Labels stand at fixed places: a face too wide for the place is set smaller.
void fitFace(QLabel* label) {
    QFont face = label->font();
    while (QFontMetrics(face).horizontalAdvance(label->text()) > label->width() && face.pointSizeF() > 6)
        face.setPointSizeF(face.pointSizeF() - 0.5);
    label->setFont(face);
}

}  // namespace

const CalibFrameWidget::Names CalibFrameWidget::kBeltpack{"Radio Module Calibration",
                                                          "FM Dev:",
                                                          "TextFMDev",
                                                          "TextFreqAccr",
                                                          "TextFreqAccrRx",
                                                          "TextFreqAccrTx",
                                                          "LabelFreqAccr",
                                                          "LabelTx",
                                                          "LabelMid",
                                                          "LabelRx",
                                                          "TextRssiThr",
                                                          "CommandCalibBp",
                                                          "Calibrate Beltpack",
                                                          true};
const CalibFrameWidget::Names CalibFrameWidget::kModuleA{"Module A (Timeslots 0, 4, 8)",
                                                         "FM Deviation:",
                                                         "TextFmDevA",
                                                         "TextFreqAdjA",
                                                         "TextFreqAdjRxA",
                                                         "TextFreqAdjTxA",
                                                         "LabelFreqAdjA",
                                                         "LabelTxA",
                                                         "LabelMidA",
                                                         "LabelRxA",
                                                         nullptr,
                                                         "CommandCalibAAA",
                                                         "Calibrate Module A",
                                                         false};
const CalibFrameWidget::Names CalibFrameWidget::kModuleB{"Module B (Timeslots 2, 6, 10)",
                                                         "FM Deviation:",
                                                         "TextFmDevB",
                                                         "TextFreqAdjB",
                                                         "TextFreqAdjRxB",
                                                         "TextFreqAdjTxB",
                                                         "LabelFreqAdjB",
                                                         "LabelTxB",
                                                         "LabelMidB",
                                                         "LabelRxB",
                                                         nullptr,
                                                         "CommandCalibAAB",
                                                         "Calibrate Module B",
                                                         false};

CalibFrameWidget::CalibFrameWidget(const Names& names, QWidget* parent)
    : QGroupBox(QString::fromLatin1(names.title), parent),
      movesFreqLabel_(names.movesFreqLabel),
      editFm_(placeField(names.fmDeviation, {kSingleColumn, kTopFm})),
      editFreq_(placeField(names.freqAccuracy, {kSingleColumn, kTopFreq})),
      editTx_(placeField(names.freqAccuracyTx, {kColumnTx, kTopKirk})),
      editRx_(placeField(names.freqAccuracyRx, {kColumnRx, kTopKirk})),
      editRssi_(names.rssiThreshold ? placeField(names.rssiThreshold, {kSingleColumn, kTopRssi}) : nullptr),
      freqLabel_(place(names.freqLabel, "Frequency Accuracy:", editFreq_,
                       {kLeft, kFreqLabelTop, kLabelWidth, kLabelHeight})),
      calibrate_(makeButton(this, names.button, "Calibrate", names.buttonHover)),
      fmDeviation_(editFm_),
      freqAccuracy_(editFreq_),
      freqAccuracyRx_(editRx_),
      freqAccuracyTx_(editTx_),
      rssiThreshold_(editRssi_) {
    setMinimumSize(kFrameSize);
    setFixedHeight(kFrameSize.height());
    place("", names.fmCaption, editFm_, {kLeft, kTopFm + 3, kLabelWidth, kLabelHeight});
    kirkOnly_ = {editTx_, editRx_};
    for (auto [name, caption, buddy, left] : {std::tuple{names.labelTx, "Tx", editTx_, kColumnTx},
                                              std::tuple{names.labelMid, "Mid", editFreq_, kColumnMid},
                                              std::tuple{names.labelRx, "Rx", editRx_, kColumnRx}}) {
        QLabel* label = place(name, caption, buddy, {left, kTopKirkLabels, kFieldWidth, kLabelHeight});
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        kirkOnly_.push_back(label);
    }
    if (editRssi_) {
        kirkOnly_.push_back(editRssi_);
        kirkOnly_.push_back(
            place("LabelRssiThr", "RSSI Thr:", editRssi_, {kLeft, kTopRssi + 3, kLabelWidth, kLabelHeight}));
    }
    calibrate_->setGeometry(kButton);
    std::vector<QWidget*> chain{editFm_, editTx_, editFreq_, editRx_};
    if (editRssi_)
        chain.push_back(editRssi_);
    chain.push_back(calibrate_);
    setTabChain(chain);
    for (QWidget* control : kirkOnly_)
        control->setVisible(false);
}

QLabel* CalibFrameWidget::place(const char* name, const char* caption, QWidget* buddy, QRect at) {
    QLabel* label = makeLabel(this, name, caption, buddy);
    label->setGeometry(at);
    fitFace(label);
    return label;
}

FieldEdit* CalibFrameWidget::placeField(const char* name, QPoint at) {
    FieldEdit* field = makeField(this, name, 3);
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
    editFreq_->move(pixels(layout.midLeft), pixels(layout.midTop));
    if (movesFreqLabel_)
        freqLabel_->move(freqLabel_->x(), pixels(layout.labelTop));
}

}  // namespace quorvex
