#pragma once

#include <QStringList>
#include <vector>

#include "tool/command.h"
#include "tool/ports_command.h"

namespace quorvex::tool {

/// What one of the ports of a command line gets to do.
struct Share {
    NamedPort port;   ///< nameless where the request names none
    Request request;  ///< as if it were given for this port alone
    UnitJob job;

    /// The command line of it, behind the program's name.
    QStringList words() const;
};

/// A share for each port that the request names, in their order. "{port}" in arguments and options becomes
/// the name of the share's port, of a device the last part of its path. Looks at all that can be wrong before
/// a port is opened; throws Failure, also where two names are one port, and where two shares would write one
/// file or give two units one PSN or System ID.
std::vector<Share> sharesOf(const Request& request);

}  // namespace quorvex::tool
