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

void showActiveAntenna(Visitor& visitor) {
    visitor.clickTab("Active Antenna");
    visitor.expectVisible("CommandRdSettingsAA", true);
}

void showRScreen(Visitor& visitor) {
    visitor.clickTab("R-Screen");
    visitor.expectVisible("Picture1", true);
}

}  // namespace

const std::vector<Step>& allSteps() {
    static const std::vector<Step> steps{
        {"main-window", openWindow},
        {"read-rm5-beltpack", readRm5Beltpack},
        {"file-menu", openFileMenu},
        {"port-dialog", openPortDialog},
        {"port-list", openPortList},
        {"second-port", choosePort},
        {"read-kirk-beltpack", readKirkBeltpack},
        {"active-antenna", showActiveAntenna},
        {"r-screen", showRScreen},
    };
    return steps;
}

}  // namespace quorvex::tour
