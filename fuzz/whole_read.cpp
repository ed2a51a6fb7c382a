#include <string>
#include <vector>

#include "antenna/antenna_read.h"
#include "beltpack/beltpack_read.h"
#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "fuzz/scripted_line.h"
#include "identity/dect_version.h"
#include "identity/system_id.h"

// Whole reads. Input: "B" for a Beltpack, "A" for an Active Antenna and "T" for its TBR6 mode, then the radio
// module before; on the following line what the unit sends, "~0" before the reply to each command. "{c" in it
// does inside a wait what an operator may do.

namespace quorvex::fuzz {

namespace {

class Options : public OptionGroup {
public:
    void select(int index) override { require(index >= 0 && index <= 2, "an option there is"); }
};

class List : public OneItemList {
public:
    void refill(const std::vector<std::string>& items) override { count_ = static_cast<int>(items.size()); }
    int topIndex() const override { return top_; }
    void setTopIndex(int index) override {
        require(index >= 0 && index < count_, "an item there is");
        top_ = index;
    }

private:
    int count_ = 0, top_ = 0;
};

class Module : public RadioModule {
public:
    std::int16_t type() const override { return type_; }
    void change(std::int16_t type) override {
        require(type == kRm5 || type == kKirk, "a module there is");
        type_ = type;
    }

private:
    std::int16_t type_ = kRm5;
};

struct Fields {
    PlainField fm, frequency, receive, transmit;
    CalibrationFields calibration{fm, frequency, receive, transmit};
};

struct Bench : BeltpackReadNeighbours {
    explicit Bench(std::string_view script) : line(script) {
        line.onEvent = [this](char what) { happen(what); };
    }
    std::string showSystemId(const std::string& digits) override { return systemId.showParkB(digits); }
    void requestDectVersion(Operation& operation) override { version.request(operation); }
    void enableSettingsButtons() override { require(image.isFilled(), "there is something to save"); }

    void happen(char what) {
        try {
            start(what);
        } catch (const OperationRefused&) {  // NOLINT(bugprone-empty-catch): told in the status line
        }
    }
    void start(char what) {
        if (what == 'B')
            read.CommandRdSettingsBp_Click();
        else if (what == 'A')
            antenna.CommandRdSettingsAA_Click();
        else if (what == 'T')
            antenna.CommandSetTbr6_Click();
        else if (what == 'S')
            systemId.CommandSetSysID_Click();
        else
            image.beginFile();
    }

    ScriptedLine line;
    QuietConsole console;
    CommandLink link{line, line, console};
    SettingsImage image;
    Module module;
    Options mic;
    PlainCheck batteryAlarm;
    List hwRevision, regulations;
    SettingsEditors editors{image, mic, batteryAlarm, hwRevision, regulations};
    PlainField parkB, eic, fpn, fps, psn, carriers, pli, threshold, versionField;
    Fields own, moduleA, moduleB;
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
    DectVersion version{link, "! 0108", versionField};
    BeltpackRead read{link, image, module, editors, {psn, carriers, pli, own.calibration, threshold}, *this};
    AntennaRead antenna{link, module, moduleA.calibration, moduleB.calibration};
};

void checkByte(const PlainField& field) {
    const std::string text = field.text();
    require(text.size() <= 3 && text.find('-') == std::string::npos, "a byte in decimal");
}

void check(const Bench& bench) {
    for (int i = 0; i < SettingsImage::kRecords; ++i)
        require(bench.image[i].value.str().size() == 10, "a value has 10 characters");
    require(!bench.image.isBeingFilled() && !bench.console.isHourglassUp(), "each read has ended");
    require(bench.parkB.text().empty() || bench.parkB.text().size() == 10, "a whole System ID or none");
    for (const Fields* fields : {&bench.own, &bench.moduleA, &bench.moduleB}) {
        checkByte(fields->fm);
        checkByte(fields->receive);
        checkByte(fields->transmit);
    }
    checkByte(bench.threshold);
}

}  // namespace

void tryInput(Input input) {
    Input how(input.line());
    Bench bench(input.rest());
    const char unit = how.letter();
    if (how.letter() == 'K')
        bench.module.change(RadioModule::kKirk);
    bench.start(unit);
    check(bench);
}

}  // namespace quorvex::fuzz
