#pragma once

#include <QString>
#include <functional>
#include <string>

#include "antenna/antenna_read.h"
#include "beltpack/beltpack_read.h"
#include "beltpack/production_values.h"
#include "beltpack/transfer_log.h"
#include "identity/dect_version.h"
#include "identity/pli_update.h"
#include "identity/psn_update.h"
#include "identity/rf_carriers_update.h"
#include "identity/system_id.h"
#include "link/plain_field.h"
#include "tool/heard.h"
#include "tool/plain_console.h"
#include "tool/plain_controls.h"

namespace quorvex::tool {

/// What the operations find in the main window, without a window: fields in memory, and the operations on
/// them. For one unit on one line.
class PlainWindow : private BeltpackReadNeighbours {
public:
    /// `progress` is told what goes on; may be empty.
    PlainWindow(SerialPort& port, EventLoop& loop, std::function<void(const QString&)> progress = {});
    PlainWindow(const PlainWindow&) = delete;
    PlainWindow& operator=(const PlainWindow&) = delete;

    /// Reads the Beltpack into `image` and the fields. Empty when every line was answered as it must be, else
    /// what went wrong.
    QString readBeltpack();
    /// The image as the unit sent it in the last read that went well. In `image` the editing controls have
    /// put some values into their ranges by then.
    const SettingsImage& found() const { return found_; }
    /// The DECT version last asked for, by a read or by itself; empty where the unit did not tell it.
    QString dectVersion() const;
    bool isPortOpen() const { return port_.isOpen(); }

    struct ModuleFields {
        PlainField fmDeviation, frequency, receive, transmit;
        CalibrationFields all() { return {fmDeviation, frequency, receive, transmit}; }
    };

private:
    std::string showSystemId(const std::string& shown) override;
    void requestDectVersion(Operation& operation) override { beltpackVersion.request(operation); }
    void enableSettingsButtons() override { hasRead_ = true; }

    SerialPort& port_;
    SettingsImage found_;
    bool hasRead_ = false;
    TakenOption mic_;
    TakenCheck batteryAlarm_;
    TakenItem hwRevision_, regulations_;

public:
    EventLoop& loop;
    PlainConsole console;
    CommandLink link;
    Heard heard;
    SettingsImage image;
    TransferLog transfers{link};
    FoundModule module;

    PlainField psn, parkB, eic, fpn, fps, pli, rfCarriers, rssiThreshold, version;
    ModuleFields beltpack, moduleA, moduleB;

private:
    SettingsEditors editors_{image, mic_, batteryAlarm_, hwRevision_, regulations_};
    BeltpackRead read_{link, image, module, editors_, {psn, rfCarriers, pli, beltpack.all(), rssiThreshold},
                       *this};

public:
    BeltpackWrite write{link, image};
    ProductionValues production{link, image, write};
    PsnUpdate psnUpdate{link, image, psn};
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
    PliUpdate pliUpdate{link, image, pli};
    RfCarriersUpdate carriersUpdate{link, image, rfCarriers};
    DectVersion beltpackVersion{link, DectVersion::kBeltpackRequest, version};
    DectVersion antennaVersion{link, DectVersion::kAntennaRequest, version};
    AntennaRead antenna{link, module, moduleA.all(), moduleB.all()};
};

}  // namespace quorvex::tool
