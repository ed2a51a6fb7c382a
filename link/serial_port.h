#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace quorvex {

/// The one serial port, always at 19200 baud, 8 data bits, no parity, 1 stop bit, without flow control.
/// It is open or closed; a port whose device goes away (a pulled cable) closes by itself.
class SerialPort {
public:
    static constexpr std::size_t kTransmitBuffer = 512;

    virtual ~SerialPort() = default;

    /// Opens COM`number` and drops what it had received before. Throws RuntimeFault when the port is
    /// absent, busy, not permitted or not a serial port, and stays closed then.
    void open(int number) {
        ++connection_;
        openDevice(number);
    }
    /// Closes the port; nothing happens when it is closed already.
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// Tells one opening from the next: no two have the same number. 0 on a closed port.
    std::uint32_t connection() const { return isOpen() ? connection_ : 0; }

    /// Count of characters that have arrived and not been read, whether or not an event has run since they
    /// came. 0 on a closed port.
    virtual std::size_t waiting() = 0;
    /// Drops every character that is waiting. Throws RuntimeFault on a closed port.
    virtual void discardInput() = 0;
    /// Takes one waiting character, 0 to 255 as an unsigned char; empty when none waits.
    virtual std::optional<char> read() = 0;
    /// Number of characters that the port takes now: what is free of its transmit buffer of kTransmitBuffer.
    virtual std::size_t room() { return kTransmitBuffer; }
    /// Gives one character to the port. Throws RuntimeFault on a closed port.
    virtual void write(char c) = 0;
    /// Puts what has been written on the wire without waiting for it to leave.
    virtual void flush() = 0;
    /// A reader has waited `ms` for a character, its limit, and none came. Nothing for the device to do.
    virtual void silence(std::int32_t /*ms*/) {}

private:
    virtual void openDevice(int number) = 0;

    std::uint32_t connection_ = 1;  ///< a port that a test holds open from the start has one, too
};

}  // namespace quorvex
