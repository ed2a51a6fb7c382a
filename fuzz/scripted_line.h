#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex::fuzz {

/// An open port on which a script arrives, and the clock it arrives by. A silence of minutes takes no time.
///
///     ~c   the line is silent: 100 ms for each place that c stands behind "0"; "~0" only parts bursts
///     {c   something happens while the window has its turn: onEvent
///     }    the cable is pulled
///
/// Every other character arrives: the first ones at once, those behind one of these in a turn of the window.
class ScriptedLine : public SerialPort, public EventLoop {
public:
    explicit ScriptedLine(std::string_view script, std::int32_t startTick = 0);

    /// Called with the character behind "{".
    std::function<void(char)> onEvent;

    void close() override;
    bool isOpen() const override { return isOpen_; }
    std::size_t waiting() override { return arrived_.size() - taken_; }
    void discardInput() override;
    std::optional<char> read() override;
    void write(char c) override;
    void flush() override;

    std::int32_t ticks() const override { return now_; }
    void run(std::int32_t untilTick) override;

    /// Whether nothing but characters is in the script.
    bool isUndisturbed() const;
    /// Whether nothing is left of the script.
    bool isOver() const { return at_ == script_.size(); }

private:
    void openDevice(int /*number*/) override { isOpen_ = true; }
    void demandOpen() const;
    void discardReceived();
    void passTime(std::int64_t untilTick);
    void arrive();
    void obey(char control);

    std::string script_;
    std::size_t at_ = 0;
    std::string arrived_;  ///< the first `taken_` of them have been read
    std::size_t taken_ = 0;
    std::string written_;
    std::int32_t now_;
    std::int64_t silentUntil_;
    bool isOpen_ = true;
};

}  // namespace quorvex::fuzz
