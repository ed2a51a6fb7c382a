#pragma once

#include <QGroupBox>

#include "form/field_edit.h"
#include "form/one_item_list_widget.h"
#include "form/qt_controls.h"
#include "identity/rf_carriers_update.h"

namespace quorvex {

/// "RF Carriers": the carrier mask, and the list of regulations that the settings editors work.
class RfCarriersFrame : public QGroupBox {
public:
    RfCarriersFrame(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);

    TextField& rfCarriers() { return rfCarriers_; }
    OneItemListWidget& regulations() { return *regulations_; }

private:
    FieldEdit* textRfCarrs_;
    OneItemListWidget* regulations_;
    LineEditField rfCarriers_{textRfCarrs_};
    RfCarriersUpdate update_;
};

}  // namespace quorvex
