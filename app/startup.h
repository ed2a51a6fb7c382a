#pragma once

#include <string>

#include "calibration/rf_module.h"
#include "link/port_choice.h"

namespace quorvex {

/// What start-up and the port menu need of the main window.
class PortWindow {
public:
    virtual ~PortWindow() = default;
    virtual void showPortLabel(const std::string& text) = 0;
    /// The port dialog, modal; returns when it has closed.
    virtual void showPortDialog() = 0;
};

/// What happens when the main window loads, and the menu's way to another port.
class Startup {
public:
    Startup(PortChoice& choice, RfModule& rfModule, PortWindow& window);

    /// Takes the stored radio module, then opens the stored port. A fault in either is told as a port that
    /// could not be opened, and the port dialog follows.
    void load();
    void mnuComPort_Click();

private:
    PortChoice& choice_;
    RfModule& rfModule_;
    PortWindow& window_;
};

/// The About box: its title and its text for a version of the program.
inline constexpr const char* kAboutTitle = "About Quorvex Config";
std::string aboutText(int major, int minor, int revision);

}  // namespace quorvex
