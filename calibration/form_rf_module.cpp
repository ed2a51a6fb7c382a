#include "calibration/form_rf_module.h"

#include "form/lengths.h"
#include "form/make.h"

namespace quorvex {

FormRfModule::FormRfModule(bool kirk, QWidget* parent)
    : QDialog(parent),
      optionKirk_(makeCaptioned<QRadioButton>(this, "OptionKirk", "Kirk KRM 1800")),
      optionRm5_(makeCaptioned<QRadioButton>(this, "OptionRm5", "Plextek RM5")) {
    setObjectName(QStringLiteral("FormRfModule"));
    setWindowTitle(QStringLiteral("Select Type Of RF Module"));
    (kirk ? optionKirk_ : optionRm5_)->setChecked(true);
    (kirk ? optionKirk_ : optionRm5_)->setFocus();

    QFrame* line = makeLine(this);
    QPushButton* cancel = makeButton(this, "CancelButton", "Cancel");
    QPushButton* ok = makeButton(this, "OKButton", "OK");
    ok->setDefault(true);
    onClick(ok, [this] { accept(); });
    onClick(cancel, [this] { reject(); });

    auto* column = new QVBoxLayout(this);
    column->addWidget(optionKirk_, 0, Qt::AlignLeft);
    column->addWidget(optionRm5_, 0, Qt::AlignLeft);
    column->addWidget(line);
    column->addLayout(makeButtonRow({ok, cancel}));
    column->addStrut(widthForTitle(windowTitle()));
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
