#include <QFile>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <optional>
#include <string>

#include "link/device_facts.h"
#include "link/device_facts_linux.h"
#include "link/port_device.h"
#include "link/serial_port_order.h"

namespace quorvex {

namespace {

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
        constexpr char kFolder[] = "QUORVEX_PORTS";
        if (const QString folder = qEnvironmentVariable(kFolder); !folder.isEmpty())
            return portDeviceAt(folder + QLatin1Char('/') + name);
        const QString system = QStringLiteral("/dev/quorvex/") + name;
        if (QFileInfo::exists(system))
            return portDeviceAt(system);
        if (!machine_)
            machine_ = portsOfMachine();
        return nthOf(*machine_, number);
    }

private:
    std::optional<std::vector<std::string>> machine_;
};

PortState stateOf(const PortDevice& device, DeviceUsers& users) {
    using Kind = PortState::Kind;
    if (device.path.isEmpty())
        return absentPort(device);
    if (isNoSerialPort(device.path))
        return {device, Kind::noSerialPort, QStringLiteral("No serial port: choose another one."), {}};
    const QString adapter = adapterOf(device.path);
    const QFileInfo info(device.path);
    if (!info.isReadable() || !info.isWritable())
        return {device, Kind::noRights,
                QStringLiteral("No rights: join the group \"%1\" and log in again.").arg(info.group()),
                adapter};
    const QString user = users.otherUserOf(device.path);
    if (!user.isEmpty())
        return {device, Kind::inUse, QStringLiteral("In use by %1: close that program first.").arg(user),
                adapter};
    return {device, Kind::free, {}, adapter};
}

}  // namespace

PortDevice portDeviceAt(const QString& path) {
    PortDevice device;
    device.asked = path;
    // The lock that guards a port goes by the spelling of its path.
    device.path = QFileInfo(path).canonicalFilePath();
    return device;
}

PortDevice findPortDevice(int number) {
    return PortFinder().find(number);
}

PortState lookAtPort(const PortDevice& device) {
    DeviceUsers users;
    return stateOf(device, users);
}

std::vector<PortState> lookAtPorts(int highest, int /*own*/) {
    PortFinder finder;
    DeviceUsers users;
    std::vector<PortState> states;
    for (int number = 1; number <= highest; ++number)
        states.push_back(stateOf(finder.find(number), users));
    return states;
}

}  // namespace quorvex
