#include "tests/support/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QFile>
#include <array>
#include <cerrno>

namespace quorvex {

PseudoTerminal::PseudoTerminal() : far_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
    if (::grantpt(far_) != 0 || ::unlockpt(far_) != 0)
        qFatal("no pseudo-terminal");
    path_ = QString::fromLocal8Bit(::ptsname(far_));
    near_ = ::open(path_.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios raw{};
    ::tcgetattr(near_, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(near_, TCSANOW, &raw);
}

PseudoTerminal::~PseudoTerminal() {
    hangUp();
}

bool PseudoTerminal::linkAs(const QString& link) const {
    QFile::remove(link);
    return QFile::link(path_, link);
}

bool PseudoTerminal::sendSome(QByteArray& bytes, int limitMs) const {
    pollfd room{far_, POLLOUT, 0};
    if (::poll(&room, 1, limitMs) <= 0)
        return false;
    const ssize_t count = ::write(far_, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (count > 0)
        bytes.remove(0, count);
    return count > 0 || errno == EAGAIN;
}

void PseudoTerminal::send(const QByteArray& bytes) const {
    constexpr int kLimitMs = 5000;
    QByteArray left = bytes;
    while (!left.isEmpty() && sendSome(left, kLimitMs)) {
    }
}

void PseudoTerminal::flood(const std::atomic<bool>& stop) const {
    constexpr int kLookAgainMs = 20;
    while (!stop) {
        QByteArray bytes(64, 'x');
        sendSome(bytes, kLookAgainMs);
    }
}

QByteArray PseudoTerminal::arrived() const {
    QByteArray bytes;
    pollfd watched{far_, POLLIN, 0};
    while (::poll(&watched, 1, 0) > 0 && (watched.revents & POLLIN) != 0) {
        std::array<char, 256> buffer{};
        const ssize_t count = ::read(far_, buffer.data(), buffer.size());
        if (count <= 0)
            break;
        bytes.append(buffer.data(), static_cast<qsizetype>(count));
    }
    return bytes;
}

void PseudoTerminal::hangUp() {
    for (int* end : {&near_, &far_}) {
        if (*end >= 0)
            ::close(*end);
        *end = -1;
    }
}

}  // namespace quorvex
