#include "app/antenna_page.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

AntennaPage::AntennaPage(CommandLink& link, QWidget* parent)
    : QWidget(parent),
      link_(link),
      antenna_(new AntennaFrame(this)),
      moduleA_(new CalibFrameWidget(CalibFrameWidget::module("A", "Module A (Timeslots 0, 4, 8)"), this)),
      moduleB_(new CalibFrameWidget(CalibFrameWidget::module("B", "Module B (Timeslots 2, 6, 10)"), this)),
      dectVersion_(new DectVersionFrame(link, DectVersionFrame::kAntenna, this)) {
    auto* modules = new QHBoxLayout;
    modules->setSpacing(pixels(grid::kColumnGap));
    modules->addWidget(moduleA_);
    modules->addWidget(moduleB_);
    auto* values = new QVBoxLayout;
    values->setSpacing(pixels(grid::kFrameGap));
    values->addLayout(modules);
    values->addWidget(dectVersion_);
    placeColumns(this, {makeColumn({antenna_}), values});
    setFocusProxy(antenna_);
}

void AntennaPage::connectTo(RadioModule& module, CalibRun& calibRun) {
    read_ = std::make_unique<AntennaRead>(link_, module, moduleA_->fields(), moduleB_->fields());
    antenna_->connectTo(*read_);
    moduleA_->onCalibrate(
        [this, &calibRun] { calibRun.CommandCalibAAA_Click(moduleA_->fields(), moduleB_->fields()); });
    moduleB_->onCalibrate(
        [this, &calibRun] { calibRun.CommandCalibAAB_Click(moduleA_->fields(), moduleB_->fields()); });
}

}  // namespace quorvex
