#include "calibration/calib_tuning.h"

#include <algorithm>

#include "link/held.h"
#include "link/reply.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr int kReplyLength = 8;
constexpr std::uint64_t kStatusRecord = 7;
constexpr std::int16_t kZeroReadings = 3;  ///< in a row, until "No Conn" is shown
constexpr int kDcOffset = 20;

std::int16_t sum(int a, int b) {
    return toInt16(a + b);
}

std::string twoDigits(std::uint64_t value) {
    const std::string digits = std::to_string(value);
    return digits.size() < 2 ? "0" + digits : digits;
}

}  // namespace

CalibTuning::CalibTuning(CommandLink& link, SettingsStore& store, CalibWindow& window, CalibControls controls,
                         CalResult& result)
    : link_(link),
      operation_(link),
      stream_(link, [this] { return isTalking(); }),
      store_(store),
      window_(window),
      controls_(controls),
      result_(result) {}

void CalibTuning::load() {
    window_.showRssiThresholdFrame(false);
    result_ = CalResult::none;
    rfType_ = store_.number(kRfModuleKey, "0");
    window_.showKirkFrame(rfType_ != 0);
    noConnCountdown_ = 1;
    dcConnected_ = false;
    calClosing_ = false;
}

void CalibTuning::Set_Cal_Data(std::int16_t fm, std::int16_t frequency, std::int16_t transmit,
                               std::int16_t receive, std::int16_t otherFm, const std::string& caption) {
    otherFmDev_ = otherFm;
    controls_.fmDev.setValue(fm);
    controls_.freqAccr.setValue(frequency);
    controls_.mid.setValue(frequency);
    prevMid_ = frequency;
    controls_.tx.setValue(transmit);
    curTx_ = transmit;
    controls_.rx.setValue(receive);
    curRx_ = receive;
    window_.setCaption(caption);
    controls_.fmDev.showValue(fm);
    controls_.freqAccr.showValue(frequency);
    controls_.tx.showValue(transmit);
    controls_.mid.showValue(frequency);
    controls_.rx.showValue(receive);
}

CalibTuning::Target CalibTuning::target() const {
    const std::string caption = window_.caption();
    if (caption == kCalibrateBeltpack)
        return Target::beltpack;
    if (caption == kCalibrateModuleA)
        return Target::moduleA;
    return caption == kCalibrateModuleB ? Target::moduleB : Target::none;
}

void CalibTuning::sendFor(Operation& operation, const Commands& commands, std::int16_t value) {
    switch (target()) {
        case Target::beltpack:
            operation.serialSendString(commands.beltpack + HexPad(value, 2));
            break;
        case Target::moduleA:
            operation.serialSendString(commands.moduleA + HexPad(value, 2));
            break;
        case Target::moduleB:
            operation.serialSendString(commands.moduleB + HexPad(value, 2));
            break;
        case Target::none:
            break;
    }
}

void CalibTuning::SliderFmDev_Change() {
    const std::int16_t value = controls_.fmDev.value();
    controls_.fmDev.showValue(value);
    // One command of the antenna carries both modules' values, module A's first.
    if (target() == Target::moduleB)
        operation_.serialSendString("! 0306" + HexPad(otherFmDev_, 2) + HexPad(value, 2));
    else if (target() == Target::moduleA)
        operation_.serialSendString("! 0306" + HexPad(value, 2) + HexPad(otherFmDev_, 2));
    else if (target() == Target::beltpack)
        operation_.serialSendString("! 0207" + HexPad(value, 2));
}

void CalibTuning::SliderFreqAccr_Change() {
    const std::int16_t value = controls_.freqAccr.value();
    controls_.freqAccr.showValue(value);
    const int code = rfType_ == 0 ? OffsetToNibble(value) : value;
    sendFor(operation_, kFrequency, static_cast<std::int16_t>(code));
}

void CalibTuning::SliderMid_Change() {
    // Wider than the sliders' own range, as intended; the sums stay as they are, beyond it too.
    constexpr int kAbove = -7, kBelow = 14;
    const std::int16_t value = controls_.mid.value();
    const std::int16_t moved = sum(value, -prevMid_);
    prevMid_ = value;
    curTx_ = sum(curTx_, moved);
    curRx_ = sum(curRx_, moved);
    if (curRx_ > kAbove && curRx_ < kBelow)
        controls_.rx.setValue(curRx_);
    if (curTx_ > kAbove && curTx_ < kBelow)
        controls_.tx.setValue(curTx_);
    controls_.mid.showValue(value);
    sendFor(operation_, kFrequency, value);
}

void CalibTuning::SliderTx_Change() {
    const std::int16_t value = controls_.tx.value();
    controls_.tx.showValue(value);
    sendFor(operation_, kTransmit, value);
}

void CalibTuning::SliderRx_Change() {
    const std::int16_t value = controls_.rx.value();
    controls_.rx.showValue(value);
    sendFor(operation_, kReceive, value);
}

std::int16_t CalibTuning::freqCode() const {
    return rfType_ != 0 ? controls_.mid.value()
                        : static_cast<std::int16_t>(OffsetToNibble(controls_.freqAccr.value()));
}

