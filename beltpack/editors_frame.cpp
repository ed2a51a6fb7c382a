#include "beltpack/editors_frame.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "link/form.h"

namespace quorvex {

EditorsFrame::EditorsFrame(SettingsImage& image, OneItemListWidget& regulations, QWidget* parent)
    : QWidget(parent),
      optionMICBal_(option("optionMICBal", "MIC Bal")),
      optionMICUnBal_(option("optionMICUnBal", "MIC Unbal")),
      optionMICElectret_(option("optionMICElectret", "MIC Electret")),
      checkBattAlarm_(new QCheckBox(QStringLiteral("Battery Alarm"), this)),
      hwRevision_(new OneItemListWidget(this)),
      mic_({optionMICBal_, optionMICUnBal_, optionMICElectret_}),
      batteryAlarm_(checkBattAlarm_),
      editors_(image, mic_, batteryAlarm_, *hwRevision_, regulations) {
    checkBattAlarm_->setObjectName(QStringLiteral("checkBattAlarm"));
    hwRevision_->setObjectName(QStringLiteral("BPHWRevision"));
    QLabel* revisionLabel = makeLabel(this, "BPHWRevisionText", "HW REV:", hwRevision_);
    QPushButton* production = makeButton(this, "buttonSetProdSettiings", "Set Production Values");
    QLabel* defaults = makeLabel(this, "Label12", "Defaults", production);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(optionMICBal_);
    column->addWidget(optionMICUnBal_);
    column->addWidget(optionMICElectret_);
    column->addSpacing(6);
    column->addWidget(checkBattAlarm_);
    column->addSpacing(6);
    auto* revisionRow = new QHBoxLayout;
    revisionRow->addWidget(revisionLabel);
    revisionRow->addWidget(hwRevision_, 1);
    column->addLayout(revisionRow);
    column->addSpacing(6);
    column->addWidget(defaults);
    column->addWidget(production);
    setTabChain({optionMICBal_, optionMICUnBal_, optionMICElectret_, checkBattAlarm_, hwRevision_, production});
}

QRadioButton* EditorsFrame::option(const char* name, const char* caption) {
    auto* button = new QRadioButton(QString::fromLatin1(caption), this);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

}  // namespace quorvex
