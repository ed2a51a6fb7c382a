#pragma once

#include <optional>

#include "tool/command.h"

namespace quorvex::tool {

/// set psn|system-id|pli|rf-carriers VALUE
UnitJob prepareSet(const Request& request);
QStringList identitiesOfSet(const Request& request);
/// A value for each of several ports: VALUE is a list of as many, or the first PSN, or the same for all.
std::vector<QStringList> dealSet(const QStringList& arguments, std::size_t ports);
/// The PSN that a request gives a Beltpack; none where it is about something else.
std::optional<int> psnGiven(const Request& request);

}  // namespace quorvex::tool
