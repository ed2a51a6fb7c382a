#pragma once

#include <QObject>

namespace quorvex {

/// Closes what a failed check has left open. A check that fails inside the event loop of a dialog returns
/// from there alone; nobody would close the dialog any more, and the test would hang until its time is up.
/// Once the test has failed every dialog closes within a moment, also one that would not let itself be
/// rejected, so that the test ends with the message of its check.
class ClosesAfterFailure : public QObject {
public:
    ClosesAfterFailure();

protected:
    void timerEvent(QTimerEvent* event) override;
};

}  // namespace quorvex
