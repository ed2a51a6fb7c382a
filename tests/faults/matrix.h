#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "tests/faults/cell.h"

namespace quorvex {

/// One operation crossed with every fault at each of its lines, replies and records.
class MatrixSection {
public:
    /// One fault at all of one kind of place.
    struct Row {
        QString fault;
        FaultyPort::Place place;
        bool once;
        QStringList outcomes;  ///< at the first, the second ...
    };

    /// Runs every cell.
    explicit MatrixSection(const TestedOperation& operation);

    const CleanRun& clean() const { return clean_; }
    const std::vector<Row>& rows() const { return rows_; }
    const QStringList& complaints() const { return complaints_; }
    int cells() const { return cells_; }
    FakeLoop::Tick longestMs() const { return longestMs_; }

private:
    void cross(const TestedFault& fault, FaultyPort::Place place);
    void addRow(const TestedFault& fault, FaultyPort::Place place, bool once);

    CleanRun clean_;
    std::vector<Row> rows_;
    QStringList complaints_;
    int cells_ = 0;
    FakeLoop::Tick longestMs_ = 0;
};

}  // namespace quorvex
