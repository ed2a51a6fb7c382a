#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "calibration/calib_tuning.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/fake_store.h"
#include "tests/support/journal.h"
#include "tests/support/rows.h"

namespace quorvex {

/// A slider in memory. It holds its value within its range and tells of changes at once, as the real one
/// does. What its label shows is noted: "Mid shows 6".
class FakeSlider : public CalibSlider {
public:
    FakeSlider(Journal& journal, std::string name, int lowest, int highest)
        : journal_(journal), name_(std::move(name)), lowest_(lowest), highest_(highest), value_(lowest) {}

    std::int16_t value() const override { return static_cast<std::int16_t>(value_); }
    void setValue(std::int16_t value) override {
        const int held = std::clamp<int>(value, lowest_, highest_);
        if (std::exchange(value_, held) != held && changed)
            changed();
    }
    void showValue(std::int16_t value) override {
        shows_ = value;
        journal_.note(name_ + " shows " + std::to_string(value));
    }

    /// As a user does with the mouse or a key.
    void drag(int value) {
        const std::int16_t before = this->value();
        setValue(static_cast<std::int16_t>(value));
        if (this->value() != before && scrolled)
            scrolled();
    }
    int shows() const { return shows_; }

    std::function<void()> changed;
    std::function<void()> scrolled;

private:
    Journal& journal_;
    std::string name_;
    int lowest_, highest_, value_;
    int shows_ = -1000;
};

/// The dialog's window in memory; everything that it is told is noted.
class FakeCalibWindow : public CalibWindow {
public:
    explicit FakeCalibWindow(Journal& journal) : journal_(journal) {}

    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override {
        caption_ = caption;
        journal_.note("caption " + caption);
    }
    void showKirkFrame(bool shown) override { note(shown ? "Kirk frame shown" : "Kirk frame hidden"); }
    void showRssiThresholdFrame(bool shown) override {
        note(shown ? "threshold frame shown" : "threshold frame hidden");
    }
    void startTimer() override { note("timer started"); }
    void unload() override { note("unload"); }
    void showRssi(const std::string& text) override { journal_.note("rssi " + text); }
    void showDcBalance(const std::string& text) override { journal_.note("dc " + text); }
    void setDcSlider(int position) override { journal_.note("dc slider " + std::to_string(position)); }
    void plot(const Reading& reading) override { plotted.push_back(reading); }

    std::vector<Reading> plotted;  ///< not in the journal

private:
    void note(const char* entry) { journal_.note(entry); }

    Journal& journal_;
    std::string caption_;
};

/// The dialog's logic with nothing real around it, on an open port that nobody answers at first.
struct TuningBench {
    explicit TuningBench(int rfType = 0, FakeLoop::Tick startTick = 0) : loop(startTick) {
        store.put("RfModule", std::to_string(rfType));
        connect(fmDev, [this] { tuning.SliderFmDev_Change(); });
        connect(freqAccr, [this] { tuning.SliderFreqAccr_Change(); });
        connect(mid, [this] { tuning.SliderMid_Change(); });
        connect(tx, [this] { tuning.SliderTx_Change(); });
        connect(rx, [this] { tuning.SliderRx_Change(); });
        tx.scrolled = [this] { tuning.SliderTx_Scroll(); };
        rx.scrolled = [this] { tuning.SliderRx_Scroll(); };
    }
    TuningBench(const TuningBench&) = delete;
    TuningBench& operator=(const TuningBench&) = delete;

    struct Values {
        int fm = 0, frequency = 0, transmit = 0, receive = 0, otherFm = 0;
    };
    /// Loads and fills the dialog; the journal is empty then.
    void open(const std::string& caption, Values values) {
        tuning.load();
        fill(caption, values);
        journal.take();
    }
    void open(const std::string& caption) { open(caption, Values()); }
    void fill(const std::string& caption, Values values) {
        const auto narrow = [](int value) { return static_cast<std::int16_t>(value); };
        tuning.Set_Cal_Data(narrow(values.fm), narrow(values.frequency), narrow(values.transmit),
                            narrow(values.receive), narrow(values.otherFm), caption);
    }
    FakeSlider& slider(const QString& name) {
        const std::pair<const char*, FakeSlider&> all[] = {
            {"FmDev", fmDev}, {"FreqAccr", freqAccr}, {"Mid", mid}, {"Tx", tx}, {"Rx", rx}};
        for (const auto& [its, found] : all) {
            if (name == its)
                return found;
        }
        qFatal("no slider %s", qPrintable(name));
    }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal, true};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    FakeStore store{journal};
    FakeCalibWindow window{journal};
    FakeSlider fmDev{journal, "FmDev", 0, 63}, freqAccr{journal, "FreqAccr", -7, 7};
    FakeSlider tx{journal, "Tx", 0, 7}, mid{journal, "Mid", 0, 7}, rx{journal, "Rx", 0, 7};
    FakeField threshold{journal, "TextRssiThr"};
    CalResult result = CalResult::confirmed;  ///< what the run before left behind
    CalibTuning tuning{link, store, window, {fmDev, freqAccr, tx, mid, rx, threshold}, result};

private:
    static void connect(FakeSlider& slider, std::function<void()> changed) {
        slider.changed = std::move(changed);
    }
};

inline constexpr const char* kBeltpackCaption = "Calibrate Beltpack";
inline constexpr const char* kModuleACaption = "Calibrate Active Antenna - Module A";
inline constexpr const char* kModuleBCaption = "Calibrate Active Antenna - Module B";
inline constexpr const char* kNoUnitBox = "box critical: Could not communicate with device! []";

}  // namespace quorvex
