#pragma once

#include <string>
#include <vector>

namespace quorvex::bench {

/// One row of the table.
struct Row {
    std::string what;
    std::string measured;
    std::string target;
    std::string verdict;  ///< "met" or "missed"
};

/// A row whose figure is a ratio that must be `most` at most. `details` say what it is made of.
Row ratioRow(std::string what, double ratio, const std::string& details, double most);

/// A row whose figure is a share of one core, 0 to 1, that must stay below `below`.
Row shareRow(std::string what, double share, const std::string& details, double below);

/// Prints the rows to the standard output, columns aligned.
void printTable(const std::vector<Row>& rows);

}  // namespace quorvex::bench
