#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "link/serial_port.h"
#include "simulator/line_end.h"
#include "tests/support/fake_loop.h"

namespace quorvex {

/// A simulated unit at the other end of a line on which one thing goes wrong, in virtual time.
class FaultyPort : public SerialPort {
public:
    using Tick = FakeLoop::Tick;

    /// Where a fault strikes.
    enum class Place {
        none,
        line,    ///< a line of the program, as it goes out
        reply,   ///< what the unit answers to one
        stream,  ///< what it sends by itself: a calibration record, a display frame
    };
    /// What it strikes. A lost line is a strike that does nothing.
    struct Struck {
        std::string line;       ///< the line that goes out or was answered; empty in the stream
        std::string body, end;  ///< what the unit sends, and its line end if there is one
        Tick limitMs = 0;       ///< how long the program waits for it
    };
    using Strike = std::function<void(FaultyPort&, const Struck&)>;
    struct Plan {
        Place place = Place::none;
        int first = 0;     ///< counted from 0 at each place
        bool once = true;  ///< else at all that follow, too
        Strike strike;
        std::function<Tick(int)> limitMs;  ///< of the replies, counted alike
    };

    /// Open from the start. The unit and the loop must outlive it.
    FaultyPort(sim::LineEnd& unit, FakeLoop& loop);

    void close() override;
    bool isOpen() const override { return isOpen_; }
    std::size_t waiting() override;
    void discardInput() override;
    std::optional<char> read() override;
    void write(char c) override;
    void flush() override;

    /// What goes wrong from now on; all counts begin anew.
    void plan(Plan plan);
    bool hasStruck() const { return struckAt_.has_value(); }
    /// Time from the first strike to the next line of the program, or to now where none followed.
    Tick waitAfterStrike() const;

    // What a strike may do.
    void say(const std::string& bytes, Tick afterMs = 0);
    void pull();
    /// The cable is out after that many characters more.
    void pullAfterReads(int characters) { readsLeft_ = characters; }
    /// The operator picks the port again, in the way of onPicked.
    void pickAgainIn(Tick ms);
    void onPicked(std::function<void()> handler) { onPicked_ = std::move(handler); }
    /// For that long nobody does anything; from now on, or from a moment later, which falls into a wait.
    void standStill(Tick ms) { loop_.standStill(ms); }
    void standStillSoon(Tick ms) {
        loop_.at(loop_.now() + 1, [this, ms] { loop_.standStill(ms); });
    }
    /// `pattern` over and over at once, instead of all that the unit sends; at each character read a
    /// millisecond passes.
    void jabber(const std::string& pattern, Tick lastsMs);

    const std::vector<std::string>& lines() const { return lines_; }
    int replies() const { return static_cast<int>(repliedAt_.size()); }
    /// When the unit replied, by the index of the reply.
    const std::vector<Tick>& repliedAt() const { return repliedAt_; }
    /// What the unit sent by itself, as it sent it.
    const std::vector<std::string>& streamed() const { return streamed_; }
    const std::vector<Tick>& streamedAt() const { return streamedAt_; }
    /// Whether the cable was pulled at any time since the plan was made, or the port closed before.
    bool wasLost() const { return wasLost_; }

private:
    void openDevice(int number) override;
    void demandOpen() const;
    void fetch();
    void lineSent(const std::string& line);
    bool strikesAt(Place place, int index) const;
    void strike(Struck struck, int index);

    sim::LineEnd& unit_;
    FakeLoop& loop_;
    Plan plan_;
    bool isOpen_ = true;
    bool wasLost_ = false;
    std::string written_, line_, received_, jabber_;
    std::size_t jabbered_ = 0;
    std::uint32_t jabbers_ = 0;
    std::optional<int> readsLeft_;
    std::vector<std::string> lines_, streamed_;
    std::vector<Tick> repliedAt_, streamedAt_;
    std::optional<Tick> struckAt_, nextLineAt_;
    std::function<void()> onPicked_;
};

}  // namespace quorvex
