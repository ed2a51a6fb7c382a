#pragma once

#include <QGroupBox>

#include "link/command_link.h"
#include "link/one_item_list_widget.h"
#include "link/qt_controls.h"

namespace quorvex {

/// "RF Carriers": the carrier mask, and the list of regulations that the settings editors work.
class RfCarriersFrame : public QGroupBox {
public:
    explicit RfCarriersFrame(QWidget* parent = nullptr);

    TextField& rfCarriers() { return rfCarriers_; }
    OneItemListWidget& regulations() { return *regulations_; }

private:
    QLineEdit* textRfCarrs_;
    OneItemListWidget* regulations_;
    LineEditField rfCarriers_{textRfCarrs_};
};

}  // namespace quorvex
