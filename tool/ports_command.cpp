#include "tool/ports_command.h"

#include <QJsonArray>

#include "link/port_choice.h"

namespace quorvex::tool {

namespace {

QString nameOf(int number) {
    return QStringLiteral("COM%1").arg(number);
}

QString wordFor(PortState::Kind kind) {
    switch (kind) {
        case PortState::Kind::free:
            return QStringLiteral("free");
        case PortState::Kind::absent:
            return QStringLiteral("absent");
        case PortState::Kind::noSerialPort:
            return QStringLiteral("no port");
        case PortState::Kind::noRights:
            return QStringLiteral("no rights");
        case PortState::Kind::inUse:
            break;
    }
    return QStringLiteral("in use");
}

QString textOf(int number, const PortState& state) {
    constexpr int kNameWidth = 6;
    constexpr int kStateWidth = 10;
    const QString where = state.device.path.isEmpty() ? state.device.asked : state.device.path;
    QString text = QStringLiteral("%1%2%3")
                       .arg(nameOf(number), -kNameWidth)
                       .arg(wordFor(state.kind), -kStateWidth)
                       .arg(where);
    if (!state.adapter.isEmpty())
        text += QStringLiteral(" (%1)").arg(state.adapter);
    text += QLatin1Char('\n');
    if (!state.advice.isEmpty())
        text += QString(kNameWidth, QLatin1Char(' ')) + state.advice + QLatin1Char('\n');
    return text;
}

QJsonObject objectOf(int number, const PortState& state) {
    const auto orNull = [](const QString& text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); };
    return {{QStringLiteral("port"), nameOf(number)},
            {QStringLiteral("device"), orNull(state.device.path)},
            {QStringLiteral("adapter"), orNull(state.adapter)},
            {QStringLiteral("state"), wordFor(state.kind)},
            {QStringLiteral("advice"), orNull(state.advice)}};
}

}  // namespace

Result listPorts(const Request& /*request*/) {
    Result result;
    QJsonArray ports;
    int number = 0;
    for (const PortState& state : lookAtPorts(PortChoice::kPortsOffered)) {
        result.text += textOf(++number, state);
        ports.append(objectOf(number, state));
    }
    result.object.insert(QStringLiteral("ports"), ports);
    return result;
}

NamedPort portNumbered(int number) {
    return {nameOf(number), number, findPortDevice(number)};
}

NamedPort portNamed(const QString& given) {
    for (int number = 1; number <= PortChoice::kPortsOffered; ++number) {
        if (given.compare(nameOf(number), Qt::CaseInsensitive) == 0)
            return portNumbered(number);
    }
    if (!given.contains(QLatin1Char('/')))
        throw Failure(
            Status::wrongUse,
            QStringLiteral("--port: \"%1\" is neither COM1 to COM%2 nor a device such as /dev/ttyUSB0.")
                .arg(given)
                .arg(PortChoice::kPortsOffered));
    return {given, 0, portDeviceAt(given)};
}

}  // namespace quorvex::tool
