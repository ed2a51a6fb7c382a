#include "app/antenna_page.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorvex {

AntennaPage::AntennaPage(CommandLink& link, QWidget* parent)
    : QWidget(parent),
      link_(link),
      antenna_(new AntennaFrame(this)),
      moduleA_(new CalibFrameWidget(CalibFrameWidget::kModuleA, this)),
      moduleB_(new CalibFrameWidget(CalibFrameWidget::kModuleB, this)),
      dectVersion_(new DectVersionFrame(link, DectVersionFrame::kAntenna, this)) {
    auto* work = new QVBoxLayout;
    work->addWidget(antenna_);
    work->addStretch();

    auto* modules = new QHBoxLayout;
    modules->setSpacing(16);
    modules->addWidget(moduleA_);
    modules->addWidget(moduleB_);
    auto* values = new QVBoxLayout;
    values->addLayout(modules);
    values->addWidget(dectVersion_);
    values->addStretch();

    auto* columns = new QHBoxLayout(this);
    columns->setSpacing(16);
    columns->addLayout(work);
    columns->addLayout(values);
    columns->addStretch();
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
