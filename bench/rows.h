#pragma once

#include <string>
#include <vector>

namespace quorvex::bench {

/// One row of the table.
struct Row {
    std::string what;
    double value = 0;  ///< the figure that is judged; of several runs the middle one counts
    std::string measured;
    std::string target = "-";
    std::string verdict = "-";  ///< "met", "missed", or "-" where nothing is judged
};

/// A row whose figure is a ratio that must be `most` at most. `details` say what it is made of.
Row ratioRow(const std::string& what, double ratio, const std::string& details, double most);

/// A row whose figure is a ratio that is told and not judged.
Row toldRow(const std::string& what, double ratio, const std::string& details);

/// A row whose figure is a share of one core, 0 to 1, that must stay below `below`.
Row shareRow(const std::string& what, double share, const std::string& details, double below);

/// A row that cannot be measured here, and why.
Row leftOutRow(const std::string& what, const std::string& why);

// Each of these takes the measurements of one group and gives its rows, the same ones in every run. All throw
// std::exception when there is nothing to be measured: a program that does not start, a unit that does not
// answer.

/// A full read of a Beltpack with either radio module, on a line of 19200 baud and on one that takes no time.
std::vector<Row> readRows();
/// The link's own cost for an exchange.
std::vector<Row> exchangeRows();
/// What waiting for a silent unit costs.
std::vector<Row> waitRows();
/// What the program costs at rest.
std::vector<Row> idleRows();
/// What the program costs to start and to keep.
std::vector<Row> startRows();
/// The same, beside other programs for serial devices.
std::vector<Row> othersRows();
/// What the remote screen costs.
std::vector<Row> screenRows();
/// The tool on many units side by side, and a read by it beside one by a script.
std::vector<Row> toolRows();

/// Prints the rows to the standard output, columns aligned.
void printTable(const std::vector<Row>& rows);

}  // namespace quorvex::bench
