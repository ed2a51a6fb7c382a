#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <string>

#include "calibration/calib_run.h"
#include "link/runtime_fault.h"
#include "tests/calibration/tuning_bench.h"

namespace quorvex {

/// The calibration dialog without a window: the real logic, sliders in memory, and a timer that ticks in
/// virtual time wherever the program waits, inside other waits too. A fault closes it and comes out of
/// showModally(), for the test to see.
class VirtualDialog : public CalibDialog, private CalibWindow {
public:
    static constexpr FakeLoop::Tick kTickMs = 400;
    static constexpr FakeLoop::Tick kForeverMs = FakeLoop::Tick{1} << 40;

    VirtualDialog(CommandLink& link, SettingsStore& store, CalResult& result, FakeLoop& loop,
                  Journal& journal)
        : loop_(loop),
          fmDev(journal, "FmDev", 0, 63),
          freqAccr(journal, "FreqAccr", -7, 7),
          tx(journal, "Tx", 0, 7),
          mid(journal, "Mid", 0, 7),
          rx(journal, "Rx", 0, 7),
          threshold(journal, "dialog threshold"),
          tuning(link, store, *this, {fmDev, freqAccr, tx, mid, rx, threshold}, result) {
        fmDev.changed = [this] { tuning.SliderFmDev_Change(); };
        freqAccr.changed = [this] { tuning.SliderFreqAccr_Change(); };
        mid.changed = [this] { tuning.SliderMid_Change(); };
        tx.changed = [this] { tuning.SliderTx_Change(); };
        rx.changed = [this] { tuning.SliderRx_Change(); };
        tx.scrolled = [this] { tuning.SliderTx_Scroll(); };
        rx.scrolled = [this] { tuning.SliderRx_Scroll(); };
        tuning.load();
    }

    void Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit, std::int16_t receive,
                      std::int16_t otherFm, const std::string& caption) override {
        tuning.Set_Cal_Data(fm, frequency, transmit, receive, otherFm, caption);
    }
    void ShowRssiThreshold() override { tuning.ShowRssiThreshold(); }
    TextField& rssiThreshold() override { return threshold; }
    void StartCalTimer() override { tuning.StartCalTimer(); }
    void showModally() override {
        isShown_ = true;
        while (isShown_) {
            if (atEachTurn)
                atEachTurn();
            loop_.runUntil(kForeverMs);
        }
        timerRuns_ = false;
        if (fault_)
            std::rethrow_exception(fault_);
    }

    /// What the operator does in the dialog; nothing once it has closed. Handlers nest in each other's
    /// waits, to any depth.
    void handle(const std::function<void()>& handler) {
        if (!isShown_)
            return;
        try {
            handler();
        } catch (const RuntimeFault&) {
            fault_ = std::current_exception();
            unload();
        }
    }
    bool isShown() const { return isShown_; }
    /// What the machine does by itself while nobody waits for the unit.
    std::function<void()> atEachTurn;

    /// Expires with the dialog, for deeds planned for later.
    std::weak_ptr<VirtualDialog*> handleForLater() const { return self_; }

private:
    std::string caption() const override { return caption_; }
    void setCaption(const std::string& caption) override { caption_ = caption; }
    void showKirkFrame(bool /*shown*/) override {}
    void showRssiThresholdFrame(bool /*shown*/) override {}
    void startTimer() override {
        timerRuns_ = true;
        tickIn(kTickMs);
    }
    void tickIn(FakeLoop::Tick ms) {
        loop_.at(loop_.now() + ms, [weak = handleForLater()] {
            const auto self = weak.lock();
            if (!self || !(*self)->timerRuns_)
                return;
            (*self)->tickIn(kTickMs);  // the timer goes on while a tick waits
            (*self)->handle([dialog = *self] { dialog->tuning.Timer1_Timer(); });
        });
    }
    void unload() override {
        isShown_ = false;
        timerRuns_ = false;
    }
    void showRssi(const std::string& /*text*/) override {}
    void showDcBalance(const std::string& /*text*/) override {}
    void setDcSlider(int /*position*/) override {}
    void plot(const Reading& /*reading*/) override {}

    FakeLoop& loop_;
    std::shared_ptr<VirtualDialog*> self_ = std::make_shared<VirtualDialog*>(this);
    std::string caption_;
    bool isShown_ = false;
    bool timerRuns_ = false;
    std::exception_ptr fault_;

public:
    FakeSlider fmDev, freqAccr, tx, mid, rx;
    FakeField threshold;
    CalibTuning tuning;
};

}  // namespace quorvex
