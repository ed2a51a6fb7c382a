#include "tests/support/unit_process.h"

namespace quorvex {

namespace {
constexpr int kLimitMs = 10'000;
}

UnitProcess::UnitProcess(const QStringList& arguments, const QString& link) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-simulator", QStringList(arguments)
                                                                                   << "--traffic"
                                                                                   << "--link" << link);
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

void UnitProcess::end() {
    process_.terminate();
    process_.waitForFinished(kLimitMs);
}

void UnitProcess::pull() {
    process_.kill();
    process_.waitForFinished(kLimitMs);
}

}  // namespace quorvex
