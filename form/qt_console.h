#pragma once

#include "form/status_line.h"
#include "link/console.h"

namespace quorvex {

/// Status line, message boxes, beep and pointer of the window.
class QtConsole : public Console {
public:
    explicit QtConsole(StatusLine& statusLine) : statusLine_(statusLine) {}

    void status(std::string_view text, Colour colour) override;
    void messageBox(std::string_view text, Icon icon, std::string_view title) override;
    void beep() override;
    void hourglass(bool up) override;
    void progress(int done, int total) override { statusLine_.showProgress(done, total); }

private:
    StatusLine& statusLine_;
};

}  // namespace quorvex
