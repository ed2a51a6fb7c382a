#include "link/port_device.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>

#include "link/device_facts.h"
#include "link/serial_port_order.h"

namespace quorvex {

namespace {

PortDevice atLink(const QString& link) {
    PortDevice device;
    device.asked = link;
    // The lock that guards a port goes by the spelling of its path.
    device.path = QFileInfo(link).canonicalFilePath();
    return device;
}

PortDevice nthOnMachine(int number) {
    std::vector<std::string> names;
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports) {
        if (!isAbsentUart(port.portName()))
            names.push_back(port.portName().toStdString());
    }
    names = inPortOrder(std::move(names));
    PortDevice device;
    device.asked = QStringLiteral("serial port %1 of this machine").arg(number);
    if (number >= 1 && number <= static_cast<int>(names.size()))
        device.path =
            QStringLiteral("/dev/") + QString::fromStdString(names[static_cast<std::size_t>(number - 1)]);
    return device;
}

QString problemOf(const PortDevice& device) {
    if (device.path.isEmpty())
        return QStringLiteral("Absent: connect the adapter, or choose another port.");
#ifndef Q_OS_WIN
    const QFileInfo info(device.path);
    if (!info.isReadable() || !info.isWritable())
        return QStringLiteral("No rights: join the group \"%1\" and log in again.").arg(info.group());
    const QString user = otherUserOf(device.path);
    if (!user.isEmpty())
        return QStringLiteral("In use by %1: close that program first.").arg(user);
#endif
    return {};
}

}  // namespace

QString PortDevice::description() const {
    const QString where = path.isEmpty() ? asked : path;
    const QString problem = problemOf(*this);
    return problem.isEmpty() ? where : where + QLatin1Char('\n') + problem;
}

PortDevice findPortDevice(int number) {
    const QString name = QStringLiteral("COM%1").arg(number);
#ifdef Q_OS_WIN
    return {name, name};
#else
    constexpr char kFolder[] = "QUORVEX_PORTS";
    if (qEnvironmentVariableIsSet(kFolder))
        return atLink(qEnvironmentVariable(kFolder) + QLatin1Char('/') + name);
    const QString system = QStringLiteral("/dev/quorvex/") + name;
    return QFileInfo::exists(system) ? atLink(system) : nthOnMachine(number);
#endif
}

}  // namespace quorvex
