#pragma once

#include <string>

namespace quorvex::bench {

/// A pseudo-terminal in raw mode. Nobody answers on it: its master side is the caller's.
class PseudoTerminal {
public:
    /// Throws std::system_error when the system gives none.
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    int master() const { return master_; }
    const std::string& devicePath() const { return devicePath_; }

private:
    int master_ = -1;
    int slave_ = -1;  ///< kept open, or the master would fail whenever nobody has the device open
    std::string devicePath_;
};

/// Opens a serial device, raw and without a controlling terminal; the descriptor is the caller's.
/// Throws std::system_error.
int openRaw(const std::string& devicePath);

}  // namespace quorvex::bench
