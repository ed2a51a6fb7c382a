#include "tests/support/unit_process.h"

#include <sys/prctl.h>

#include <QFile>
#include <QTest>
#include <csignal>

namespace quorvex {

namespace {
constexpr int kLimitMs = 10'000;
}

UnitProcess::UnitProcess(const QStringList& commandLine) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // It ends with whoever started it, however that ends.
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process_.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-simulator", commandLine);
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(kLimitMs))
            return;
    }
    ready_ = process_.readLine().contains(" ready on ");
}

UnitProcess::~UnitProcess() {
    pull();
}

const QList<UnitProcess::Line>& UnitProcess::traffic() {
    process_.waitForReadyRead(0);
    while (process_.canReadLine()) {
        const QString line = QString::fromLatin1(process_.readLine().chopped(1));  // blanks at its end count
        const qsizetype blank = line.indexOf(' ', line.indexOf('.'));
        traffic_.append({qRound64(line.left(blank).toDouble() * 1000), line.mid(blank + 1)});
    }
    return traffic_;
}

QStringList UnitProcess::received() {
    QStringList lines;
    for (const Line& line : traffic()) {
        if (line.text.startsWith("> "))
            lines << line.text.mid(2);
    }
    return lines;
}

QStringList UnitProcess::exchanged() {
    QStringList lines;
    for (const Line& line : traffic()) {
        if (!line.text.startsWith("* "))
            lines << line.text;
    }
    return lines;
}

void UnitProcess::forget() {
    traffic();
    traffic_.clear();
}

QByteArray UnitProcess::holds(const QString& dump) const {
    QFile::remove(dump);
    ::kill(static_cast<pid_t>(process_.processId()), SIGUSR1);
    // The file appears whole, in one step.
    QFile file(dump);
    const bool written = QTest::qWaitFor([&file] { return file.exists(); }, kLimitMs);
    return written && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void UnitProcess::end() {
    process_.terminate();
    process_.waitForFinished(kLimitMs);
}

void UnitProcess::pull() {
    process_.kill();
    process_.waitForFinished(kLimitMs);
}

}  // namespace quorvex
