#include "app/startup.h"

#include "link/runtime_fault.h"

namespace quorvex {

Startup::Startup(PortChoice& choice, RfModule& rfModule, PortWindow& window)
    : choice_(choice), rfModule_(rfModule), window_(window) {}

void Startup::load() {
    std::string number;  // stays empty when the fault comes before the port is known
    try {
        rfModule_.load();
        const int stored = choice_.GetComPort();
        number = std::to_string(stored);
        choice_.open(stored);
        window_.showPortLabel("COM" + number);
    } catch (const RuntimeFault&) {
        choice_.reportNotOpened(number);
        mnuComPort_Click();
    }
}

void Startup::mnuComPort_Click() {
    window_.showPortDialog();
    window_.showPortLabel(choice_.labelAfterDialog());
}

std::string aboutText(int major, int minor, int revision) {
    return "Quorvex\u00AE Configuration Utility v" + std::to_string(major) + "." + std::to_string(minor) +
           "." + std::to_string(revision) + "\r\rFree software under the MIT licence, without warranty.\r";
}

}  // namespace quorvex
