#include "beltpack/transfer_frame.h"

#include <QVBoxLayout>

#include "beltpack/beltpack_read.h"
#include "link/form.h"

namespace quorvex {

TransferFrame::TransferFrame(QWidget* parent)
    : QWidget(parent),
      commandRdSettingsBp_(makeButton(this, "CommandRdSettingsBp", "&Read Settings From Beltpack",
                                      "Read Configuration Settings from Beltpack")),
      commandWrite_(makeButton(this, "CommandWrite", "&Write Settings To Beltpack",
                               "Write Configuration Settings to Beltpack")),
      commandRead_(makeButton(this, "CommandRead", "Read &From File", "Read BP settings from saved file")),
      commandSave_(
          makeButton(this, "CommandSave", "Save &To File", "Saved read Beltpack settings to a file")),
      commandSummary_(
          makeButton(this, "CommandSummary", "&Summary", "View a summary of the Beltpack's Settings")) {
    commandWrite_->setEnabled(false);
    commandSave_->setEnabled(false);
    commandSummary_->setEnabled(false);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    for (QAbstractButton* button :
         {commandRdSettingsBp_, commandWrite_, commandRead_, commandSave_, commandSummary_})
        column->addWidget(button);
}

void TransferFrame::connectTo(BeltpackRead& read) {
    onClick(commandRdSettingsBp_, [&read] { read.CommandRdSettingsBp_Click(); });
}

void TransferFrame::enableSettingsButtons() {
    commandSave_->setEnabled(true);
    commandSummary_->setEnabled(true);
    commandWrite_->setEnabled(true);
}

}  // namespace quorvex
