#pragma once

#include <QString>

namespace quorvex::tool {

/// A line on the terminal that says what goes on, and goes away at the end. Nothing where the standard error
/// output is no terminal.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(const QString& text);

private:
    bool isTerminal_;
    QString shown_;
};

}  // namespace quorvex::tool
