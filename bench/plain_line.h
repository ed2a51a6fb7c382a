#pragma once

#include <QString>
#include <cstddef>
#include <string>

namespace quorvex::bench {

/// Exchanges on a serial device by the system's own calls and nothing between: the yardstick for the
/// program's link. It sleeps in poll() and reads what is there.
class PlainLine {
public:
    /// Throws std::system_error when the device cannot be opened.
    explicit PlainLine(const QString& devicePath);
    ~PlainLine();
    PlainLine(const PlainLine&) = delete;
    PlainLine& operator=(const PlainLine&) = delete;

    /// Drops waiting input, sends `line` as it is and returns the first `count` bytes of the reply, from its
    /// start character on. Throws std::runtime_error after 2 s of silence.
    std::string exchange(const std::string& line, std::size_t count);

private:
    int descriptor_;
};

}  // namespace quorvex::bench
