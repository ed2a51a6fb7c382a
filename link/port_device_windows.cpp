#include <QSerialPortInfo>

#include "link/device_facts.h"
#include "link/port_device.h"
#include "link/port_trial.h"

namespace quorvex {

PortDevice portDeviceAt(const QString& path) {
    return {path, path};
}

PortDevice findPortDevice(int number) {
    return portDeviceAt(QStringLiteral("COM%1").arg(number));
}

PortState lookAtPort(const PortDevice& device) {
    // To open one of these calls the other machine up, which takes many seconds when it is out of reach.
    if (QSerialPortInfo(device.path).description().contains(QLatin1String("Bluetooth")))
        return {device, PortState::Kind::free, {}, adapterOf(device.path)};
    return tryPort(device);
}

std::vector<PortState> lookAtPorts(int highest, int own) {
    std::vector<PortState> states;
    for (int number = 1; number <= highest; ++number) {
        const PortDevice device = findPortDevice(number);
        states.push_back(number == own ? PortState{device, PortState::Kind::free, {}, adapterOf(device.path)}
                                       : lookAtPort(device));
    }
    return states;
}

}  // namespace quorvex
