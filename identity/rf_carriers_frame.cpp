#include "identity/rf_carriers_frame.h"

#include <QCheckBox>
#include <QGridLayout>

#include "form/key_filter.h"
#include "form/make.h"

namespace quorvex {

RfCarriersFrame::RfCarriersFrame(CommandLink& link, SettingsImage& image, QWidget* parent)
    : QGroupBox(QStringLiteral("RF Carriers"), parent),
      textRfCarrs_(makeHexField(this, "TextRfCarrs", 10)),
      regulations_(new OneItemListWidget(this)),
      update_(link, image, rfCarriers_) {
    textRfCarrs_->setKeyFilter(upperCased);
    textRfCarrs_->onKeyPress([&link](char16_t) { link.status("", kBlack); });
    textRfCarrs_->setAccessibleName(title());
    QPushButton* update = makeButton(this, "CmdSetRfCarrs", "Update", "Send RF Carriers To BP");
    onClick(update, [this] { update_.CmdSetRfCarrs_Click(); });
    regulations_->setObjectName(QStringLiteral("BPRegulations"));
    QLabel* label = makeLabel(this, "LabelRegulations", "Regulations", regulations_);
    auto* fcc = new QCheckBox(QStringLiteral("FCC Enable"), this);  // shown, and only keeps its tick
    fcc->setObjectName(QStringLiteral("FCCCheckBox"));

    auto* grid = new QGridLayout(this);
    grid->addWidget(textRfCarrs_, 0, 0, 1, 2);
    grid->addWidget(update, 0, 2);
    grid->addWidget(label, 1, 0);
    grid->addWidget(regulations_, 1, 1, 1, 2);
    grid->addWidget(fcc, 2, 1, 1, 2, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    setTabChain({textRfCarrs_, update, regulations_, fcc});
}

}  // namespace quorvex
