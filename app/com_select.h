#pragma once

#include <QComboBox>
#include <QDialog>

#include "link/port_choice.h"

namespace quorvex {

/// The port choice dialog. Once it is seen, the hover text of each item says which device it is and what
/// stands in its way.
class ComSelect : public QDialog {
public:
    /// Throws RuntimeFault when the stored number cannot be preselected.
    ComSelect(PortChoice& choice, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void describeItems();
    void CmdOK_Click();

    PortChoice& choice_;
    QComboBox* comboCom_;
    bool isDescribed_ = false;
};

}  // namespace quorvex
