#include "identity/beltpack_id_frame.h"

#include <QHBoxLayout>

#include "link/form.h"

namespace quorvex {

BeltpackIdFrame::BeltpackIdFrame(QWidget* parent)
    : QGroupBox(QStringLiteral("Beltpack ID"), parent),
      textBeltpackId_(makeField(this, "TextBeltpackId", 8, "Beltpack's PMID (Decimal)")) {
    QPushButton* update = makeButton(this, "CommandSetBpId", "Update", "Send PSN to Beltpack");

    auto* row = new QHBoxLayout(this);
    row->addWidget(makeLabel(this, "Label1", "PSN (Serial Number)", textBeltpackId_));
    row->addWidget(textBeltpackId_);
    row->addStretch();
    row->addWidget(update);
}

}  // namespace quorvex
