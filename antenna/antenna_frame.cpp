#include "antenna/antenna_frame.h"

#include <QVBoxLayout>

#include "antenna/antenna_read.h"
#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

AntennaFrame::AntennaFrame(QWidget* parent)
    : QWidget(parent),
      commandRdSettingsAA_(makeButton(this, "CommandRdSettingsAA", "&Read Settings",
                                      "Read Active Antenna's Configuration settings.")),
      commandSetTbr6_(makeButton(this, "CommandSetTbr6", "&Read Settings and Set TBR6 mode",
                                 "Read Active Antenna's Configuration settings and set TBR6 mode.")) {
    commandRdSettingsAA_->standOut();
    commandRdSettingsAA_->setLeading(true);
    setFocusProxy(commandRdSettingsAA_);
    commandSetTbr6_->setMinimumWidth(commandSetTbr6_->sizeHint().width() + 2 * pixels(grid::kGap));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(pixels(grid::kGap));
    column->addWidget(commandRdSettingsAA_);
    column->addWidget(commandSetTbr6_);
}

void AntennaFrame::connectTo(AntennaRead& read) {
    // Once something has been read, no button leads any more.
    onClick(commandRdSettingsAA_, [this, &read] {
        if (read.CommandRdSettingsAA_Click())
            commandRdSettingsAA_->setLeading(false);
    });
    onClick(commandSetTbr6_, [this, &read] {
        if (read.CommandSetTbr6_Click())
            commandRdSettingsAA_->setLeading(false);
    });
}

}  // namespace quorvex
