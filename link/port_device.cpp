#include "link/port_device.h"

namespace quorvex {

namespace {

QString describe(const PortState& state, const QString& otherwise = {}) {
    const PortDevice& device = state.device;
    const QString where = device.path.isEmpty() ? device.asked : device.path;
    const QString& problem = state.advice.isEmpty() ? otherwise : state.advice;
    return problem.isEmpty() ? where : where + QLatin1Char('\n') + problem;
}

}  // namespace

PortState absentPort(const PortDevice& device) {
    return {device,
            PortState::Kind::absent,
            QStringLiteral("Absent: connect the adapter, or choose another port."),
            {}};
}

QString PortDevice::description(const QString& otherwise) const {
    return describe(lookAtPort(*this), otherwise);
}

std::vector<QString> describePorts(int highest, int own) {
    std::vector<QString> descriptions;
    for (const PortState& state : lookAtPorts(highest, own))
        descriptions.push_back(describe(state));
    return descriptions;
}

}  // namespace quorvex
