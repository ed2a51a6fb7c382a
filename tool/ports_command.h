#pragma once

#include "link/port_device.h"
#include "tool/command.h"

namespace quorvex::tool {

/// COM1 to COM12: where they are, whether they can be opened, and what to do where not.
Result listPorts(const Request& request);

/// A port that a command line names.
struct NamedPort {
    QString name;    ///< "COM3", or the path of the device
    int number = 0;  ///< 0 for a path
    PortDevice device;
};
/// By `given`, "COM3" or a path. Throws Failure for anything else.
NamedPort portNamed(const QString& given);
NamedPort portNumbered(int number);

}  // namespace quorvex::tool
