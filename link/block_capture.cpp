#include "link/block_capture.h"

#include <utility>

#include "link/input_wait.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {
/// As many characters as the port's own buffer holds: a unit that sends without end must not hold up the
/// window.
constexpr int kMostPassedOver = 4096;
}  // namespace

bool BlockCapture::synchronise(SerialPort& port) {
    // A character that breaks the marker is used up, an "s" too: matching starts over with the next one.
    for (int tried = 0; tried < kMostPassedOver && port.waiting() > 0; ++tried) {
        if (port.read() == 's' && port.read() == 'y' && port.read() == 'n' && port.read() == 'c')
            return true;
    }
    return false;
}

bool BlockCapture::capture(SerialPort& port, EventLoop& loop, int limitUnits, std::int32_t count,
                           std::function<bool()> isWanted) {
    count_ = 0;
    if (!synchronise(port))
        return false;  // a character that comes now is not the first of a block
    InputWait wait(port, loop, limitUnits * 1000, std::move(isWanted));
    for (auto c = port.read(); c; c = wait.next()) {
        if (count_ >= kCapacity)
            throw RuntimeFault::subscriptOutOfRange();
        bytes_[static_cast<std::size_t>(count_)] = static_cast<unsigned char>(*c);
        if (++count_ >= count)
            return true;
    }
    return false;
}

}  // namespace quorvex
