#include "antenna/antenna_frame.h"

#include <QVBoxLayout>

#include "link/form.h"

namespace quorvex {

AntennaFrame::AntennaFrame(QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeButton(this, "CommandRdSettingsAA", "&Read Settings",
                                 "Read Active Antenna's Configuration settings."));
    column->addWidget(makeButton(this, "CommandSetTbr6", "&Read Settings and Set TBR6 mode",
                                 "Read Active Antenna's Configuration settings and set TBR6 mode."));
}

}  // namespace quorvex
