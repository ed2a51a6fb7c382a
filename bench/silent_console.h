#pragma once

#include "link/console.h"

namespace quorvex::bench {

/// An operator who is told nothing.
class SilentConsole : public Console {
public:
    void status(std::string_view /*text*/, Colour /*colour*/) override {}
    void messageBox(std::string_view /*text*/, Icon /*icon*/, std::string_view /*title*/) override {}
    void beep() override {}
    void hourglass(bool /*up*/) override {}
};

}  // namespace quorvex::bench
