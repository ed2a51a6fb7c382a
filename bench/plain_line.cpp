#include "bench/plain_line.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace quorvex::bench {

namespace {
constexpr int kLimitMs = 2000;
}

PlainLine::PlainLine(const QString& devicePath)
    : descriptor_(::open(devicePath.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    termios settings{};
    if (::tcgetattr(descriptor_, &settings) != 0)
        throw std::system_error(errno, std::generic_category(), "Cannot open " + devicePath.toStdString());
    ::cfmakeraw(&settings);
    ::tcsetattr(descriptor_, TCSANOW, &settings);
}

PlainLine::~PlainLine() {
    ::close(descriptor_);
}

std::string PlainLine::exchange(const std::string& line, std::size_t count) {
    ::tcflush(descriptor_, TCIFLUSH);
    if (::write(descriptor_, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
        throw std::system_error(errno, std::generic_category(), "Cannot send");
    std::string reply;
    std::array<char, 256> bytes{};
    while (reply.size() < count) {
        pollfd watched{descriptor_, POLLIN, 0};
        if (::poll(&watched, 1, kLimitMs) != 1)
            throw std::runtime_error("No reply to " + line);
        const ssize_t got = ::read(descriptor_, bytes.data(), bytes.size());
        if (got <= 0)
            throw std::system_error(errno, std::generic_category(), "Cannot receive");
        reply.append(bytes.data(), static_cast<std::size_t>(got));
        // What stands before the start character is the rest of an earlier reply.
        reply.erase(0, reply.find_first_of("#!^"));
    }
    return reply.substr(0, count);
}

}  // namespace quorvex::bench
