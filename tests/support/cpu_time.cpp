#include "tests/support/cpu_time.h"

#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

namespace quorvex {

qint64 cpuTimeMs(qint64 processId) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(processId));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    // The name of the program, in brackets, may hold blanks.
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    constexpr int kUserTime = 11;
    constexpr int kSystemTime = 12;
    const qint64 ticks = fields.value(kUserTime).toLongLong() + fields.value(kSystemTime).toLongLong();
    return ticks * 1000 / ::sysconf(_SC_CLK_TCK);
}

double cpuShare(qint64 processId, int ms) {
    const qint64 before = cpuTimeMs(processId);
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms)
        QTest::qWait(static_cast<int>(ms - timer.elapsed()));
    const qint64 after = cpuTimeMs(processId);
    return before < 0 || after < 0 ? -1 : double(after - before) / double(timer.elapsed());
}

}  // namespace quorvex
