#include "tour/steps.h"

namespace quorvex::tour {

namespace {

void expectValues(Visitor& visitor, const Unit& unit) {
    for (const Held& value : unit.values)
        visitor.expect(value.control, value.shown);
}

void openWindow(Visitor& visitor) {
    visitor.waitForWindow("FrmMain");
    visitor.expect("LabelComPort", rm5Beltpack().port);
    visitor.expect("LblStatus", "");
}

void readBeltpack(Visitor& visitor) {
    visitor.click("CommandRdSettingsBp");
    visitor.expect("LblStatus", "Settings read from Beltpack successfully.");
}

/// `hasKirk`: the fields that only a Beltpack with a Kirk fills are in sight.
void readBeltpack(Visitor& visitor, const Unit& unit, bool hasKirk) {
    readBeltpack(visitor);
    expectValues(visitor, unit);
    visitor.expect("TextDectVerBP", unit.version);
    for (const char* control : {"TextFreqAccrRx", "TextFreqAccrTx", "TextRssiThr"})
        visitor.expectVisible(control, hasKirk);
}

void readRm5Beltpack(Visitor& visitor) {
    readBeltpack(visitor, rm5Beltpack(), false);
}

void readKirkBeltpack(Visitor& visitor) {
    readBeltpack(visitor, kirkBeltpack(), true);
}

/// Edits, writes and keeps the settings of the Beltpack that was read last.
void editSettings(Visitor& visitor) {
    visitor.click("optionMICElectret");
    visitor.expect("optionMICElectret", "on");
    visitor.click("BPHWRevision");
    visitor.press(Qt::Key_Up, "FrmMain");
    visitor.expect("BPHWRevision", "MX 318825");
}

void writeSettings(Visitor& visitor) {
    visitor.click("CommandWrite");
    visitor.expect("LblStatus", "Settings written to Beltpack successfully!");
}

void openSaveDialog(Visitor& visitor) {
    visitor.click("CommandSave");
    visitor.waitForWindow("CommonDialog1");
    visitor.expect("fileNameEdit", "100000");  // the serial number is proposed
}

void saveSettings(Visitor& visitor) {
    visitor.type("fileNameEdit", visitor.file("settings.bpc"));
    visitor.confirm("CommonDialog1");
    visitor.expect("LblStatus", "Betpack settings saved to file successfully.");
}

void openFileMenu(Visitor& visitor) {
    visitor.openMenu("mnuFile");
}

void openPortDialog(Visitor& visitor) {
    visitor.press(Qt::Key_C, "mnuFile");  // its access key
    visitor.waitForWindow("ComSelect");
}

void openPortList(Visitor& visitor) {
    visitor.openList("ComboCom");
}

void choosePort(Visitor& visitor, const Unit& unit) {
    visitor.clickListItem("ComboCom", unit.port);
    visitor.confirm("ComSelect");
    visitor.expect("LabelComPort", unit.port);
}

void chooseSecondPort(Visitor& visitor) {
    choosePort(visitor, kirkBeltpack());
}

void loadSettings(Visitor& visitor) {
    visitor.click("CommandRead");
    visitor.waitForWindow("CommonDialog1");
    visitor.type("fileNameEdit", visitor.file("settings.bpc"));
    visitor.confirm("CommonDialog1");
    visitor.expect("LblStatus", "Beltpack settings read from file successfully.");
    visitor.expect("TextBeltpackId", "100000");
}

void showSummary(Visitor& visitor) {
    visitor.click("CommandSummary");
    visitor.waitForWindow("FormCfgSummary");
}

void compareUnits(Visitor& visitor) {
    visitor.confirm("FormCfgSummary");
    // The parameters 01 to 15 of what a unit holds.
    const auto parameters = [&](const Unit& unit) {
        const QString held = visitor.holds(unit);
        return held.left(held.indexOf('\n', held.indexOf("\n15=") + 1));
    };
    const QString first = parameters(rm5Beltpack());
    if (!first.contains("07=02\n") || !first.contains("\n15=01"))
        throw TourFailure("The first Beltpack does not hold what was edited:\n" + first);
    if (parameters(kirkBeltpack()) != first)
        throw TourFailure("The two Beltpacks do not hold the same.");
}

void usePort(Visitor& visitor, const Unit& unit) {
    openFileMenu(visitor);
    openPortDialog(visitor);
    openPortList(visitor);
    choosePort(visitor, unit);
}

void readRm5Antenna(Visitor& visitor) {
    visitor.clickTab("Active Antenna");
    usePort(visitor, rm5Antenna());
    visitor.click("CommandRdSettingsAA");
    visitor.expect("LblStatus", "Settings read from Active Antenna");
    expectValues(visitor, rm5Antenna());
    visitor.expectVisible("TextFreqAdjTxA", false);
}

void setTbr6Mode(Visitor& visitor) {
    usePort(visitor, kirkAntenna());
    visitor.click("CommandSetTbr6");
    visitor.expect("LblStatus", "Active Antenna is in TBR6 Mode");
    expectValues(visitor, kirkAntenna());
}

/// Opens the calibration dialog and waits for what the Kirk streams.
void startCalibration(Visitor& visitor, const char* button) {
    visitor.click(button);
    visitor.waitForWindow("FormCalib");
    visitor.waitUntil("a record", [&] { return visitor.shows("LabelRssi") != "RSSI:"; });
    visitor.click("SliderFmDev");
    visitor.press(Qt::Key_End, "FormCalib");
    visitor.expect("LabelFmDevValue", "63");
}

void confirmCalibration(Visitor& visitor, const char* status) {
    visitor.click("CommandOK");
    visitor.waitForNoDialog();
    visitor.expect("LblStatus", status);
}

void calibrateModuleA(Visitor& visitor) {
    startCalibration(visitor, "CommandCalibAAA");
}

void confirmModuleA(Visitor& visitor) {
    confirmCalibration(visitor, "Active Antenna calibrated successfully.");
    visitor.expect("TextFmDevA", "63");
}

void calibrateBeltpack(Visitor& visitor) {
    visitor.clickTab("BeltPack");
    usePort(visitor, kirkBeltpack());
    readBeltpack(visitor);  // the settings loaded from the file have emptied the read-outs
    startCalibration(visitor, "CommandCalibBp");
    visitor.expect("LabelMidValue", "4");
}

void confirmBeltpack(Visitor& visitor) {
    confirmCalibration(visitor, "Beltpack Calibrated successfully.");
    visitor.expect("TextFMDev", "63");
    visitor.expect("TextRssiThr", "72");
}

void showRScreen(Visitor& visitor) {
    visitor.clickTab("R-Screen");
    usePort(visitor, displayBeltpack());
    visitor.waitUntil("the Beltpack's display", [&] { return visitor.hasBlack("Picture1"); });
}

void saveScreens(Visitor& visitor) {
    visitor.type("screenDump", visitor.file({}) + "/");
    visitor.type("ScreenDumpFName", "Screen");
    visitor.click("AutoIncrementOption");
    for (const char* counted : {"1", "2", "3"}) {
        visitor.click("CommandScreenDump");
        visitor.expect("autoIncValText", counted);
    }
}

}  // namespace

const std::vector<Step>& allSteps() {
    static const std::vector<Step> steps{
        {"main-window", openWindow},
        {"read-rm5-beltpack", readRm5Beltpack},
        {"edit-settings", editSettings},
        {"write-settings", writeSettings},
        {"save-dialog", openSaveDialog},
        {"save-settings", saveSettings},
        {"file-menu", openFileMenu},
        {"port-dialog", openPortDialog},
        {"port-list", openPortList},
        {"second-port", chooseSecondPort},
        {"read-kirk-beltpack", readKirkBeltpack},
        {"load-settings", loadSettings},
        {"write-other-beltpack", writeSettings},
        {"summary", showSummary},
        {"compare-units", compareUnits},
        {"read-rm5-antenna", readRm5Antenna},
        {"set-tbr6-mode", setTbr6Mode},
        {"calibrate-module-a", calibrateModuleA},
        {"confirm-module-a", confirmModuleA},
        {"calibrate-beltpack", calibrateBeltpack},
        {"confirm-beltpack", confirmBeltpack},
        {"r-screen", showRScreen},
        {"save-screens", saveScreens},
    };
    return steps;
}

}  // namespace quorvex::tour
