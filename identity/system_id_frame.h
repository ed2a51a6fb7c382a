#pragma once

#include "form/field_edit.h"
#include "form/frame.h"
#include "form/qt_controls.h"
#include "identity/system_id.h"

namespace quorvex {

/// "System ID (All Hex)": the PARK B and its components EIC, FPN and FPS.
class SystemIdFrame : public Frame {
public:
    SystemIdFrame(CommandLink& link, SettingsImage& image, QWidget* parent = nullptr);

    SystemId& systemId() { return systemId_; }

private:
    QLayout* layOutFields();
    QLayout* layOutButtons();

    FieldEdit* textEic_;
    FieldEdit* textFpn_;
    FieldEdit* textFps_;
    FieldEdit* textParkB_;
    LineEditField eic_{textEic_};
    LineEditField fpn_{textFpn_};
    LineEditField fps_{textFps_};
    LineEditField parkB_{textParkB_};
    SystemId systemId_;
};

}  // namespace quorvex
