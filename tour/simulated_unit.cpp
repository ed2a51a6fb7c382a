#include "tour/simulated_unit.h"

#include <sys/prctl.h>

#include <QFile>
#include <QTest>
#include <csignal>
#include <stdexcept>

namespace quorvex::tour {

namespace {
constexpr int kReadyLimitMs = 20'000;
constexpr int kEndLimitMs = 5'000;
}  // namespace

SimulatedUnit::SimulatedUnit(const QString& simulator, const QStringList& arguments) {
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process_.start(simulator, arguments);
    awaitReady();
}

SimulatedUnit::~SimulatedUnit() {
    process_.terminate();
    process_.waitForFinished(kEndLimitMs);
}

std::string SimulatedUnit::holds(const QString& dump) const {
    QFile::remove(dump);
    ::kill(static_cast<pid_t>(process_.processId()), SIGUSR1);
    // The file appears whole, in one step.
    const bool written = QTest::qWaitFor([&dump] { return QFile::exists(dump); }, kEndLimitMs);
    QFile file(dump);
    if (!written || !file.open(QIODevice::ReadOnly))
        throw std::runtime_error("A simulated unit does not say what it holds.");
    return file.readAll().toStdString();
}

void SimulatedUnit::awaitReady() {
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(kReadyLimitMs))
            throw std::runtime_error("A simulated unit did not start: " +
                                     process_.errorString().toStdString());
    }
    const QByteArray line = process_.readLine();
    if (!line.contains(" ready on "))
        throw std::runtime_error("A simulated unit did not start: " + line.trimmed().toStdString());
}

}  // namespace quorvex::tour
