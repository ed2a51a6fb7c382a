#include "identity/rf_carriers_frame.h"

#include <QCheckBox>
#include <QGridLayout>

#include "form/key_filter.h"
#include "form/make.h"

namespace quorvex {

RfCarriersFrame::RfCarriersFrame(CommandLink& link, SettingsImage& image, Guest guest, QWidget* parent)
    : QGroupBox(QStringLiteral("RF Carriers"), parent),
      textRfCarrs_(makeHexField(this, "TextRfCarrs", 10)),
      update_(link, image, rfCarriers_) {
    textRfCarrs_->setKeyFilter(upperCased);
    textRfCarrs_->onKeyPress([&link](char16_t) { link.status("", kBlack); });
    textRfCarrs_->setAccessibleName(title());
    QPushButton* update = makeButton(this, "CmdSetRfCarrs", "Update", "Send RF Carriers To BP");
    onClick(update, [this] { update_.CmdSetRfCarrs_Click(); });
    // Only keeps its tick.
    auto* fcc = makeCaptioned<QCheckBox>(this, "FCCCheckBox", "FCC Enable");

    auto* grid = new QGridLayout(this);
    grid->addWidget(textRfCarrs_, 0, 0, 1, 2);
    grid->addWidget(update, 0, 2);
    grid->addWidget(guest.label, 1, 0);
    grid->addWidget(guest.control, 1, 1, 1, 2);
    grid->addWidget(fcc, 2, 1, 1, 2, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    setTabChain({textRfCarrs_, update, guest.control, fcc});
}

}  // namespace quorvex