bool CalibTuning::unitAnswers(Operation& check) {
    constexpr int kReplies = 3;  // records that stream in between may come before the reply
    check.serialSendString("# 0102");
    for (int i = 0; i < kReplies; ++i) {
        const std::string reply = check.serialGetResponseChars(limit::kReply, kReplyLength);
        if (reply == kError)
            return false;
        if (reply.starts_with("# 028"))
            return true;
    }
    return false;
}

void CalibTuning::CommandOK_Click() {
    const Held busy(busy_, true);
    if (confirm()) {
        result_ = CalResult::confirmed;
        calClosing_ = true;
    } else if (!calClosing_) {  // Cancel may have been pressed meanwhile
        reportNoUnit();
    }
}

bool CalibTuning::confirm() {
    Operation check(link_, [this] { return isTalking(); });
    check.hourglass();
    if (!unitAnswers(check))
        return false;
    sendFor(check, kStoreFmDev, controls_.fmDev.value());
    sendFor(check, kFrequency, freqCode());
    return !check.isOver();  // a cable that was pulled meanwhile has taken nothing there
}

void CalibTuning::CommandCancel_Click() {
    result_ = CalResult::cancelled;
    calClosing_ = true;
}

void CalibTuning::Timer1_Timer() {
    if (ticking_)
        return;
    const Held ticking(ticking_, true);
    tick();
}

void CalibTuning::tick() {
    if (calClosing_) {
        window_.unload();
        return;
    }
    if (rfType_ == 0 || busy_)
        return;
    const std::string record = readStatusRecord();
    if (record == kError) {
        if (!calClosing_)
            reportNoUnit();
        window_.unload();
        return;
    }
    showRecord(record);
    link_.console().beep();
}

std::string CalibTuning::readStatusRecord() {
    for (;;) {
        std::string record = stream_.serialGetResponse(limit::kCalibrationRecord, kCarriageReturn);
        if (record == kError || hexValue(middle(record, 5, 2)) == kStatusRecord)
            return record;
    }
}

void CalibTuning::showRecord(const std::string& record) {
    const std::uint64_t rssi = hexValue(middle(record, 11, 2));
    window_.showRssi("RSSI: " + twoDigits(rssi));
    const std::optional<int> balance = dcBalance(record);
    if (balance)
        window_.setDcSlider(*balance + Reading::kBalanceLimit);
    window_.showDcBalance("DC Bal: " + (balance ? std::to_string(*balance) : "No Conn"));
    window_.plot({link_.ticks(), static_cast<int>(rssi), balance});
}

std::optional<int> CalibTuning::dcBalance(const std::string& record) {
    const auto low = static_cast<int>(hexValue(middle(record, 7, 2)));
    const auto high = static_cast<int>(hexValue(middle(record, 9, 2)));
    const int raw = high * 256 + low;
    const int balance = raw > 32767 ? raw - 65536 : raw;
    const int half = toInt16(balance / 2.0);
    if (half != 0) {
        dcConnected_ = true;
        noConnCountdown_ = kZeroReadings;
    } else if (--noConnCountdown_ < 1) {
        dcConnected_ = false;
        noConnCountdown_ = kZeroReadings;
    }
    if (!dcConnected_)
        return {};
    return std::clamp(half + kDcOffset, -Reading::kBalanceLimit, Reading::kBalanceLimit);
}

void CalibTuning::reportNoUnit() {
    link_.console().messageBox("Could not communicate with device!", Icon::critical);
}

bool CalibTuning::writeThreshold(std::int16_t threshold) {
    Operation operation(link_, [this] { return isTalking(); });
    operation.hourglass();
    const bool beltpack = target() == Target::beltpack;
    operation.serialSendString((beltpack ? "# 0278" : "# 024B") + HexPad(threshold, 2));
    const std::string reply = operation.exchange(beltpack ? "# 0138" : "# 010B", kReplyLength);
    // No reply counts as 0 here, as intended.
    return dataByte(reply) == threshold && !operation.isOver();
}

void CalibTuning::CmdSetRssiThr_Click() {
    const Held busy(busy_, true);
    std::int16_t threshold = 0;
    try {
        threshold = toInt16(decimalValue(controls_.rssiThreshold.text()));
    } catch (const RuntimeFault&) {
        link_.console().messageBox("The RSSI threshold must be a number from -32768 to 32767.",
                                   Icon::critical);
        return;
    }
    // The texts speak of the Beltpack for every unit, as intended.
    if (writeThreshold(threshold)) {
        link_.status("Beltpack's RSSI Threshold updated successfully.", kBlack);
        return;
    }
    if (calClosing_)
        return;  // given up
    link_.console().beep();
    link_.console().messageBox("Value could not read back from Beltpack!", Icon::critical);
    link_.status("Beltpack's RSSI Threshold could not be updated.", kBlack);
}

void CalibTuning::TextRssiThr_KeyPress(char16_t key) {
    if (key == kEnter)
        CmdSetRssiThr_Click();
}

}  // namespace quorvex
