#include "identity/park_length_frame.h"

#include "form/key_filter.h"
#include "form/make.h"

namespace quorvex {

ParkLengthFrame::ParkLengthFrame(CommandLink& link, SettingsImage& image, QWidget* parent)
    : Frame(QStringLiteral("Park Length Indicator (Hex)"), parent),
      textPli_(makeHexField(this, "TextPli", 10,
                            "1F - conn to all AA on Matrix (normal); 12 - conn to all VGC Matrices; "
                            "27 - conn to just 1 AA")),
      update_(link, image, pli_) {
    textPli_->setKeyFilter(upperCased);
    textPli_->onKeyPress([this](char16_t key) { update_.TextPli_KeyPress(key); });
    textPli_->setAccessibleName(title());
    // The hover text speaks of RF carriers, as intended.
    QPushButton* update = makeButton(this, "CmdUpdatePli", "Update", "Send RF Carriers To BP");
    update->setAccessibleName(QStringLiteral("Update Park Length Indicator"));
    onClick(update, [this] { update_.CmdUpdatePli_Click(); });

    makeGrid(this)->addLayout(makeRow(textPli_, update), 0, 0);
}

}  // namespace quorvex
