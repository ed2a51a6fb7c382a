#include "beltpack/editors_frame.h"

#include "form/frame.h"
#include "form/guard.h"
#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

EditorsFrame::EditorsFrame(SettingsImage& image, QWidget* parent)
    : QWidget(parent),
      optionMICBal_(makeCaptioned<QRadioButton>(this, "optionMICBal", "MIC Bal")),
      optionMICUnBal_(makeCaptioned<QRadioButton>(this, "optionMICUnBal", "MIC Unbal")),
      optionMICElectret_(makeCaptioned<QRadioButton>(this, "optionMICElectret", "MIC Electret")),
      checkBattAlarm_(makeCaptioned<QCheckBox>(this, "checkBattAlarm", "Battery Alarm")),
      hwRevision_(list("BPHWRevision", "HW REV", &SettingsEditors::BPHWRevision_Scroll)),
      regulations_(list("BPRegulations", "Regulations", &SettingsEditors::BPRegulations_Scroll)),
      regulationsLabel_(makeLabel(this, "LabelRegulations", "Regulations", regulations_)),
      setProdSettings_(makeButton(this, "buttonSetProdSettiings", "Set Production Values")),
      defaults_(makeLabel(this, "Label12", "Defaults", setProdSettings_)),
      mic_({optionMICBal_, optionMICUnBal_, optionMICElectret_}),
      batteryAlarm_(checkBattAlarm_),
      editors_(image, mic_, batteryAlarm_, *hwRevision_, *regulations_) {
    onClick(optionMICBal_, [this] { editors_.optionMICBal_Click(); });
    onClick(optionMICUnBal_, [this] { editors_.optionMICUnBal_Click(); });
    onClick(optionMICElectret_, [this] { editors_.optionMICElectret_Click(); });
    onClick(checkBattAlarm_, [this] { editors_.checkBattAlarm_Click(); });
    layOut();
}

void EditorsFrame::layOut() {
    defaults_->setFont(headingFace(defaults_->font()));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, pixels(grid::kHeading), 0, pixels(grid::kFrameInset));
    column->setSpacing(pixels(grid::kGap));
    // No wider than their captions: a click anywhere on one counts.
    auto* microphones = new QVBoxLayout;
    microphones->setSpacing(pixels(grid::kLabelGap));
    for (QRadioButton* microphone : {optionMICBal_, optionMICUnBal_, optionMICElectret_})
        microphones->addWidget(microphone, 0, Qt::AlignLeft);
    column->addLayout(microphones);
    column->addWidget(checkBattAlarm_, 0, Qt::AlignLeft);
    auto* revisionRow = new QHBoxLayout;
    revisionRow->setSpacing(pixels(grid::kGap));
    revisionRow->addWidget(makeLabel(this, "BPHWRevisionText", "HW REV:", hwRevision_));
    revisionRow->addWidget(hwRevision_, 1);
    column->addLayout(revisionRow);
    column->addSpacing(pixels(grid::kFrameGap - grid::kGap));
    column->addWidget(defaults_);
    column->addSpacing(pixels(grid::kHeading + grid::kLabelGap - grid::kGap));
    column->addWidget(setProdSettings_);
    setTabChain(
        {optionMICBal_, optionMICUnBal_, optionMICElectret_, checkBattAlarm_, hwRevision_, setProdSettings_});
}

void EditorsFrame::paintEvent(QPaintEvent*) {
    drawRule(*this, 0);
    drawRule(*this, defaults_->geometry().bottom() + pixels(grid::kLabelGap));
}

void EditorsFrame::connectTo(ProductionValues& production) {
    onClick(setProdSettings_, [&production] { production.buttonSetProdSettiings_Click(); });
}

OneItemListWidget* EditorsFrame::list(const char* name, const char* said,
                                      void (SettingsEditors::*scrolled)()) {
    auto* made = new OneItemListWidget(this);
    made->setObjectName(QString::fromLatin1(name));
    made->setAccessibleName(QString::fromLatin1(said));  // the toolkit gives a list no name by its label
    connect(made, &OneItemListWidget::scrolled, this,
            [this, scrolled] { guarded([this, scrolled] { (editors_.*scrolled)(); }); });
    return made;
}

}  // namespace quorvex
