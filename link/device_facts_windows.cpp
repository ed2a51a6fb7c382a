#include <QDeadlineTimer>
#include <QSerialPort>
#include <QSerialPortInfo>

#include "link/device_facts.h"

namespace quorvex {

std::optional<bool> isHungUp(const QSerialPort& /*port*/) {
    return std::nullopt;
}

void letLeave(QSerialPort& port) {
    constexpr int kMostMs = 1000;
    const QDeadlineTimer deadline(kMostMs);
    // Closing cancels what is still being written.
    while (port.bytesToWrite() > 0 && port.waitForBytesWritten(static_cast<int>(deadline.remainingTime()))) {
    }
}

QString adapterOf(const QString& path) {
    const QSerialPortInfo info(path);
    // Only an adapter has numbers of its own; the maker of a built-in port is "(Standard port types)".
    const QString maker = info.hasVendorIdentifier() ? info.manufacturer() : QString();
    return adapterText(maker, info.description(), info.serialNumber());
}

QString lockHolder(const QString& /*path*/, bool /*clearsDead*/) {
    return {};  // the system itself keeps a port for one program
}

}  // namespace quorvex
