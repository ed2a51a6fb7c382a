#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>

#include "link/serial_port.h"
#include "simulator/unit.h"
#include "tests/support/journal.h"

namespace quorvex {

/// A clock that only moves when a test, or a wait of the program, moves it.
struct Clock {
    std::int64_t nowMs = 0;
};

/// The serial port in memory, with a simulated unit at the other end or with replies that a test writes
/// down. Replies take a few milliseconds, so that every exchange waits at least once. Opening and closing
/// are noted in the journal: "open 3", "cannot open 3", "close".
class Wire : public SerialPort {
public:
    static constexpr std::int64_t kTransitMs = 5;

    Wire(const Clock& clock, Journal& journal) : clock_(clock), journal_(journal) {}

    /// The unit must outlive the wire; null for none.
    void plugIn(sim::Unit* unit) { unit_ = unit; }
    /// The unit that the program meets when it opens COM`number` from now on.
    void plugIn(int number, sim::Unit* unit) { units_[number] = unit; }
    /// What comes back for `line` each time, byte by byte as written; the unit does not see that line.
    void answer(const QString& line, const QByteArray& reply) { written_[line] = reply; }
    /// `bytes` come every so many milliseconds from now on, besides what the unit sends; none: no more.
    void babble(const QByteArray& bytes, std::int64_t everyMs);
    /// COM`number` cannot be opened from now on, or can again.
    void refuse(int number, bool refused = true);
    /// The device goes away, as when the cable is pulled.
    void pullCable() { open_ = false; }
    /// Called with each complete line before it is answered.
    void onLine(std::function<void(const QString&)> handler) { onLine_ = std::move(handler); }

    /// The lines sent, without their line ends. A line that does not end with exactly one carriage return
    /// and line feed keeps what it had, so that it compares with nothing.
    const QStringList& lines() const { return lines_; }
    void forgetLines() { lines_.clear(); }
    /// When something next arrives if nobody sends; nothing if it never does.
    std::optional<std::int64_t> nextEventMs() const;

    void close() override;
    bool isOpen() const override { return open_; }
    std::size_t waiting() override;
    void discardInput() override;
    std::optional<char> read() override;
    void write(char c) override;
    void flush() override {}

private:
    void openDevice(int number) override;

    struct Piece {
        std::int64_t dueMs;
        QByteArray bytes;
    };

    void completeLine();
    void collect();

    const Clock& clock_;
    Journal& journal_;
    sim::Unit* unit_ = nullptr;
    std::map<int, sim::Unit*> units_;
    std::map<QString, QByteArray> written_;
    std::set<int> refused_;
    std::function<void(const QString&)> onLine_;
    QStringList lines_;
    QByteArray line_;
    std::deque<Piece> inTheAir_;
    std::deque<char> arrived_;
    QByteArray babble_;
    std::int64_t babbleEveryMs_ = 0;
    std::int64_t nextBabbleMs_ = 0;
    bool open_ = false;
};

}  // namespace quorvex
