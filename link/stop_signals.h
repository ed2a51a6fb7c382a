#pragma once

#include <QObject>
#include <functional>

namespace quorvex {

/// Lets SIGTERM, SIGINT and SIGHUP, on Windows Ctrl+C and a console that closes (as SIGINT and SIGTERM), be
/// handled from the event loop instead of ending the program where it stands. Made once, behind the
/// application.
class StopSignals : public QObject {
public:
    /// `handler` gets the signal's number.
    explicit StopSignals(std::function<void(int)> handler);
};

}  // namespace quorvex
