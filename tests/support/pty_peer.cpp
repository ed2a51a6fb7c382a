#include "tests/support/pty_peer.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <chrono>

namespace quorvex {

namespace {

constexpr int kTurnMs = 2;  ///< the longest time until a pulled cable or a due record is noticed

std::int64_t nowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace

PtyPeer::PtyPeer(sim::Unit& unit) : unit_(&unit) {
    open();
}

PtyPeer::PtyPeer(Script script) : script_(std::move(script)) {
    open();
}

PtyPeer::~PtyPeer() {
    ends_ = true;
    thread_.join();
}

void PtyPeer::open() {
    std::array<char, 128> name{};
    if (::openpty(&master_, &slave_, name.data(), nullptr, nullptr) != 0)
        qFatal("no pseudo-terminal");
    // A unit does not wait for a program that does not read.
    ::fcntl(master_, F_SETFL, O_NONBLOCK);
    termios settings{};
    ::tcgetattr(slave_, &settings);
    ::cfmakeraw(&settings);
    ::tcsetattr(slave_, TCSANOW, &settings);
    QFile::link(QString::fromLocal8Bit(name.data()), folder_.filePath(QStringLiteral("COM1")));
    qputenv("QUORVEX_PORTS", folder_.path().toLocal8Bit());
    thread_ = std::thread([this] { work(); });
}

void PtyPeer::work() {
    while (!ends_ && !pulled_) {
        pollfd waits{master_, POLLIN, 0};
        if (::poll(&waits, 1, kTurnMs) > 0 && (waits.revents & POLLIN) != 0) {
            std::array<char, 4096> bytes{};
            const auto count = ::read(master_, bytes.data(), bytes.size());
            if (count > 0)
                take(std::string(bytes.data(), static_cast<std::size_t>(count)));
        }
        const std::string out = answers();
        if (!out.empty())
            static_cast<void>(!::write(master_, out.data(), out.size()));
    }
    ::close(slave_);
    ::close(master_);
}

void PtyPeer::take(const std::string& bytes) {
    const std::lock_guard lock(mutex_);
    for (const char c : bytes) {
        line_ += c;
        if (!line_.ends_with("\r\n"))
            continue;
        lines_ << QString::fromLatin1(line_.data(), static_cast<qsizetype>(line_.size() - 2));
        line_.clear();
        if (script_)
            pending_ += script_(lines_.last());
    }
    if (unit_)
        unit_->receive(bytes, nowMs());
}

std::string PtyPeer::answers() {
    const std::lock_guard lock(mutex_);
    if (unit_)
        pending_ += unit_->take(nowMs());
    return std::exchange(pending_, {});
}

QStringList PtyPeer::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

bool PtyPeer::ask(const std::function<bool(sim::Unit&)>& look) const {
    const std::lock_guard lock(mutex_);
    return look(*unit_);
}

}  // namespace quorvex
