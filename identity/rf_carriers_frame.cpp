#include "identity/rf_carriers_frame.h"

#include <QCheckBox>

#include "form/key_filter.h"
#include "form/make.h"

namespace quorvex {

RfCarriersFrame::RfCarriersFrame(CommandLink& link, SettingsImage& image, Guest guest, QWidget* parent)
    : Frame(QStringLiteral("RF Carriers"), parent),
      textRfCarrs_(makeHexField(this, "TextRfCarrs", 10)),
      update_(link, image, rfCarriers_) {
    textRfCarrs_->setKeyFilter(upperCased);
    textRfCarrs_->onKeyPress([&link](char16_t) { link.status("", kBlack); });
    textRfCarrs_->setAccessibleName(title());
    QPushButton* update = makeButton(this, "CmdSetRfCarrs", "Update", "Send RF Carriers To BP");
    update->setAccessibleName(QStringLiteral("Update RF Carriers"));
    onClick(update, [this] { update_.CmdSetRfCarrs_Click(); });
    // Only keeps its tick.
    auto* fcc = makeCaptioned<QCheckBox>(this, "FCCCheckBox", "FCC Enable");

    QGridLayout* rows = makeGrid(this);
    rows->addLayout(makeRow(textRfCarrs_, update), 0, 0);
    rows->addLayout(makeLabelled(guest.label, guest.control), 1, 0);
    rows->addWidget(fcc, 2, 0, Qt::AlignLeft);
    setTabChain({textRfCarrs_, update, guest.control, fcc});
}

}  // namespace quorvex
