#pragma once

#include <QtGlobal>

namespace quorvex {

/// Processor time that a process has used so far, in milliseconds (to some 10
/// ms); -1 if there is none.
qint64 cpuTimeMs(qint64 processId);

/// Share of one core that a process uses while `ms` pass, 0 to 1 and more; -1
/// if the process has ended.
double cpuShare(qint64 processId, int ms);

}  // namespace quorvex
