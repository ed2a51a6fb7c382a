#pragma once

#include <QStringList>
#include <vector>

namespace quorvex::tour {

/// One value that a simulated unit is told to hold, and what the window shows of it.
struct Held {
    const char* setting;  ///< "NN=HEX" as quorvex-simulator takes it; nullptr: part of the value above
    const char* control;  ///< objectName of the control that shows it
    const char* shown;    ///< as Visitor::shows gives it
};

/// A simulated unit of the tour.
struct Unit {
    const char* port;    ///< "COM1"
    const char* kind;    ///< "beltpack", "antenna"
    const char* module;  ///< "rm5", "kirk"
    std::vector<Held> values;
    const char* version;  ///< DECT firmware version

    QStringList extra = {};  ///< further options of quorvex-simulator

    /// The command line of quorvex-simulator, its port linked into the folder `ports`.
    QStringList arguments(const QString& ports) const;
    /// Where the unit writes what it holds when it is asked to.
    QString dump(const QString& ports) const { return ports + '/' + port + ".held"; }
};

/// The values of these two differ in every control that shows any, so that none can pass for the other's.
const Unit& rm5Beltpack();
const Unit& kirkBeltpack();
const Unit& rm5Antenna();
const Unit& kirkAntenna();
/// A Beltpack that sends its display.
const Unit& displayBeltpack();

}  // namespace quorvex::tour
