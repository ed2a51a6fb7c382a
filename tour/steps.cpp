#include "tour/steps.h"

#include "tour/units.h"

namespace quorvex::tour {

namespace {

constexpr const char* kReadDone = "Settings read from Beltpack successfully.";

void openWindow(Visitor& visitor) {
    visitor.waitForWindow();
    visitor.waitToSee("LabelComPort", rm5Beltpack().port);
    visitor.expect("LblStatus", "");
}

void readBeltpack(Visitor& visitor, const Unit& unit) {
    visitor.click("CommandRdSettingsBp");
    visitor.waitToSee("LblStatus", kReadDone);
    for (const Held& value : unit.values)
        visitor.expect(value.control, value.shown);
    visitor.expect("TextDectVerBP", unit.version);
}

void readRm5Beltpack(Visitor& visitor) {
    readBeltpack(visitor, rm5Beltpack());
    for (const char* control : {"TextFreqAccrRx", "TextFreqAccrTx", "TextRssiThr"})
        visitor.expectVisible(control, false);
}

/// Edits, writes and keeps the settings of the Beltpack that was read last.
void editSettings(Visitor& visitor) {
    visitor.click("optionMICElectret");
    visitor.expect("optionMICElectret", "on");
    visitor.click("BPHWRevision");
    visitor.press(Qt::Key_Up);
    visitor.expect("BPHWRevision", "MX 318825");
}

void writeSettings(Visitor& visitor) {
    visitor.click("CommandWrite");
    visitor.waitToSee("LblStatus", "Settings written to Beltpack successfully!");
}

std::string settingsFile(const Visitor& visitor) {
    return visitor.bench().folder + "/settings.bpc";
}

void openSaveDialog(Visitor& visitor) {
    visitor.click("CommandSave");
    visitor.waitForDialog("CommonDialog1");
    visitor.expect("fileNameEdit", "100000");  // the serial number is proposed
    visitor.type("fileNameEdit", settingsFile(visitor));
}

void saveSettings(Visitor& visitor) {
    visitor.press(Qt::Key_Return);
    visitor.waitForNoDialog();
    visitor.waitToSee("LblStatus", "Betpack settings saved to file successfully.");
}

void openFileMenu(Visitor& visitor) {
    visitor.openMenu("mnuFile");
}

void openPortDialog(Visitor& visitor) {
    visitor.press(Qt::Key_C);  // its access key
    visitor.waitForDialog("ComSelect");
}

void openPortList(Visitor& visitor) {
    visitor.openList("ComboCom");
}

void choosePort(Visitor& visitor) {
    visitor.clickListItem(kirkBeltpack().port);
    visitor.press(Qt::Key_Return);  // OK is the default button
    visitor.waitForNoDialog();
    visitor.expect("LabelComPort", kirkBeltpack().port);
}

void readKirkBeltpack(Visitor& visitor) {
    readBeltpack(visitor, kirkBeltpack());
    for (const char* control : {"TextFreqAccrRx", "TextFreqAccrTx", "TextRssiThr"})
        visitor.expectVisible(control, true);
}

void loadSettings(Visitor& visitor) {
    visitor.click("CommandRead");
    visitor.waitForDialog("CommonDialog1");
    visitor.type("fileNameEdit", settingsFile(visitor));
    visitor.press(Qt::Key_Return);
    visitor.waitForNoDialog();
    visitor.waitToSee("LblStatus", "Beltpack settings read from file successfully.");
    visitor.expect("TextBeltpackId", "100000");
}

void showSummary(Visitor& visitor) {
    visitor.click("CommandSummary");
    visitor.waitForDialog("FormCfgSummary");
}

/// The lines of the parameters 01 to 15 of what a unit holds.
std::string parameters(const std::string& held) {
    const std::size_t last = held.find("\n15=");
    return held.substr(0, held.find('\n', last + 1));
}

void compareUnits(Visitor& visitor) {
    visitor.press(Qt::Key_Return);
    visitor.waitForNoDialog();
    const auto held = [&](const Unit& unit) {
        return visitor.ask([&] { return parameters(visitor.bench().unitHolds(unit.port)); });
    };
    const std::string first = held(rm5Beltpack());
    if (first.find("07=02\n") == std::string::npos || first.find("\n15=01") == std::string::npos)
        throw TourFailure("The first Beltpack does not hold what was edited:\n" + first);
    if (held(kirkBeltpack()) != first)
        throw TourFailure("The two Beltpacks do not hold the same.");
}

void usePort(Visitor& visitor, const char* port) {
    openFileMenu(visitor);
    openPortDialog(visitor);
    visitor.openList("ComboCom");
    visitor.clickListItem(port);
    visitor.press(Qt::Key_Return);
    visitor.waitForNoDialog();
    visitor.expect("LabelComPort", port);
}

void expectValues(Visitor& visitor, const Unit& unit) {
    for (const Held& value : unit.values)
        visitor.expect(value.control, value.shown);
}

void readRm5Antenna(Visitor& visitor) {
    visitor.clickTab("Active Antenna");
    usePort(visitor, rm5Antenna().port);
    visitor.click("CommandRdSettingsAA");
    visitor.waitToSee("LblStatus", "Settings read from Active Antenna");
    expectValues(visitor, rm5Antenna());
    visitor.expectVisible("TextFreqAdjTxA", false);
}

void setTbr6Mode(Visitor& visitor) {
    usePort(visitor, kirkAntenna().port);
    visitor.click("CommandSetTbr6");
    visitor.waitToSee("LblStatus", "Active Antenna is in TBR6 Mode");
    expectValues(visitor, kirkAntenna());
}

/// Opens the calibration dialog and waits for what the Kirk streams.
void startCalibration(Visitor& visitor, const char* button) {
    visitor.click(button);
    visitor.waitForDialog("FormCalib");
    visitor.waitForOther("LabelRssi", "RSSI:");
    visitor.click("SliderFmDev");
    visitor.press(Qt::Key_End);
    visitor.expect("LabelFmDevValue", "63");
}

void calibrateModuleA(Visitor& visitor) {
    startCalibration(visitor, "CommandCalibAAA");
}

void confirmModuleA(Visitor& visitor) {
    visitor.click("CommandOK");
    visitor.waitForNoDialog();
    visitor.waitToSee("LblStatus", "Active Antenna calibrated successfully.");
    visitor.waitToSee("TextFmDevA", "63");
}

void calibrateBeltpack(Visitor& visitor) {
    visitor.clickTab("BeltPack");
    usePort(visitor, kirkBeltpack().port);
    visitor.click("CommandRdSettingsBp");  // the settings loaded from the file have emptied the read-outs
    visitor.waitToSee("LblStatus", "Settings read from Beltpack successfully.");
    startCalibration(visitor, "CommandCalibBp");
    visitor.expect("LabelMidValue", "4");
}

void confirmBeltpack(Visitor& visitor) {
    visitor.click("CommandOK");
    visitor.waitForNoDialog();
    visitor.waitToSee("LblStatus", "Beltpack Calibrated successfully.");
    visitor.waitToSee("TextFMDev", "63");
    visitor.waitToSee("TextRssiThr", "72");
}

void showRScreen(Visitor& visitor) {
    visitor.clickTab("R-Screen");
    usePort(visitor, displayBeltpack().port);
    visitor.waitUntil("the Beltpack's display", [&] { return visitor.hasBlack("Picture1"); });
}

void saveScreens(Visitor& visitor) {
    visitor.type("screenDump", visitor.bench().folder + "/");
    visitor.type("ScreenDumpFName", "Screen");
    visitor.click("AutoIncrementOption");
    for (const char* counted : {"1", "2", "3"}) {
        visitor.click("CommandScreenDump");
        visitor.waitToSee("autoIncValText", counted);
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
        {"second-port", choosePort},
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
