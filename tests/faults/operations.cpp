#include "tests/faults/operations.h"

namespace quorvex {

namespace {

using Kind = TestedOperation::Kind;
using Tick = FakeLoop::Tick;

constexpr int kAntennaProbe = 2;
constexpr Tick kWatchMs = 4'100;
// In a calibration dialog.
constexpr Tick kDragAtMs = 600, kMidAtMs = 700, kThresholdAtMs = 1'000, kEndAtMs = 1'800;
constexpr Tick kPatienceMs = 14'000;  ///< then the technician gives up

const std::vector<std::string> kNoBeltpack{
    "status black: Error communicating with Beltpack.",
    "box critical: No Response from Beltpack!\r\n\r\nCheck connection to Beltpack. []"};
const std::vector<std::string> kNotWritten{
    "status black: Error communicating with Beltpack.",
    "box critical: Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to "
    "Beltpack. []"};
const std::vector<std::string> kNoAntenna{"status black: Error communicating with Active Antenna.",
                                          "box critical: No Response from Active Antenna! []"};
const std::vector<std::string> kPliQuiet{"status black: Sending PLI to Beltpack..."};

void nothingTyped(Workshop& /*shop*/) {}

void typeIds(Workshop& shop) {
    shop.beltpackId.type("54321");
    shop.pli.type("27");
    shop.rfCarriers.type("0123456789");
    shop.parkB.type("1ABCD12300");
    shop.eic.type("ABCD");
    shop.fpn.type("*1*2");
    shop.fps.type("3");
}

/// The revision of the hardware that the production values go by.
void holdRevision(Workshop& shop) {
    shop.image[SettingsImage::kFeatureMap].value = "02";
}

/// What a read would have shown.
void showCalibration(Workshop& shop) {
    for (auto* fields : {&shop.beltpack, &shop.moduleA, &shop.moduleB}) {
        fields->fm.type("33");
        fields->freq.type("4");
        fields->rx.type("3");
        fields->tx.type("2");
    }
}

std::vector<TestedOperation> reads() {
    const auto read = [](Workshop& shop) { shop.read.CommandRdSettingsBp_Click(); };
    const char* success = "status green: Settings read from Beltpack successfully.";
    return {{"Read a Beltpack, RM5", UnitKind::beltpackRm5, Kind::exchange, nothingTyped, read, success, -1,
             kNoBeltpack, true},
            {"Read a Beltpack, Kirk", UnitKind::beltpackKirk, Kind::exchange, nothingTyped, read, success, -1,
             kNoBeltpack, true}};
}

std::vector<TestedOperation> writes() {
    const char* written = "status green: Settings written to Beltpack successfully!";
    return {
        {"Write a Beltpack", UnitKind::beltpackRm5, Kind::exchange, nothingTyped,
         [](Workshop& shop) { shop.write.CommandWrite_Click(); }, written, -1, kNotWritten},
        {"Set production values", UnitKind::beltpackRm5, Kind::exchange, holdRevision,
         [](Workshop& shop) { shop.production.buttonSetProdSettiings_Click(); }, written, -1, kNotWritten}};
}

std::vector<TestedOperation> updates() {
    const UnitKind unit = UnitKind::beltpackRm5;
    return {{"Update the PSN", unit, Kind::exchange, typeIds,
             [](Workshop& shop) { shop.psnUpdate.CommandSetBpId_Click(); },
             "status black: Beltpack's PSN updated successfully."},
            {"Update the System ID", unit, Kind::exchange, typeIds,
             [](Workshop& shop) { shop.systemId.CommandSetSysID_Click(); },
             "status black: Beltpack's System Id updated succesfully."},
            {"Update the PLI", unit, Kind::exchange, typeIds,
             [](Workshop& shop) { shop.pliUpdate.CmdUpdatePli_Click(); },
             "status black: Beltpack's PLI updated successfully.", -1, kPliQuiet},
            {"Update the RF carriers", unit, Kind::exchange, typeIds,
             [](Workshop& shop) { shop.carriersUpdate.CmdSetRfCarrs_Click(); },
             "status black: Beltpack's RF Carrier Mask updated successfully."}};
}

std::vector<TestedOperation> versions() {
    return {{"DECT version of a Beltpack", UnitKind::beltpackRm5, Kind::exchange, nothingTyped,
             [](Workshop& shop) { shop.beltpackVersion.request(); }, ""},
            {"DECT version of an Active Antenna", UnitKind::antennaRm5, Kind::exchange, nothingTyped,
             [](Workshop& shop) { shop.antennaVersion.request(); }, ""}};
}

std::vector<TestedOperation> antennaReads() {
    std::vector<TestedOperation> all;
    for (const auto& [unit, module] :
         {std::pair{UnitKind::antennaRm5, "RM5"}, std::pair{UnitKind::antennaKirk, "Kirk"}}) {
        all.push_back({std::string("Read an Active Antenna, ") + module, unit, Kind::exchange, nothingTyped,
                       [](Workshop& shop) { shop.antenna.CommandRdSettingsAA_Click(); },
                       "status black: Settings read from Active Antenna", kAntennaProbe, kNoAntenna});
        all.push_back({std::string("Set TBR6 mode, ") + module, unit, Kind::exchange, nothingTyped,
                       [](Workshop& shop) { shop.antenna.CommandSetTbr6_Click(); },
                       "status black: Active Antenna is in TBR6 Mode", kAntennaProbe, kNoAntenna});
    }
    return all;
}

void tuneAndPressOk(VirtualDialog& dialog) {
    dialog.tuning.CommandOK_Click();
}
void pressCancel(VirtualDialog& dialog) {
    dialog.tuning.CommandCancel_Click();
}
void updateThreshold(VirtualDialog& dialog) {
    dialog.threshold.type("90");
    dialog.tuning.CmdSetRssiThr_Click();
}

struct HowEnded {
    const char* name;
    bool threshold, ok;
};
constexpr HowEnded kHowEnded[] = {
    {"OK", false, true}, {"Cancel", false, false}, {"threshold, OK", true, true}};

void planDeeds(Workshop& shop, const HowEnded& how) {
    shop.deeds = {{kDragAtMs, [](VirtualDialog& dialog) { dialog.fmDev.drag(40); }},
                  {kMidAtMs, [kirk = shop.rfModule.isKirk()](VirtualDialog& dialog) {
                       (kirk ? dialog.mid : dialog.freqAccr).drag(5);
                   }}};
    if (how.threshold)
        shop.deeds.push_back({kThresholdAtMs, updateThreshold});
    if (how.ok)
        shop.deeds.push_back({kEndAtMs, tuneAndPressOk});
    shop.deeds.push_back({kPatienceMs, pressCancel});
}

struct Calibrated {
    const char* name;
    UnitKind unit;
    void (*run)(Workshop&);
    const char *confirmed, *cancelled;
};

constexpr Calibrated kCalibrated[] = {
    {"Beltpack, RM5", UnitKind::beltpackRm5,
     [](Workshop& shop) { shop.calibration.CommandCalibBp_Click(shop.beltpack.all(), shop.threshold); },
     "status black: Beltpack Calibrated successfully.", "status black: Beltpack Calibration Cancelled."},
    {"Beltpack, Kirk", UnitKind::beltpackKirk,
     [](Workshop& shop) { shop.calibration.CommandCalibBp_Click(shop.beltpack.all(), shop.threshold); },
     "status black: Beltpack Calibrated successfully.", "status black: Beltpack Calibration Cancelled."},
    {"module A, RM5", UnitKind::antennaRm5,
     [](Workshop& shop) { shop.calibration.CommandCalibAAA_Click(shop.moduleA.all(), shop.moduleB.all()); },
     "status black: Active Antenna calibrated successfully.",
     "status black: Active Antenna calibration cancelled."},
    {"module A, Kirk", UnitKind::antennaKirk,
     [](Workshop& shop) { shop.calibration.CommandCalibAAA_Click(shop.moduleA.all(), shop.moduleB.all()); },
     "status black: Active Antenna calibrated successfully.",
     "status black: Active Antenna calibration cancelled."},
    {"module B, Kirk", UnitKind::antennaKirk,
     [](Workshop& shop) { shop.calibration.CommandCalibAAB_Click(shop.moduleA.all(), shop.moduleB.all()); },
     "status black: Active Antenna FM Deviation calibrated successfully.",
     "status black: Active Antenna FM Deviation calibration Cancelled."},
};

std::vector<TestedOperation> calibrations() {
    std::vector<TestedOperation> all;
    for (const Calibrated& one : kCalibrated) {
        for (const HowEnded& how : kHowEnded) {
            const bool kirk = one.unit == UnitKind::beltpackKirk || one.unit == UnitKind::antennaKirk;
            if (how.threshold && !kirk)
                continue;  // only a Kirk's dialog has it
            all.push_back({std::string("Calibrate ") + one.name + ": " + how.name, one.unit,
                           Kind::calibration, showCalibration,
                           [&one, &how](Workshop& shop) {
                               planDeeds(shop, how);
                               one.run(shop);
                           },
                           how.ok ? one.confirmed : one.cancelled});
        }
    }
    return all;
}

std::vector<TestedOperation> display() {
    return {{"Remote screen", UnitKind::beltpackRm5, Kind::display, nothingTyped,
             [](Workshop& shop) { shop.watchDisplay(kWatchMs); }, ""}};
}

}  // namespace

const std::vector<TestedOperation>& testedOperations() {
    static const std::vector<TestedOperation> operations = [] {
        std::vector<TestedOperation> all;
        for (const auto& some :
             {reads(), writes(), updates(), versions(), antennaReads(), calibrations(), display()})
            all.insert(all.end(), some.begin(), some.end());
        return all;
    }();
    return operations;
}

const std::vector<EndText>& statusTexts() {
    static const std::vector<EndText> texts{
        {"read", "status green: Settings read from Beltpack successfully."},
        {"no contact", "status black: Error communicating with Beltpack."},
        {"written", "status green: Settings written to Beltpack successfully!"},
        {"updated", "status black: Beltpack's * updated successfully."},
        {"updated", "status black: Beltpack's System Id updated succesfully."},
        {"not updated", "status black: Beltpack's * could not be updated."},
        {"read", "status black: Settings read from Active Antenna"},
        {"TBR6", "status black: Active Antenna is in TBR6 Mode"},
        {"no contact", "status black: Error communicating with Active Antenna."},
        {"calibrated", "status black: Beltpack Calibrated successfully."},
        {"cancelled", "status black: Beltpack Calibration Cancelled."},
        {"failed", "status black: Error occured during Beltpack Calibration."},
        {"calibrated", "status black: Active Antenna calibrated successfully."},
        {"cancelled", "status black: Active Antenna calibration cancelled."},
        {"failed", "status black: Error occured during Active Antenna calibration."},
        {"calibrated", "status black: Active Antenna FM Deviation calibrated successfully."},
        {"cancelled", "status black: Active Antenna FM Deviation calibration Cancelled."},
        {"failed", "status black: Error occured during Active Antenna FM Deviation calibration."},
    };
    return texts;
}

const std::vector<EndText>& boxTexts() {
    static const std::vector<EndText> texts{
        {"no Beltpack", "box critical: No Response from Beltpack!\r\n\r\nCheck connection to Beltpack. []"},
        {"System ID",
         "box critical: \"*\" is not a valid System Id.\r\nThe System ID fields were emptied. []"},
        {"not written",
         "box critical: Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to "
         "Beltpack. []"},
        {"differs", "box plain: Rd Error []"},
        {"differs, in words", "box critical: Error occured while verifying settings written to Beltpack! []"},
        {"not read back", "box critical: Value could not read back from Beltpack! []"},
        {"no antenna", "box critical: No Response from Active Antenna! []"},
        {"no device", "box critical: Could not communicate with device! []"},
    };
    return texts;
}

}  // namespace quorvex
