#include "rscreen/remote_screen.h"

#include "link/held.h"
#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {

constexpr std::int32_t kFrameBytes = 512;
constexpr std::int32_t kNearlyWhole = 400;  ///< at line speed a tick brings 480 bytes
constexpr int kByteLimit = 10000;           ///< a frame is read to its end however slowly it comes

}  // namespace

RemoteScreen::RemoteScreen(CommandLink& link, RemoteScreenWindow& window, RemoteScreenFields fields)
    : link_(link), window_(window), fields_(fields) {}

ScreenBits RemoteScreen::bits() const {
    ScreenBits bits{};
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = static_cast<std::uint8_t>(link_.dataBuffer().bytes()[i]);
    return bits;
}

bool RemoteScreen::RScreenTimer_Timer() {
    if (isCapturing()) {
        if (++ticksInCapture_ > 1 || link_.dataBuffer().count() < kNearlyWhole)
            window_.repaint(bits());
        return false;
    }
    const bool whole = takeFrames();
    window_.repaint(bits());
    return whole;
}

bool RemoteScreen::takeFrames() {
    if (link_.isBusy()) {
        isBehind_ = true;
        return false;
    }
    bool whole = capture();
    // Frames that came while an operation held the port are passed over, so that the picture is of now.
    while (whole && isBehind_ && link_.waitingCharacters() >= kFrameBytes)
        whole = capture();
    isBehind_ = link_.dataBuffer().count() > 0 && !whole;
    return whole;
}

bool RemoteScreen::capture() {
    ticksInCapture_ = 0;
    // A box may have opened over a capture that waits: another one takes its place then, and puts an end to
    // it.
    const Held wanted(isCaptureWanted_, [this, number = ++captures_, front = window_.inFront()] {
        return number == captures_ && front == window_.inFront();
    });
    try {
        return link_.GetDataBuffer(kByteLimit, kFrameBytes, isCaptureWanted_);
    } catch (const RuntimeFault&) {
        return false;  // the tick count is near its end; a picture is not worth the program
    }
}

void RemoteScreen::autoIncValText_Change() {
    try {
        const std::int16_t typed = toInt16(decimalValue(fields_.counter.text()));
        if (typed < 0 || typed > kHighestCounter)
            throw RuntimeFault::overflow();
        counter_ = static_cast<std::uint8_t>(typed);
    } catch (const RuntimeFault&) {
        showCounter();
        reportCounterRange();
    }
}

void RemoteScreen::CommandScreenDump_Click() {
    const bool numbered = fields_.autoIncrement.value() != 0;
    const std::string path = fields_.rootDir.text() + fields_.fileName.text() +
                             (numbered ? std::to_string(counter_) : std::string()) + ".bmp";
    const std::string problem = window_.savePicture(path);
    if (!problem.empty()) {
        link_.console().messageBox("The picture could not be saved.\r\n\r\n" + problem, Icon::critical);
        return;
    }
    if (!numbered)
        return;
    if (counter_ == kHighestCounter) {
        reportCounterRange();
        return;
    }
    ++counter_;
    showCounter();
}

void RemoteScreen::showCounter() {
    fields_.counter.setText(std::to_string(counter_));
}

void RemoteScreen::reportCounterRange() {
    link_.console().messageBox("The auto-increment number must be from 0 to 255.", Icon::critical);
}

}  // namespace quorvex
