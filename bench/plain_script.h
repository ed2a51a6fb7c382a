#pragma once

#include <QProcess>
#include <vector>

#include "bench/counting_port.h"

namespace quorvex::bench {

/// plain_read.py: the same exchanges by a short Python script on the system's own calls.
class PlainScript {
public:
    /// Whether there is a Python to run it.
    static bool isRunnable();

    /// Starts it; it does nothing yet and leaves the device alone.
    PlainScript(const QString& devicePath, const std::vector<CountedExchange>& exchanges);
    ~PlainScript();
    PlainScript(const PlainScript&) = delete;
    PlainScript& operator=(const PlainScript&) = delete;

    /// Opens the device, does all exchanges, closes it, and tells what the exchanges took by the script's own
    /// clock. Throws std::runtime_error when the script ends instead.
    double seconds();

private:
    QProcess process_;
};

}  // namespace quorvex::bench
