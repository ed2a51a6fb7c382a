#pragma once

#include <QProcess>
#include <QStringList>
#include <string>

namespace quorvex::tour {

/// A unit played by quorvex-simulator as a process of its own; it ends with this object, and with this
/// program however that ends.
class SimulatedUnit {
public:
    /// Starts `simulator` with `arguments` and returns once it is ready. Throws std::runtime_error with a
    /// sentence if it is not.
    SimulatedUnit(const QString& simulator, const QStringList& arguments);
    ~SimulatedUnit();

    /// What the unit holds: lines "NN=DIGITS". `dump` is the file that it was told to write this to. Throws
    /// std::runtime_error if it does not.
    std::string holds(const QString& dump) const;

    SimulatedUnit(const SimulatedUnit&) = delete;
    SimulatedUnit& operator=(const SimulatedUnit&) = delete;

private:
    void awaitReady();

    QProcess process_;
};

}  // namespace quorvex::tour
