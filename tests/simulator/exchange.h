#pragma once

#include <QByteArray>
#include <cstdint>
#include <string_view>

#include "simulator/unit.h"

namespace quorvex::sim {

inline QByteArray takeAll(Unit& unit, std::int64_t nowMs) {
    return QByteArray::fromStdString(unit.take(nowMs));
}

/// Sends `line` with its line end and gives back what the unit says at that same moment.
inline QByteArray exchange(Unit& unit, const QByteArray& line, std::int64_t nowMs = 0) {
    unit.receive((line + "\r\n").toStdString(), nowMs);
    return takeAll(unit, nowMs);
}

}  // namespace quorvex::sim
