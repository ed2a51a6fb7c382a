#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "link/event_loop.h"
#include "link/serial_port.h"

namespace quorvex {

/// Another port, and a line of text for whatever passes over it:
///
///         0.000 * open COM1
///         1.204 > # 0102\x0D\x0A | 23 20 30 31 30 32 0D 0A
///         1.226 < # 02821F | 23 20 30 32 38 32 31 46
///         1.240 ~ \x0D\x0A | 0D 0A
///
/// Seconds since the program started; ">" to the unit, "<" from it, "~" from it but dropped unread, "*" what
/// else happened to the port ("open COM1", "open COM1 failed: REASON", "close", "lost", "silence of 2000 ms"
/// where a reader's limit passed); the bytes, those that are not printable and "\" as \xNN; then all in
/// hexadecimal. What the unit sends stands together up to a line feed, a pause of 50 ms or 128 bytes.
class TracePort : public SerialPort {
public:
    /// `line` gets each line, without a line end, as soon as it is complete.
    TracePort(SerialPort& port, const EventLoop& loop, std::function<void(const std::string&)> line);

    void close() override;
    bool isOpen() const override { return port_.isOpen(); }
    std::size_t waiting() override { return port_.waiting(); }
    void discardInput() override;
    std::optional<char> read() override;
    std::size_t room() override { return port_.room(); }
    void write(char c) override;
    void flush() override;
    void silence(std::int32_t ms) override;
    /// To be called when the device has gone away.
    void lost();

private:
    void openDevice(int number) override;
    void dropWaiting();
    void received(char c, char mark);
    void endRun();
    void note(const std::string& text);
    void bytes(std::int32_t atMs, char mark, std::string_view bytes);

    SerialPort& port_;
    const EventLoop& loop_;
    std::function<void(const std::string&)> line_;
    bool isAtWork_;     ///< opened, and neither closed nor lost since
    std::string sent_;  ///< written, and not yet flushed
    std::string run_;   ///< received, and not yet told
    char runMark_ = '<';
    std::int32_t runBeganMs_ = 0;
    std::int32_t lastByteMs_ = 0;
};

}  // namespace quorvex
