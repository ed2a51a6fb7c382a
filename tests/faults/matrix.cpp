#include "tests/faults/matrix.h"

#include <algorithm>

namespace quorvex {

using Place = FaultyPort::Place;

MatrixSection::MatrixSection(const TestedOperation& operation) : clean_(operation) {
    for (const TestedFault& fault : testedFaults()) {
        cross(fault, fault.place);
        if (fault.place == Place::reply && fault.fitsStream)
            cross(fault, Place::stream);
    }
}

void MatrixSection::cross(const TestedFault& fault, Place place) {
    if (clean_.count(place) == 0)
        return;
    addRow(fault, place, true);
    if (fault.mayStay)
        addRow(fault, place, false);
}

void MatrixSection::addRow(const TestedFault& fault, Place place, bool once) {
    Row row{QString::fromStdString(fault.name), place, once, {}};
    for (int first = 0; first < clean_.count(place); ++first) {
        const CellResult result = runCell({clean_, fault, place, first, once});
        ++cells_;
        longestMs_ = std::max(longestMs_, result.tookMs);
        row.outcomes << result.outcome.text();
        QStringList complaints = result.complaints;
        if (!result.thrown.isEmpty())
            complaints << "thrown: " + result.thrown;
        if (result.outcome.told.contains("UNKNOWN"))
            complaints << result.outcome.told;
        for (const QString& complaint : std::as_const(complaints))
            complaints_ << QString("%1 (%2) at %3 %4: %5")
                               .arg(row.fault, once ? "once" : "stays")
                               .arg(place == Place::line    ? "line"
                                    : place == Place::reply ? "reply"
                                                            : "record")
                               .arg(first + 1)
                               .arg(complaint);
    }
    rows_.push_back(row);
}

}  // namespace quorvex
