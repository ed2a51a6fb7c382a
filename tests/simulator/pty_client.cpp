#include "tests/simulator/pty_client.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

PtyClient::PtyClient(const QString& path)
    : descriptor_(::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {}

PtyClient::~PtyClient() {
    if (isOpen())
        ::close(descriptor_);
}

bool PtyClient::isRaw() const {
    termios settings{};
    return ::tcgetattr(descriptor_, &settings) == 0 && (settings.c_lflag & (ICANON | ECHO | ISIG)) == 0 &&
           (settings.c_iflag & (ICRNL | INLCR | IGNCR | IXON)) == 0 && (settings.c_oflag & OPOST) == 0;
}

bool PtyClient::lock() {
    return ::ioctl(descriptor_, TIOCEXCL) == 0;
}

bool PtyClient::isLocked() const {
    int locked = 0;
    return ::ioctl(descriptor_, TIOCGEXCL, &locked) == 0 && locked != 0;
}

int PtyClient::unread() const {
    int count = 0;
    return ::ioctl(descriptor_, FIONREAD, &count) == 0 ? count : -1;
}

void PtyClient::send(const QByteArray& bytes) {
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::write(descriptor_, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent));
        if (count <= 0)
            return;
        sent += count;
    }
}

QByteArray PtyClient::receive(int count, int limitMs) {
    QByteArray bytes;
    pollfd watched{descriptor_, POLLIN, 0};
    while (bytes.size() < count && ::poll(&watched, 1, limitMs) > 0) {
        QByteArray portion(count - bytes.size(), '\0');
        const ssize_t got = ::read(descriptor_, portion.data(), static_cast<std::size_t>(portion.size()));
        if (got <= 0)
            break;
        bytes += portion.left(got);
    }
    return bytes;
}

QByteArray PtyClient::receiveUntil(const QByteArray& end) {
    QByteArray bytes;
    while (!bytes.endsWith(end)) {
        const QByteArray next = receive(1);
        if (next.isEmpty())
            break;
        bytes += next;
    }
    return bytes;
}

QByteArray PtyClient::exchange(const QByteArray& line, int count) {
    send(line + "\r\n");
    return receive(count);
}
