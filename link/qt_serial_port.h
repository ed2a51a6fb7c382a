#pragma once

#include <QSerialPort>
#include <functional>

#include "link/port_device.h"
#include "link/serial_port.h"

namespace quorvex {

/// The serial port of this machine.
class QtSerialPort : public SerialPort {
public:
    /// `find` gives the device of a port number.
    explicit QtSerialPort(std::function<PortDevice(int)> find = findPortDevice);
    ~QtSerialPort() override;

    void close() override;
    bool isOpen() const override;
    std::size_t waiting() override;
    void discardInput() override;
    std::optional<char> read() override;
    std::size_t room() override;
    void write(char c) override;
    void flush() override;

    /// Called from the event loop once the port has closed because its device went away.
    void onLost(std::function<void()> handler) { lostHandler_ = std::move(handler); }

private:
    void openDevice(int number) override;
    void failed(QSerialPort::SerialPortError error);
    void lose();
    void demandOpen() const;

    std::function<PortDevice(int)> find_;
    QSerialPort port_;
    bool lost_ = false;  ///< the device is gone; the port closes with the next event
    std::function<void()> lostHandler_;
};

}  // namespace quorvex
