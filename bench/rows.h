#pragma once

#include <vector>

#include "bench/table.h"

namespace quorvex::bench {

// Each of these takes the measurements of one group and gives its rows. All throw std::exception when there
// is nothing to be measured: a program that does not start, a unit that does not answer.

/// A full read of a Beltpack with either radio module on a line of 19200 baud.
std::vector<Row> readRows();
/// The link's own cost for an exchange.
std::vector<Row> exchangeRows();
/// What waiting for a silent unit costs.
std::vector<Row> waitRows();
/// What the program costs at rest.
std::vector<Row> idleRows();
/// What the program costs to start and to keep.
std::vector<Row> startRows();

/// What the remote screen costs.
std::vector<Row> screenRows();

}  // namespace quorvex::bench
