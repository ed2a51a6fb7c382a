#pragma once

#include <QString>
#include <vector>

namespace quorvex {

/// The device behind a port number.
struct PortDevice {
    QString path;   ///< links resolved; empty when there is no such device
    QString asked;  ///< where it was looked for, for the operator

    /// One or two lines for a hover text: which device it is, and when something stands in the way of opening
    /// it what that is and what to do, or `otherwise` when nothing is known to. May look through the
    /// machine's processes, so it takes its time.
    QString description(const QString& otherwise = {}) const;
};

/// What a look at a port finds.
struct PortState {
    enum class Kind { free, absent, noSerialPort, noRights, inUse };

    PortDevice device;
    Kind kind = Kind::free;
    QString advice;   ///< what stands in the way of opening it and what to do; empty for a free one
    QString adapter;  ///< maker, product and serial number as the system knows them; may be empty
};

/// The device at a path, such as "/dev/ttyUSB0".
PortDevice portDeviceAt(const QString& path);
/// COM`number` on this machine: the link of that name in the folder $QUORVEX_PORTS if that variable is set
/// (nothing else is tried then), else in /dev/quorvex, else the n-th serial port found. "COMn" on Windows.
PortDevice findPortDevice(int number);
/// COM1 to COM`highest`, in order. Looks through ports and processes once for all of them.
std::vector<PortState> lookAtPorts(int highest);
/// Their descriptions.
std::vector<QString> describePorts(int highest);

}  // namespace quorvex
