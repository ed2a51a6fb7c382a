#include "link/qt_serial_port.h"

#include <algorithm>
#include <utility>

#include "link/device_facts.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {
constexpr int kReceiveBuffer = 4096;
constexpr int kCannotOpen = 8005;
}  // namespace

QtSerialPort::QtSerialPort(std::function<PortDevice(int)> find) : find_(std::move(find)) {
    port_.setObjectName(QStringLiteral("MSComm1"));
    port_.setBaudRate(QSerialPort::Baud19200);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.setReadBufferSize(kReceiveBuffer);
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError error) { failed(error); });
}

QtSerialPort::~QtSerialPort() {
    port_.disconnect();
    close();
}

void QtSerialPort::openDevice(int number) {
    close();
    const PortDevice device = find_(number);
    if (device.path.isEmpty())
        throw RuntimeFault(kCannotOpen, "The port is absent");
    // The toolkit takes a lock over after half a minute, however alive its holder is.
    if (const QString holder = lockHolder(device.path, true); !holder.isEmpty())
        throw RuntimeFault(kCannotOpen, "The port is locked by process " + holder.toStdString());
    port_.setPortName(device.path);
    if (!port_.open(QIODevice::ReadWrite))
        throw RuntimeFault(kCannotOpen, port_.errorString().toStdString());
    port_.clear();  // opening keeps what the device had received before
}

void QtSerialPort::close() {
    lost_ = false;
    if (!port_.isOpen())
        return;
    // Closing puts the device's former speed back at once; the last line must have left by then.
    letLeave(port_);
    port_.close();
}

bool QtSerialPort::isOpen() const {
    return port_.isOpen() && !lost_;
}

std::size_t QtSerialPort::waiting() {
    if (!isOpen())
        return 0;
    // What has arrived since the last event is still with the system.
    if (port_.bytesAvailable() == 0 && !port_.waitForReadyRead(0) && isOpen() &&
        isHungUp(port_).value_or(false))
        lose();
    return isOpen() ? static_cast<std::size_t>(port_.bytesAvailable()) : 0;
}

void QtSerialPort::discardInput() {
    demandOpen();
    port_.clear(QSerialPort::Input);
}

std::optional<char> QtSerialPort::read() {
    char c = 0;
    if (waiting() == 0 || port_.read(&c, 1) != 1)
        return std::nullopt;
    return c;
}

std::size_t QtSerialPort::room() {
    port_.flush();
    return kTransmitBuffer - std::min(kTransmitBuffer, static_cast<std::size_t>(port_.bytesToWrite()));
}

void QtSerialPort::write(char c) {
    demandOpen();
    port_.write(&c, 1);
}

void QtSerialPort::flush() {
    demandOpen();
    port_.flush();
}

void QtSerialPort::failed(QSerialPort::SerialPortError error) {
    if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError &&
        error != QSerialPort::WriteError)
        return;
    if (!isHungUp(port_).value_or(true)) {
        // Something to be read was announced and then dropped, or the device takes no more just now. The
        // toolkit stops listening after that; to be asked for a character makes it listen again.
        char none = 0;
        if (port_.bytesAvailable() == 0)
            port_.read(&none, 1);
        return;
    }
    // A device that went away repeats its error without end until the port is closed.
    lose();
}

void QtSerialPort::lose() {
    if (!isOpen())
        return;
    // Closing inside the port's own error signal would pull it from under its own feet.
    lost_ = true;
    QMetaObject::invokeMethod(
        &port_,
        [this] {
            if (!lost_)
                return;
            close();
            if (lostHandler_)
                lostHandler_();
        },
        Qt::QueuedConnection);
}

void QtSerialPort::demandOpen() const {
    if (!isOpen())
        throw RuntimeFault::portNotOpen();
}

}  // namespace quorvex
