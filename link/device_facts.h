#pragma once

#include <QString>
#include <optional>

class QSerialPort;

namespace quorvex {

// What the operating system knows about serial devices. Each system has a half of its own:
// device_facts_linux.cpp goes by devices and processes, device_facts_windows.cpp by what the toolkit tells.

/// Whether the other end of an open port is gone (cable pulled, peer closed). Nothing where the system has no
/// such question.
std::optional<bool> isHungUp(const QSerialPort& port);

/// Waits until what an open port was given has left it, or the other end is gone; a device that takes nothing
/// is left to itself after a second.
void letLeave(QSerialPort& port);

/// The adapter that a serial device belongs to: "Maker Product, serial number 123", what of it is known;
/// empty where it is not on one.
QString adapterOf(const QString& path);
QString adapterText(const QString& maker, const QString& product, const QString& serial);

/// The live process that keeps the device by a lock file of a customary kind (the process number alone, or
/// with program and user in one line or in lines of their own), as its number; empty when there is none.
/// `clearsDead`: removes the lock of a process that is gone, or whose number another one has that does not
/// have the device open.
QString lockHolder(const QString& path, bool clearsDead = false);

}  // namespace quorvex
