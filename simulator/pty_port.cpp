#include "simulator/pty_port.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace quorvex::sim {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno) + ".");
}

std::string linkTarget(const std::string& path) {
    std::error_code none;
    return std::filesystem::read_symlink(path, none).string();
}

/// Whether a link that leads to `target` may be taken over: a terminal's, or one that leads nowhere.
bool isSpent(const std::string& path, const std::string& target) {
    std::error_code none;
    return target.starts_with("/dev/pts/") || !std::filesystem::exists(path, none);
}

}  // namespace

PtyPort::PtyPort(std::string linkPath) : linkPath_(std::move(linkPath)) {
    openTerminal();
    makeLink();
    watchUsers();
}

PtyPort::~PtyPort() {
    if (linkTarget(linkPath_) == devicePath_)
        ::unlink(linkPath_.c_str());
    for (const int descriptor : {watch_, slave_, master_}) {
        if (descriptor >= 0)
            ::close(descriptor);
    }
}

void PtyPort::openTerminal() {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
        fail("No pseudo-terminal can be made");
    std::array<char, 128> name{};
    if (::ptsname_r(master_, name.data(), name.size()) != 0)
        fail("The pseudo-terminal has no name");
    devicePath_ = name.data();
    slave_ = ::open(devicePath_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (slave_ < 0 || ::tcgetattr(slave_, &settings) != 0)
        fail("Cannot open " + devicePath_);
    ::cfmakeraw(&settings);
    if (::tcsetattr(slave_, TCSANOW, &settings) != 0)
        fail("Cannot set up " + devicePath_);
}

void PtyPort::makeLink() {
    struct stat there {};
    if (::lstat(linkPath_.c_str(), &there) == 0) {
        if (!S_ISLNK(there.st_mode))
            throw std::runtime_error(linkPath_ + " is already there and is no link; it stays as it is.");
        if (!isSpent(linkPath_, linkTarget(linkPath_)))
            throw std::runtime_error(linkPath_ + " is a link to something else; it stays as it is.");
    }
    // Renamed into place, so that there is no moment without a link.
    const std::string fresh = linkPath_ + ".new" + std::to_string(::getpid());
    if (::symlink(devicePath_.c_str(), fresh.c_str()) != 0)
        fail("Cannot make the link " + linkPath_);
    if (::rename(fresh.c_str(), linkPath_.c_str()) != 0) {
        const int reason = errno;
        ::unlink(fresh.c_str());
        errno = reason;
        fail("Cannot make the link " + linkPath_);
    }
}

void PtyPort::watchUsers() {
    watch_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (watch_ >= 0 && ::inotify_add_watch(watch_, devicePath_.c_str(), IN_OPEN | IN_CLOSE) < 0) {
        ::close(watch_);
        watch_ = -1;
    }
}

std::string PtyPort::read() {
    std::array<char, 512> bytes{};
    const ssize_t count = ::read(master_, bytes.data(), bytes.size());
    return count > 0 ? std::string(bytes.data(), static_cast<std::size_t>(count)) : std::string();
}

bool PtyPort::write(std::string_view bytes) {
    return ::write(master_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

bool PtyPort::handleUsers() {
    std::array<char, 4096> buffer{};
    bool opened = false;
    bool closed = false;
    ssize_t count = 0;
    while ((count = ::read(watch_, buffer.data(), buffer.size())) > 0) {
        for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            at += sizeof event + event.len;
            opened = opened || (event.mask & IN_OPEN) != 0;
            closed = closed || (event.mask & IN_CLOSE) != 0;
        }
    }
    // A serial port keeps nothing for the next program: neither bytes that came while it was closed, nor
    // the lock of a program that was killed. This one would, being open here as well.
    ::tcflush(slave_, TCIFLUSH);
    if (closed)
        ::ioctl(slave_, TIOCNXCL);
    return opened;
}

}  // namespace quorvex::sim
