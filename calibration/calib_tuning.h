#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "calibration/cal_result.h"
#include "calibration/readings.h"
#include "link/controls.h"
#include "link/operation.h"
#include "link/settings_store.h"

namespace quorvex {

/// A slider of the calibration dialog with its value label.
class CalibSlider {
public:
    virtual ~CalibSlider() = default;
    /// Always within the slider's range.
    virtual std::int16_t value() const = 0;
    /// Clamped to the range. Raises the change handler before it returns if the value changes.
    virtual void setValue(std::int16_t value) = 0;
    /// Shows a number in the value label, whatever the slider holds.
    virtual void showValue(std::int16_t value) = 0;
};

/// The calibration dialog's window as its logic sees it.
class CalibWindow {
public:
    virtual ~CalibWindow() = default;
    virtual std::string caption() const = 0;
    virtual void setCaption(const std::string& caption) = 0;
    virtual void showKirkFrame(bool shown) = 0;
    virtual void showRssiThresholdFrame(bool shown) = 0;
    virtual void startTimer() = 0;
    /// Closes the dialog; its modal show returns once every handler has returned.
    virtual void unload() = 0;
    virtual void showRssi(const std::string& text) = 0;
    virtual void showDcBalance(const std::string& text) = 0;
    /// 0 to 200, the middle is 100.
    virtual void setDcSlider(int position) = 0;
    /// What these three have shown, once for each status record.
    virtual void plot(const Reading& reading) = 0;
};

struct CalibControls {
    CalibSlider &fmDev, &freqAccr, &tx, &mid, &rx;
    TextField& rssiThreshold;
};

/// The calibration dialog: tuning one radio while its unit is connected. Every slider movement is sent at
/// once and never confirmed; a timer shows what a Kirk module streams meanwhile.
class CalibTuning {
public:
    CalibTuning(CommandLink& link, SettingsStore& store, CalibWindow& window, CalibControls controls,
                CalResult& result);

    /// When the dialog is created. Throws for a stored RF module type that is no 16-bit number.
    void load();
    /// Fills the dialog. Sends nothing: the caption by which commands are chosen is set last.
    void Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit, std::int16_t receive,
                      std::int16_t otherFm, const std::string& caption);
    void StartCalTimer() { window_.startTimer(); }
    void ShowRssiThreshold() { window_.showRssiThresholdFrame(true); }

    // After a slider's value has changed, by the user or by code.
    void SliderFmDev_Change();
    void SliderFreqAccr_Change();
    void SliderMid_Change();
    void SliderTx_Change();
    void SliderRx_Change();
    // After the user has moved a slider.
    void SliderTx_Scroll() { curTx_ = controls_.tx.value(); }
    void SliderRx_Scroll() { curRx_ = controls_.rx.value(); }

    void CommandOK_Click();
    void CommandCancel_Click();
    /// A tick that comes while an earlier one still reads does nothing. One inside a button's exchange or
    /// its message box reads nothing: it neither takes the button's reply nor holds up its last word.
    void Timer1_Timer();
    void CmdSetRssiThr_Click();
    /// After each typed character has passed the filter; Enter runs the update.
    void TextRssiThr_KeyPress(char16_t key);

private:
    enum class Target { none, beltpack, moduleA, moduleB };
    /// One value's command for each target.
    struct Commands {
        const char *beltpack, *moduleA, *moduleB;
    };
    static constexpr Commands kFrequency{"# 027c", "# 0245", "# 0246"};
    static constexpr Commands kTransmit{"# 027a", "# 0249", "# 024a"};
    static constexpr Commands kReceive{"# 0279", "# 0247", "# 0248"};
    static constexpr Commands kStoreFmDev{"# 027d", "# 0241", "# 0242"};

    Target target() const;
    void sendFor(Operation& operation, const Commands& commands, std::int16_t value);
    /// Whether the dialog's talk with the unit goes on; no reply is waited for once the dialog is to close.
    bool isTalking() const { return !calClosing_ && !operation_.isOver(); }
    std::int16_t freqCode() const;
    void tick();
    std::string readStatusRecord();
    void showRecord(const std::string& record);
    /// The DC balance that a record tells, as it is to be shown; none while there is no connection.
    std::optional<int> dcBalance(const std::string& record);
    bool unitAnswers(Operation& check);
    /// Whether the unit answers, and has taken the values of OK then.
    bool confirm();
    /// Whether it was read back as written.
    bool writeThreshold(std::int16_t threshold);
    void reportNoUnit();

    CommandLink& link_;
    Operation operation_;  ///< the dialog's own: the port that it was made for
    Operation stream_;     ///< the status records, as long as isTalking
    SettingsStore& store_;
    CalibWindow& window_;
    CalibControls controls_;
    CalResult& result_;

    std::int16_t otherFmDev_ = 0;
    std::int16_t prevMid_ = 0;
    std::int16_t curTx_ = 0;
    std::int16_t curRx_ = 0;
    std::int16_t rfType_ = 0;
    std::int16_t noConnCountdown_ = 1;
    bool calClosing_ = false;
    bool dcConnected_ = false;
    bool ticking_ = false;
    bool busy_ = false;  ///< a button's exchange or its message box is under way; ticks read nothing
};

}  // namespace quorvex
