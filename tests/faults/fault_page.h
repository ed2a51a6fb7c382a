#pragma once

#include <QString>
#include <vector>

#include "tests/faults/matrix.h"

namespace quorvex {

/// The page with every outcome of the matrix, in Markdown. Faults that end alike share a row, operations
/// that end alike a table.
QString faultPage(const std::vector<const MatrixSection*>& sections);

}  // namespace quorvex
