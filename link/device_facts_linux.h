#pragma once

#include <QString>
#include <map>
#include <optional>

namespace quorvex {

// What Linux alone tells of serial devices.

/// As the functions of these names for a port; `descriptor` is that of an open device.
bool isHungUp(int descriptor);
void letLeave(int descriptor);

/// Whether `name` ("ttyS3") is the device node of a UART that this machine does not have.
bool isAbsentUart(const QString& name);

/// Whether what is at `path` is known to be no serial port: a file, a folder, a device of another kind.
bool isNoSerialPort(const QString& path);

/// The adapter that a device belongs to. `system` is where the operating system tells of its devices.
QString adapterOf(const QString& path, const QString& system);

/// Who uses devices. Looks through the processes of the machine at most once, when that is first needed.
class DeviceUsers {
public:
    /// The other process that keeps the device for itself, as "name (process id)"; empty when none is known.
    /// Processes of other users may stay unseen.
    QString otherUserOf(const QString& path);

private:
    std::optional<std::map<QString, QString>> openFiles_;  ///< path to process id
};

}  // namespace quorvex
