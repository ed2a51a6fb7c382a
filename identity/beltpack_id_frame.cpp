#include "identity/beltpack_id_frame.h"

#include "form/key_filter.h"
#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

BeltpackIdFrame::BeltpackIdFrame(CommandLink& link, SettingsImage& image, QWidget* parent)
    : Frame(QStringLiteral("Beltpack ID"), parent),
      textBeltpackId_(makeField(this, "TextBeltpackId", 8, "Beltpack's PMID (Decimal)")),
      update_(link, image, beltpackId_) {
    textBeltpackId_->setKeyFilter(upToNine);
    textBeltpackId_->onKeyPress([this](char16_t key) { update_.TextBeltpackId_KeyPress(key); });
    QPushButton* update = makeButton(this, "CommandSetBpId", "Update", "Send PSN to Beltpack");
    update->setAccessibleName(QStringLiteral("Update Beltpack ID"));
    onClick(update, [this] { update_.CommandSetBpId_Click(); });

    QGridLayout* rows = makeGrid(this);
    rows->setVerticalSpacing(pixels(grid::kLabelGap));
    rows->addWidget(makeLabel(this, "Label1", "PSN (Serial Number)", textBeltpackId_), 0, 0);
    rows->addLayout(makeRow(textBeltpackId_, update), 1, 0);
}

}  // namespace quorvex
