#include "bench/pseudo_terminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace quorvex::bench {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

PseudoTerminal::PseudoTerminal() {
    std::array<char, 128> name{};
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0 ||
        ::ptsname_r(master_, name.data(), name.size()) != 0)
        fail("No pseudo-terminal can be made");
    devicePath_ = name.data();
    slave_ = openRaw(devicePath_);
}

PseudoTerminal::~PseudoTerminal() {
    ::close(slave_);
    ::close(master_);
}

int openRaw(const std::string& devicePath) {
    const int descriptor = ::open(devicePath.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (descriptor < 0 || ::tcgetattr(descriptor, &settings) != 0)
        fail("Cannot open " + devicePath);
    ::cfmakeraw(&settings);
    ::cfsetspeed(&settings, B19200);
    if (::tcsetattr(descriptor, TCSANOW, &settings) != 0)
        fail("Cannot set up " + devicePath);
    return descriptor;
}

}  // namespace quorvex::bench
