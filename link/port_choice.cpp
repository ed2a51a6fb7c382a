#include "link/port_choice.h"

#include "link/number_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

PortChoice::PortChoice(SerialPort& port, SettingsStore& store, Console& console)
    : port_(port), store_(store), console_(console) {}

std::int16_t PortChoice::GetComPort() const {
    return toInt16(strictNumber(store_.get(kComPortKey, "1")));
}

int PortChoice::preselected() const {
    const int index = GetComPort() - 1;
    if (index < -1 || index >= kPortsOffered)
        throw RuntimeFault::invalidPropertyValue();
    return index;
}

void PortChoice::open(int number) {
    lastOpened_ = number;
    port_.close();
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
    console_.messageBox("Could not open COM " + number, Icon::critical);
}

}  // namespace quorvex
