#include "app/com_select.h"

#include <QTimer>
#include <utility>

#include "form/lengths.h"
#include "form/make.h"
#include "link/port_device.h"

namespace quorvex {

ComSelect::ComSelect(PortChoice& choice, QWidget* parent)
    : QDialog(parent), choice_(choice), comboCom_(new QComboBox(this)) {
    setObjectName(QStringLiteral("ComSelect"));
    setWindowTitle(QStringLiteral("Select Serial Port"));

    comboCom_->setObjectName(QStringLiteral("ComboCom"));
    comboCom_->setMaxVisibleItems(PortChoice::kPortsOffered);
    for (int number = 1; number <= PortChoice::kPortsOffered; ++number)
        comboCom_->addItem(QStringLiteral("COM%1").arg(number));
    QFrame* line = makeLine(this);
    QPushButton* ok = makeButton(this, "CmdOK", "&OK");
    QPushButton* cancel = makeButton(this, "CmdCancel", "&Cancel");
    ok->setDefault(true);
    onClick(ok, [this] { CmdOK_Click(); });
    onClick(cancel, [this] { reject(); });

    auto* choiceRow = new QHBoxLayout;
    choiceRow->addWidget(makeLabel(this, "Label1", "COM Port:", comboCom_));
    choiceRow->addWidget(comboCom_, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(choiceRow);
    column->addWidget(line);
    column->addLayout(makeButtonRow({ok, cancel}));
    column->addStrut(widthForTitle(windowTitle()));
    column->setSizeConstraint(QLayout::SetFixedSize);

    comboCom_->setCurrentIndex(choice_.preselected());
}

void ComSelect::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    // Looking through the machine takes its time: the dialog is seen first, and may be gone by then.
    if (!std::exchange(isDescribed_, true))
        QTimer::singleShot(0, this, [this] { describeItems(); });
}

void ComSelect::describeItems() {
    int index = 0;
    for (const QString& description : describePorts(comboCom_->count(), choice_.openNumber()))
        comboCom_->setItemData(index++, description, Qt::ToolTipRole);
}

void ComSelect::CmdOK_Click() {
    if (choice_.CmdOK_Click(comboCom_->currentIndex()))
        accept();
}

}  // namespace quorvex
