#pragma once

#include <QDir>
#include <QMainWindow>
#include <optional>

#include "tour/steps.h"

namespace quorvex::tour {

/// Takes the steps one after the other, prints each one's outcome and leaves a picture of each in a folder.
/// Works from a thread beside the window's.
class Tour {
public:
    Tour(QMainWindow& window, QDir pictures, Bench bench)
        : window_(window), pictures_(std::move(pictures)), visitor_(window, std::move(bench)) {}

    /// Stops at the first step that fails, since those after it build on it. Returns the exit status of the
    /// program: 0 if every step went well, else 1.
    int take();

    /// To be called in the window's thread when the program would end; on a tour that fails the step.
    void programEnded(int status) { ended_ = status; }

private:
    bool takeStep(int number, const Step& step);
    void photograph(int number, const std::string& name);

    QMainWindow& window_;
    QDir pictures_;
    Visitor visitor_;
    std::optional<int> ended_;
};

}  // namespace quorvex::tour
