#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "antenna/antenna_read.h"
#include "beltpack/beltpack_read.h"
#include "beltpack/production_values.h"
#include "calibration/rf_module.h"
#include "identity/dect_version.h"
#include "identity/pli_update.h"
#include "identity/psn_update.h"
#include "identity/rf_carriers_update.h"
#include "identity/system_id.h"
#include "link/port_choice.h"
#include "link/trace_port.h"
#include "simulator/unit.h"
#include "tests/calibration/virtual_dialog.h"
#include "tests/faults/faulty_port.h"
#include "tests/rscreen/screen_bench.h"

namespace quorvex {

enum class UnitKind { beltpackRm5, beltpackKirk, antennaRm5, antennaKirk };

/// The core of the whole program, and one unit on a line on which things may go wrong.
class Workshop : private BeltpackReadNeighbours, private CalibNeighbours {
public:
    using Tick = FakeLoop::Tick;
    /// A value by its name: of the image, of a field, of the unit.
    using Values = std::vector<std::pair<std::string, std::string>>;

    /// `insteadOfUnit`: at the other end of the line in place of the unit, where not null.
    explicit Workshop(UnitKind kind, Tick startTick = 0, sim::LineEnd* insteadOfUnit = nullptr);
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// The unit as it was at the start, module B like module A; an image with other values throughout, as if
    /// read from another unit; fields that hold "1" (a number, as calibrations need one). The journal is
    /// empty then.
    void prepare();
    /// What the window and the unit hold, always in the same order.
    Values values() const;

    /// What the operator does in the calibration dialogs, by the time since it was shown.
    struct Deed {
        Tick atMs;
        std::function<void(VirtualDialog&)> what;
    };
    std::vector<Deed> deeds;
    /// Looks at the display for that long, by a timer that ticks every 250 ms. Then a box is opened.
    void watchDisplay(Tick lastsMs);

    const sim::Unit& unit() const { return *unit_; }
    int dialogsOpen() const { return dialogsOpen_; }

private:
    struct Counted;

    std::string showSystemId(const std::string& shown) override { return systemId.showParkB(shown); }
    void requestDectVersion(Operation& operation) override { beltpackVersion.request(operation); }
    void enableSettingsButtons() override {}
    std::unique_ptr<CalibDialog> createDialog(CalResult& result) override;
    void resetUnit();
    void addFieldValues(Values& values) const;
    std::string pictureShown() const;
    void tickIn(Tick ms);

    struct IgnoredFrame : CalibFrame {
        void apply(const CalibLayout& /*layout*/) override {}
    };
    struct ModuleFields {
        ModuleFields(Journal& journal, const std::string& suffix)
            : fm(journal, "FM deviation" + suffix),
              freq(journal, "frequency" + suffix),
              rx(journal, "receive" + suffix),
              tx(journal, "transmit" + suffix) {}
        FakeField fm, freq, rx, tx;
        CalibrationFields all() { return {fm, freq, rx, tx}; }
    };

    std::unique_ptr<sim::Unit> unit_;
    std::string unitAtStart_;
    IgnoredFrame frame_;
    int dialogsOpen_ = 0;
    bool isWatching_ = false;

public:
    Journal journal;
    FakeLoop loop;
    FaultyPort port;
    std::vector<std::string> traced;  ///< what passed over the port
    TracePort trace{port, loop, [this](const std::string& line) { traced.push_back(line); }};
    FakeConsole console{journal};
    FakeStore store{journal};
    CommandLink link{trace, loop, console};
    PortChoice portChoice{link, trace, store};
    SettingsImage image;
    RfModule rfModule{store, {frame_, frame_, frame_}};

    FakeField beltpackId{journal, "PSN"}, rfCarriers{journal, "RF carriers"}, pli{journal, "PLI"};
    FakeField parkB{journal, "PARK B"}, eic{journal, "EIC"}, fpn{journal, "FPN"}, fps{journal, "FPS"};
    FakeField versionField{journal, "version"}, threshold{journal, "threshold"};
    ModuleFields beltpack{journal, ""}, moduleA{journal, " A"}, moduleB{journal, " B"};
    FakeOptions mic{journal, {"balanced", "unbalanced", "electret"}};
    FakeCheck batteryAlarm{journal, "battery alarm"};
    FakeList hwRevision{journal, "revision"}, regulations{journal, "regulations"};

    SettingsEditors editors{image, mic, batteryAlarm, hwRevision, regulations};
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
    DectVersion beltpackVersion{link, DectVersion::kBeltpackRequest, versionField};
    DectVersion antennaVersion{link, DectVersion::kAntennaRequest, versionField};
    BeltpackRead read{
        link, image, rfModule, editors, {beltpackId, rfCarriers, pli, beltpack.all(), threshold}, *this};
    BeltpackWrite write{link, image};
    ProductionValues production{link, image, write};
    PsnUpdate psnUpdate{link, image, beltpackId};
    PliUpdate pliUpdate{link, image, pli};
    RfCarriersUpdate carriersUpdate{link, image, rfCarriers};
    CalibRun calibration{link, rfModule, *this};
    AntennaRead antenna{link, rfModule, moduleA.all(), moduleB.all()};
    FakeScreenWindow window{journal};
    FakeCheck autoIncrement{journal, "auto increment"};
    RemoteScreen screen{link, window, {parkB, eic, fpn, autoIncrement}};  // its fields have no part in this
};

}  // namespace quorvex
