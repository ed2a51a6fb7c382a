#pragma once

#include <QString>
#include <map>
#include <optional>

namespace quorvex {

// What the operating system knows about serial devices and the toolkit does not tell.

/// Whether the other end of an open device is gone (cable pulled, peer closed). `handle` is the
/// descriptor of an open port. Nothing where the system has no such question.
std::optional<bool> isHungUp(qintptr handle);

/// Waits until what an open device was given has left it, or the other end is gone; a device that takes
/// nothing is left to itself after a second.
void letLeave(qintptr handle);

/// Whether `name` ("ttyS3") is the device node of a UART that this machine does not have.
bool isAbsentUart(const QString& name);

/// Whether what is at `path` is known to be no serial port: a file, a folder, a device of another kind.
bool isNoSerialPort(const QString& path);

/// The adapter that a serial device belongs to: "Maker Product, serial number 123", what of it is known;
/// empty where it is not on one. `system` is where the operating system tells of its devices.
QString adapterOf(const QString& path, const QString& system = QStringLiteral("/sys"));

/// The live process that keeps the device by a lock file of a customary kind (the process number alone, or
/// with program and user in one line or in lines of their own), as its number; empty when there is none.
/// `clearsDead`: removes the lock of a process that is gone, or whose number another one has that does not
/// have the device open.
QString lockHolder(const QString& path, bool clearsDead = false);

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
