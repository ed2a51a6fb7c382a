#include "link/port_trial.h"

#include <QSerialPort>

#include "link/device_facts.h"

namespace quorvex {

PortState tryPort(const PortDevice& device) {
    using Kind = PortState::Kind;
    QSerialPort port(device.path);
    const bool isOpened = port.open(QIODevice::ReadWrite);
    const QString adapter = adapterOf(device.path);
    if (isOpened)
        return {device, Kind::free, {}, adapter};
    switch (port.error()) {
        case QSerialPort::DeviceNotFoundError:
            return absentPort(device);
        case QSerialPort::PermissionError:  // the toolkit has one word for both
            return {
                device, Kind::inUse,
                QStringLiteral("In use by another program, or no rights: close that program first, or ask "
                               "for the right to open the port."),
                adapter};
        default:
            return {device, Kind::absent,
                    QStringLiteral("Not working (%1): connect the adapter anew, or choose another port.")
                        .arg(port.errorString()),
                    adapter};
    }
}

}  // namespace quorvex
