#pragma once

#include <QStringList>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "link/serial_port.h"
#include "tests/support/fake_loop.h"
#include "tests/support/journal.h"

namespace quorvex {

/// What a unit says to one line.
struct Reply {
    std::string bytes;           ///< as they come, line end included; empty for silence
    FakeLoop::Tick afterMs = 0;  ///< until the first of them; with 0 they are there at once
    FakeLoop::Tick gapMs = 0;    ///< between one and the next; with 0 they come together
};

/// A serial port whose other end is a script. What the program writes is on the wire, and is answered, only
/// after flush(); what arrives later than now arrives inside the loop's run().
class FakePort : public SerialPort {
public:
    /// A line that the program sent, without its line end, and when it was on the wire.
    struct Sent {
        FakeLoop::Tick tick;
        std::string line;
    };

    /// Closed at first. Opening, closing ("open COM3", "open COM3 failed", "close") and the lines sent
    /// ("> # 0139") are noted.
    FakePort(FakeLoop& loop, Journal& journal, bool open = false)
        : loop_(loop), journal_(journal), isOpen_(open) {}

    void close() override;
    bool isOpen() const override { return isOpen_; }
    std::size_t waiting() override;
    void discardInput() override;
    std::optional<char> read() override;
    std::size_t room() override { return room_; }
    void write(char c) override;
    void flush() override;

    /// Open without a note, as if since long ago.
    void holdOpen() { isOpen_ = true; }
    /// Makes open() of this number fail.
    void refuse(int number) { refused_.insert(number); }

    /// Puts characters into the receive buffer, now or at a tick.
    void receive(const std::string& bytes);
    void receiveAt(FakeLoop::Tick tick, const std::string& bytes);
    /// Answers `line` by `replies`, one each time that it is sent; the last one also every further time.
    void answer(const std::string& line, std::vector<Reply> replies);
    void answer(const std::string& line, const std::string& bytes) { answer(line, {Reply{bytes}}); }
    /// Called with each line as it is sent, before it is answered.
    void onLine(std::function<void(const std::string&)> handler) { onLine_ = std::move(handler); }
    /// A sender that never stops: `pattern` over and over, always one more character waiting. A millisecond
    /// passes for every `readsPerMs` characters read. Ends by itself after a million, so that a test ends.
    void flood(const std::string& pattern, int readsPerMs);
    void endFlood() { flood_.clear(); }
    bool floodOutlasted() const { return floodOutlasted_; }

    /// The device goes away, at once or after some more characters written or read.
    void unplug();
    void unplugAfterWrites(int characters) { writesLeft_ = characters; }
    void unplugAfterReads(int characters) { readsLeft_ = characters; }
    /// Writing, flushing or reading raises a port fault from now on.
    void failWritesAfter(int characters) { writesBeforeFault_ = characters; }
    void failFlush() { flushFails_ = true; }
    void failReads() { readsFail_ = true; }
    /// The unit takes nothing, so that only this much of the transmit buffer is free.
    void leaveRoom(std::size_t characters) { room_ = characters; }

    const std::vector<Sent>& sent() const { return sent_; }
    QStringList sentLines() const;
    /// Every byte that was on the wire.
    const std::string& sentBytes() const { return sentBytes_; }
    /// What was called, in order: "discard", "write #", "write \r", "flush".
    const QStringList& calls() const { return calls_; }
    /// What has arrived and not been read.
    const std::string& unread() const { return received_; }
    int readCount() const { return readCount_; }

private:
    void openDevice(int number) override;
    void demandOpen() const;
    void lineSent(const std::string& line);
    char nextOfFlood();

    FakeLoop& loop_;
    Journal& journal_;
    bool isOpen_;
    std::set<int> refused_;
    std::string received_, written_, sentBytes_, line_;
    std::map<std::string, std::deque<Reply>> answers_;
    std::function<void(const std::string&)> onLine_;
    std::vector<Sent> sent_;
    QStringList calls_;
    std::string flood_;
    int readsPerMs_ = 1;
    bool floodOutlasted_ = false;
    std::optional<int> writesLeft_, readsLeft_, writesBeforeFault_;
    bool flushFails_ = false;
    bool readsFail_ = false;
    int readCount_ = 0;
    std::size_t room_ = kTransmitBuffer;
    int floodCount_ = 0;
};

}  // namespace quorvex
