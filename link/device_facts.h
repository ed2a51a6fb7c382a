#pragma once

#include <QString>

namespace quorvex {

// What the operating system knows about serial devices and the toolkit does not tell.

/// Whether the other end of an open device is gone (cable pulled, peer closed). `handle` is the
/// descriptor of an open port. Always false where the system has no such question.
bool isHungUp(qintptr handle);

/// Whether an open device that has reported an error is still there all the same. Always false where the
/// system has no such question.
bool isThere(qintptr handle);

/// Whether `name` ("ttyS3") is the device node of a UART that this machine does not have.
bool isAbsentUart(const QString& name);

/// The other process that has the device open, as "name (process id)"; empty when none is known. Processes
/// of other users may stay unseen.
QString otherUserOf(const QString& path);

}  // namespace quorvex
