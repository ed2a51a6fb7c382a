#pragma once

#include <QString>
#include <vector>

namespace quorvex {

// Each system finds and looks at ports in a way of its own: port_device_linux.cpp and
// port_device_windows.cpp.

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

/// The state of a device that is not there.
PortState absentPort(const PortDevice& device);

/// The device at a path, such as "/dev/ttyUSB0"; on Windows by its name.
PortDevice portDeviceAt(const QString& path);
/// COM`number` on this machine: the link of that name in the folder $QUORVEX_PORTS if that variable is set
/// (nothing else is tried then), else in /dev/quorvex, else the n-th serial port found. "COMn" on Windows.
PortDevice findPortDevice(int number);
PortState lookAtPort(const PortDevice& device);
/// COM1 to COM`highest`, in order. Looks through ports and processes once for all of them. `own`: the number
/// of the port that this program has open, 0 for none; it counts as free.
std::vector<PortState> lookAtPorts(int highest, int own = 0);
/// Their descriptions.
std::vector<QString> describePorts(int highest, int own = 0);

}  // namespace quorvex
