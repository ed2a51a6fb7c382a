#include "beltpack/transfer_frame.h"

#include "beltpack/beltpack_read.h"
#include "beltpack/beltpack_write.h"
#include "beltpack/form_cfg_summary.h"
#include "beltpack/settings_file.h"
#include "beltpack/settings_summary.h"
#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

TransferFrame::TransferFrame(const SettingsImage& image, QWidget* parent)
    : QWidget(parent),
      image_(image),
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

    commandRdSettingsBp_->standOut();
    commandRdSettingsBp_->setLeading(true);
    commandWrite_->standOut();
    setFocusProxy(commandRdSettingsBp_);
    commandRead_->setShortcut({});  // the menu "File" has the same key, and wins

    auto* rows = new QGridLayout(this);
    rows->setContentsMargins({});
    rows->setSpacing(pixels(grid::kGap));
    rows->addWidget(commandRdSettingsBp_, 0, 0, 1, 2);
    rows->addWidget(commandWrite_, 1, 0, 1, 2);
    rows->addWidget(commandRead_, 2, 0);
    rows->addWidget(commandSave_, 2, 1);
    rows->addWidget(commandSummary_, 3, 0, 1, 2);
}

void TransferFrame::connectTo(BeltpackRead& read, BeltpackWrite& write, SettingsFile& file) {
    onClick(commandRdSettingsBp_, [&read] { read.CommandRdSettingsBp_Click(); });
    onClick(commandWrite_, [&write] { write.CommandWrite_Click(); });
    onClick(commandRead_, [&file] { file.CommandRead_Click(); });
    onClick(commandSave_, [&file] { file.CommandSave_Click(); });
    onClick(commandSummary_, [this] { CommandSummary_Click(); });
}

void TransferFrame::CommandSummary_Click() {
    FormCfgSummary(summaryText(image_), this).exec();
}

void TransferFrame::enableSettingsButtons() {
    commandSave_->setEnabled(true);
    commandSummary_->setEnabled(true);
    commandWrite_->setEnabled(true);
    commandRdSettingsBp_->setLeading(false);
}

}  // namespace quorvex
