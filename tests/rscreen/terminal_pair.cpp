#include "tests/rscreen/terminal_pair.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>

namespace quorvex {

TerminalPair::TerminalPair() : unitSide_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    std::array<char, 128> name{};
    if (unitSide_ < 0 || ::grantpt(unitSide_) != 0 || ::unlockpt(unitSide_) != 0 ||
        ::ptsname_r(unitSide_, name.data(), name.size()) != 0)
        qFatal("no pseudo-terminal");
    path_ = QString::fromLocal8Bit(name.data());
    programSide_ = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings{};
    if (programSide_ < 0 || ::tcgetattr(programSide_, &settings) != 0)
        qFatal("cannot open %s", name.data());
    ::cfmakeraw(&settings);
    ::tcsetattr(programSide_, TCSANOW, &settings);
}

TerminalPair::~TerminalPair() {
    ::close(programSide_);
    ::close(unitSide_);
}

qsizetype TerminalPair::send(int unitSide, const QByteArray& bytes) {
    return bytes.isEmpty() ? 0
                           : std::max<qsizetype>(0, ::write(unitSide, bytes.constData(),
                                                            static_cast<std::size_t>(bytes.size())));
}

}  // namespace quorvex
