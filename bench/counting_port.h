#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "link/serial_port.h"

namespace quorvex::bench {

/// A command line and the part of its reply that the program waited for.
struct CountedExchange {
    std::string line;         ///< as sent, line end included
    std::size_t awaited = 0;  ///< bytes of the reply
};

/// Passes everything on to another port and keeps count of the exchanges.
///
/// A byte counts where the program cannot go on before it has crossed the line: every byte of a command,
/// its line end included, since the unit answers whole lines only, and every byte of the reply from its start
/// character to the one that completes it for the reader. Not the line end that follows a reply of known
/// length: it crosses while the next command is already on its way in the other direction.
class CountingPort : public SerialPort {
public:
    explicit CountingPort(SerialPort& port) : port_(port) {}

    /// What has been exchanged since the last forget().
    const std::vector<CountedExchange>& exchanges() const { return exchanges_; }
    void forget() { exchanges_.clear(); }

    void close() override { port_.close(); }
    bool isOpen() const override { return port_.isOpen(); }
    std::size_t waiting() override { return port_.waiting(); }
    void discardInput() override;
    std::optional<char> read() override;
    std::size_t room() override { return port_.room(); }
    void write(char c) override;
    void flush() override { port_.flush(); }

private:
    void openDevice(int number) override { port_.open(number); }

    SerialPort& port_;
    std::vector<CountedExchange> exchanges_;
};

/// The time that the exchanges' bytes take on a line of 19200 baud, in seconds: ten bits a byte (start bit,
/// eight data bits, stop bit), one after the other.
double wireSeconds(const std::vector<CountedExchange>& exchanges);

inline constexpr int kBaud = 19200;
inline constexpr int kBitsPerByte = 10;  ///< start bit, eight data bits, stop bit

}  // namespace quorvex::bench
