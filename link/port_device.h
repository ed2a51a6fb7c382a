#pragma once

#include <QString>

namespace quorvex {

/// The device behind a port number.
struct PortDevice {
    QString path;   ///< links resolved; empty when there is no such device
    QString asked;  ///< where it was looked for, for the operator

    /// One or two lines for a hover text: which device it is, and when something stands in the way of opening
    /// it what that is and what to do. Looks through the machine's processes, so it takes its time.
    QString description() const;
};

/// COM`number` on this machine: the link of that name in the folder $QUORVEX_PORTS if that variable is set
/// (nothing else is tried then), else in /dev/quorvex, else the n-th serial port found. "COMn" on Windows.
PortDevice findPortDevice(int number);

}  // namespace quorvex
