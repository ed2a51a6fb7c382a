#pragma once

#include <cstdint>
#include <string>

#include "link/command_link.h"
#include "link/serial_port.h"
#include "link/settings_store.h"

namespace quorvex {

/// Which serial port the program works on: the stored number, opening it, and the choice of another one.
class PortChoice {
public:
    static constexpr int kPortsOffered = 12;  ///< COM1 to COM12 in the drop-down

    PortChoice(CommandLink& link, SerialPort& port, SettingsStore& store);

    /// The stored port number, 1 when none is stored; read anew each time. Throws as SettingsStore::number
    /// does.
    std::int16_t GetComPort() const;

    /// Index of the item that the dialog preselects: -1 for none. Throws as GetComPort does, and "Invalid
    /// property value" for a stored number that the drop-down does not hold.
    int preselected() const;

    /// Opens port `number` in place of the one that is open. Throws RuntimeFault; no port is open then.
    void open(int number);
    /// The port that was opened last, or could not be; 0 before the first.
    int lastOpened() const { return lastOpened_; }
    /// The port that is open; 0 for none.
    int openNumber() const { return port_.isOpen() ? lastOpened_ : 0; }

    /// OK in the dialog with item `index` (-1: none) selected. True: port opened and stored, the dialog
    /// closes. False: the operator has been told, the port is closed, nothing is stored.
    bool CmdOK_Click(int index);

    /// What the port label shows after the dialog: "COM" and the stored number while open, else "No Comms".
    std::string labelAfterDialog() const;

    /// Tells that a port could not be opened; `number` is empty when it is not known.
    void reportNotOpened(const std::string& number);

private:
    CommandLink& link_;
    SerialPort& port_;
    SettingsStore& store_;
    int lastOpened_ = 0;
};

inline constexpr const char* kNoComms = "No Comms";

}  // namespace quorvex
