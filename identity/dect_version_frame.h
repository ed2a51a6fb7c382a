#pragma once

#include "form/frame.h"
#include "form/qt_controls.h"
#include "identity/dect_version.h"

namespace quorvex {

/// "DECT Firmware Version Number": one field and its "Request" button, for one kind of unit.
class DectVersionFrame : public Frame {
public:
    struct Names {
        const char* field;
        const char* button;
        const char* request;
    };
    static constexpr Names kBeltpack{"TextDectVerBP", "CommandDectPPVerReq", DectVersion::kBeltpackRequest};
    static constexpr Names kAntenna{"TextDectVer", "CommandDectVerReq", DectVersion::kAntennaRequest};

    DectVersionFrame(CommandLink& link, const Names& names, QWidget* parent = nullptr);

    DectVersion& version() { return version_; }

private:
    QLineEdit* edit_;
    LineEditField field_{edit_};
    DectVersion version_;
};

}  // namespace quorvex
