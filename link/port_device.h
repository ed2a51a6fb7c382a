#pragma once

#include <QString>

namespace quorvex {

/// The device behind a port number, and what stands in the way of opening it.
struct PortDevice {
    QString path;     ///< links resolved; empty when there is no such device
    QString asked;    ///< where it was looked for, for the operator
    QString problem;  ///< why it cannot be opened and what to do, empty when nothing is known against it

    /// One or two lines for a hover text.
    QString description() const;
};

/// COM`number` on this machine: the link of that name in the folder $QUORVEX_PORTS if that variable is set
/// (nothing else is tried then), else in /dev/quorvex, else the n-th serial port found. "COMn" on Windows.
PortDevice findPortDevice(int number);

}  // namespace quorvex
