#include "calibration/form_rf_module.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "form/make.h"

namespace quorvex {

namespace {
constexpr int kWidth = 240;  ///< leaves the title its room
}

FormRfModule::FormRfModule(bool kirk, QWidget* parent)
    : QDialog(parent),
      optionKirk_(new QRadioButton(QStringLiteral("Kirk KRM 1800"), this)),
      optionRm5_(new QRadioButton(QStringLiteral("Plextek RM5"), this)) {
    setObjectName(QStringLiteral("FormRfModule"));
    setWindowTitle(QStringLiteral("Select Type Of RF Module"));
    optionKirk_->setObjectName(QStringLiteral("OptionKirk"));
    optionRm5_->setObjectName(QStringLiteral("OptionRm5"));
    (kirk ? optionKirk_ : optionRm5_)->setChecked(true);
    (kirk ? optionKirk_ : optionRm5_)->setFocus();

    auto* line = new QFrame(this);
    line->setObjectName(QStringLiteral("Line1"));
    line->setMinimumWidth(kWidth);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    QPushButton* cancel = makeButton(this, "CancelButton", "Cancel");
    QPushButton* ok = makeButton(this, "OKButton", "OK");
    ok->setDefault(true);
    onClick(ok, [this] { accept(); });
    onClick(cancel, [this] { reject(); });

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(optionKirk_, 0, Qt::AlignLeft);
    column->addWidget(optionRm5_, 0, Qt::AlignLeft);
    column->addWidget(line);
    column->addLayout(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    setTabChain({optionKirk_, optionRm5_, ok, cancel});
}

bool FormRfModulePicker::pick(bool& kirk) {
    FormRfModule dialog(kirk, parent_);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    kirk = dialog.isKirk();
    return accepted;
}

}  // namespace quorvex
