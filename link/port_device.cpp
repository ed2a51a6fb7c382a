#include "link/port_device.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <optional>
#include <string>

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

/// The serial ports of the machine in their order.
std::vector<std::string> portsOfMachine() {
    std::vector<std::string> names;
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& port : ports) {
        if (!isAbsentUart(port.portName()))
            names.push_back(port.portName().toStdString());
    }
    return inPortOrder(std::move(names));
}

PortDevice nthOf(const std::vector<std::string>& names, int number) {
    PortDevice device;
    device.asked = QStringLiteral("serial port %1 of this machine").arg(number);
    if (number >= 1 && number <= static_cast<int>(names.size()))
        device.path =
            QStringLiteral("/dev/") + QString::fromStdString(names[static_cast<std::size_t>(number - 1)]);
    return device;
}

/// Finds the devices of port numbers; looks through the machine at most once.
class PortFinder {
public:
    PortDevice find(int number) {
        const QString name = QStringLiteral("COM%1").arg(number);
#ifdef Q_OS_WIN
        return {name, name};
#else
        constexpr char kFolder[] = "QUORVEX_PORTS";
        if (qEnvironmentVariableIsSet(kFolder))
            return atLink(qEnvironmentVariable(kFolder) + QLatin1Char('/') + name);
        const QString system = QStringLiteral("/dev/quorvex/") + name;
        if (QFileInfo::exists(system))
            return atLink(system);
        if (!machine_)
            machine_ = portsOfMachine();
        return nthOf(*machine_, number);
#endif
    }

private:
    std::optional<std::vector<std::string>> machine_;
};

QString problemOf(const PortDevice& device, [[maybe_unused]] DeviceUsers& users) {
    if (device.path.isEmpty())
        return QStringLiteral("Absent: connect the adapter, or choose another port.");
#ifndef Q_OS_WIN
    const QFileInfo info(device.path);
    if (!info.isReadable() || !info.isWritable())
        return QStringLiteral("No rights: join the group \"%1\" and log in again.").arg(info.group());
    const QString user = users.otherUserOf(device.path);
    if (!user.isEmpty())
        return QStringLiteral("In use by %1: close that program first.").arg(user);
#endif
    return {};
}

QString describe(const PortDevice& device, DeviceUsers& users, const QString& otherwise) {
    const QString where = device.path.isEmpty() ? device.asked : device.path;
    const QString known = problemOf(device, users);
    const QString& problem = known.isEmpty() ? otherwise : known;
    return problem.isEmpty() ? where : where + QLatin1Char('\n') + problem;
}

}  // namespace

QString PortDevice::description(const QString& otherwise) const {
    DeviceUsers users;
    return describe(*this, users, otherwise);
}

PortDevice findPortDevice(int number) {
    return PortFinder().find(number);
}

std::vector<QString> describePorts(int highest) {
    PortFinder finder;
    DeviceUsers users;
    std::vector<QString> descriptions;
    for (int number = 1; number <= highest; ++number)
        descriptions.push_back(describe(finder.find(number), users, {}));
    return descriptions;
}

}  // namespace quorvex
