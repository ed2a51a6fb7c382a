#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "calibration/calib_tuning.h"
#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "fuzz/scripted_line.h"

// The ticks of the calibration dialog while a unit streams. Input: the unit, the radio module, a threshold as
// text on one line; then the line. "{c" in the line does inside the wait what an operator may do.

namespace quorvex::fuzz {

namespace {

class Slider : public CalibSlider {
public:
    Slider(int lowest, int highest) : lowest_(lowest), highest_(highest), value_(lowest) {}
    std::int16_t value() const override { return static_cast<std::int16_t>(value_); }
    void setValue(std::int16_t value) override {
        const int held = std::clamp<int>(value, lowest_, highest_);
        if (std::exchange(value_, held) != held && changed)
            changed();
    }
    void showValue(std::int16_t value) override {
        require(value >= lowest_ && value <= highest_, "the label shows what the slider can hold");
    }
    std::function<void()> changed;

private:
    int lowest_, highest_, value_;
};

class Dialog : public CalibWindow {
public:
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override { caption_ = caption; }
    void showKirkFrame(bool /*shown*/) override {}
    void showRssiThresholdFrame(bool /*shown*/) override {}
    void startTimer() override {}
    void unload() override { isOpen = false; }
    void showRssi(const std::string& text) override {
        require(text.starts_with("RSSI: ") && text.size() >= 8 && text.size() <= 9, "two or three digits");
    }
    void showDcBalance(const std::string& text) override {
        require(text.starts_with("DC Bal: "), "a balance");
        if (text == "DC Bal: No Conn")
            return;
        const int shown = std::atoi(text.c_str() + std::string_view("DC Bal: ").size());
        require(shown >= -100 && shown <= 100, "the balance is in its range");
        require(shown + 100 == slider_, "text and slider show the same");
    }
    void setDcSlider(int position) override {
        slider_ = position;
        require(position >= 0 && position <= 200, "the slider is in its range");
    }
    void plot(const Reading& reading) override {
        require(reading.rssi >= 0 && reading.rssi <= 255, "the RSSI is a byte");
        require(!reading.dcBalance || *reading.dcBalance + 100 == slider_, "plot and slider show the same");
    }

    bool isOpen = true;

private:
    std::string caption_;
    int slider_ = -1;
};

class OneModule : public SettingsStore {
public:
    explicit OneModule(bool isKirk) : isKirk_(isKirk) {}
    std::string get(std::string_view /*key*/, std::string_view /*byDefault*/) const override {
        return isKirk_ ? "1" : "0";
    }
    void save(std::string_view /*key*/, std::string_view /*text*/) override {}
    std::string place() const override { return "memory"; }

private:
    bool isKirk_;
};

struct Bench {
    Bench(std::string_view script, bool isKirk) : line(script), store(isKirk) {
        mid.changed = [this] { tuning.SliderMid_Change(); };
        tx.changed = [this] { tuning.SliderTx_Change(); };
        rx.changed = [this] { tuning.SliderRx_Change(); };
        line.onEvent = [this](char what) { happen(what); };
        tuning.load();
    }

    void happen(char what);

    ScriptedLine line;
    QuietConsole console;
    CommandLink link{line, line, console};
    OneModule store;
    Dialog dialog;
    Slider fmDev{0, 63}, freqAccr{-7, 7}, tx{0, 7}, mid{0, 7}, rx{0, 7};
    PlainField threshold;
    CalResult result = CalResult::none;
    CalibTuning tuning{link, store, dialog, {fmDev, freqAccr, tx, mid, rx, threshold}, result};
};

void Bench::happen(char what) {
    try {
        switch (what) {
            case 'o':
                tuning.CommandOK_Click();
                break;
            case 'c':
                tuning.CommandCancel_Click();
                break;
            case 't':
                tuning.CmdSetRssiThr_Click();
                break;
            case 'm':
                mid.setValue(static_cast<std::int16_t>(7 - mid.value()));
                break;
            case 'x':
                tx.setValue(static_cast<std::int16_t>(7 - tx.value()));
                tuning.SliderTx_Scroll();
                break;
            default:
                tuning.Timer1_Timer();
        }
    } catch (const OperationRefused&) {  // NOLINT(bugprone-empty-catch): told in the status line
    }
}

}  // namespace

void tryInput(Input input) {
    constexpr const char* kCaptions[] = {kCalibrateBeltpack, kCalibrateModuleA, kCalibrateModuleB, ""};
    Input how(input.line());
    const char* caption = kCaptions[how.choice(4)];
    Bench bench(input.rest(), how.letter() != 'R');
    bench.threshold.setText(how.rest());
    const auto value = [&how] { return static_cast<std::int16_t>(how.choice(8)); };
    bench.tuning.Set_Cal_Data(value(), value(), value(), value(), value(), caption);

    constexpr int kMostTicks = 16;
    for (int tick = 0; tick < kMostTicks && bench.dialog.isOpen; ++tick) {
        if (bench.line.isOver() && tick > 2)
            bench.tuning.CommandCancel_Click();
        bench.tuning.Timer1_Timer();
    }
    require(!bench.console.isHourglassUp(), "no exchange is under way");
}

}  // namespace quorvex::fuzz
