#include "antenna/antenna_frame.h"

#include <QVBoxLayout>

#include "antenna/antenna_read.h"
#include "form/make.h"

namespace quorvex {

AntennaFrame::AntennaFrame(QWidget* parent)
    : QWidget(parent),
      commandRdSettingsAA_(makeButton(this, "CommandRdSettingsAA", "&Read Settings",
                                      "Read Active Antenna's Configuration settings.")),
      commandSetTbr6_(makeButton(this, "CommandSetTbr6", "&Read Settings and Set TBR6 mode",
                                 "Read Active Antenna's Configuration settings and set TBR6 mode.")) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(commandRdSettingsAA_);
    column->addWidget(commandSetTbr6_);
}

void AntennaFrame::connectTo(AntennaRead& read) {
    onClick(commandRdSettingsAA_, [&read] { read.CommandRdSettingsAA_Click(); });
    onClick(commandSetTbr6_, [&read] { read.CommandSetTbr6_Click(); });
}

}  // namespace quorvex
