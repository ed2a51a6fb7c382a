#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "simulator/unit.h"

namespace quorvex {

/// The other end of a real pseudo-terminal, on a thread of its own: a simulated unit, or a script that
/// answers line by line. The program finds it as COM1 as long as it lives.
class PtyPeer {
public:
    /// What is written at once in answer to a line, line ends included.
    using Script = std::function<std::string(const QString& line)>;

    explicit PtyPeer(sim::Unit& unit);
    explicit PtyPeer(Script script);
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    /// The device goes away, as when a cable is pulled. May be called on any thread.
    void pullCable() { pulled_ = true; }
    bool isPulled() const { return pulled_; }
    /// The lines that have come, without their line ends.
    QStringList lines() const;
    /// What `look` finds on the unit, while it stands still.
    bool ask(const std::function<bool(sim::Unit&)>& look) const;

private:
    void open();
    void work();
    void take(const std::string& bytes);
    std::string answers();

    QTemporaryDir folder_;
    sim::Unit* unit_ = nullptr;
    Script script_;
    int master_ = -1;
    int slave_ = -1;
    mutable std::mutex mutex_;
    std::string line_, pending_;
    QStringList lines_;
    std::atomic<bool> pulled_ = false;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

}  // namespace quorvex
