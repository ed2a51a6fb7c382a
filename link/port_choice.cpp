#include "link/port_choice.h"

#include "link/runtime_fault.h"

namespace quorvex {

PortChoice::PortChoice(CommandLink& link, SerialPort& port, SettingsStore& store)
    : link_(link), port_(port), store_(store) {}

std::int16_t PortChoice::GetComPort() const {
    return store_.number(kComPortKey, "1");
}

int PortChoice::preselected() const {
    return store_.number(kComPortKey, "1", 0, kPortsOffered) - 1;
}

void PortChoice::open(int number) {
    lastOpened_ = number;
    link_.closePort();
    port_.open(number);
}

bool PortChoice::CmdOK_Click(int index) {
    const int number = index + 1;
    try {
        open(number);
    } catch (const RuntimeFault&) {
        reportNotOpened(std::to_string(number));
        return false;
    }
    store_.save(kComPortKey, std::to_string(number));
    return true;
}

std::string PortChoice::labelAfterDialog() const {
    return port_.isOpen() ? "COM" + std::to_string(GetComPort()) : kNoComms;
}

void PortChoice::reportNotOpened(const std::string& number) {
    link_.console().messageBox("Could not open COM " + number, Icon::critical);
}

}  // namespace quorvex
