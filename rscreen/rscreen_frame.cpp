#include "rscreen/rscreen_frame.h"

#include <QGridLayout>
#include <chrono>

#include "link/form.h"

namespace quorvex {

namespace {
constexpr std::chrono::milliseconds kTick{250};
}

RScreenFrame::RScreenFrame(QWidget* parent)
    : QWidget(parent),
      picture_(new RScreenPicture(this)),
      screenDump_(makeField(this, "screenDump", 40)),
      screenDumpFName_(makeField(this, "ScreenDumpFName", 24)),
      autoIncrement_(new QCheckBox(QStringLiteral("Auto Increment"), this)),
      autoIncVal_(makeField(this, "autoIncValText", 3)),
      save_(makeButton(this, "CommandScreenDump", "Save")),
      timer_(new QTimer(this)) {
    screenDumpFName_->setText(QStringLiteral("Grab1"));
    autoIncVal_->setText(QStringLiteral("0"));
    autoIncVal_->setAccessibleName(QStringLiteral("Auto Increment"));
    autoIncrement_->setObjectName(QStringLiteral("AutoIncrementOption"));
    timer_->setObjectName(QStringLiteral("RScreenTimer"));
    timer_->setInterval(kTick);
    timer_->start();

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(picture_, 0, 0, 1, 4, Qt::AlignLeft);
    grid->setRowMinimumHeight(1, 12);
    grid->addWidget(makeLabel(this, "Label5", "Root Dir:", screenDump_), 2, 0);
    grid->addWidget(screenDump_, 2, 1, 1, 3);
    grid->addWidget(makeLabel(this, "Label6", "Filename:", screenDumpFName_), 3, 0);
    grid->addWidget(screenDumpFName_, 3, 1, 1, 3);
    grid->addWidget(autoIncrement_, 4, 1);
    grid->addWidget(autoIncVal_, 4, 2);
    grid->addWidget(save_, 5, 1, Qt::AlignLeft);
    grid->setColumnStretch(3, 1);
    setTabChain({screenDump_, screenDumpFName_, autoIncrement_, autoIncVal_, save_});
}

}  // namespace quorvex
