#include "bench/plain_script.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <stdexcept>

namespace quorvex::bench {

namespace {

constexpr int kLimitMs = 10000;
const QString kPython = QStringLiteral("python3");

}  // namespace

bool PlainScript::isRunnable() {
    return !QStandardPaths::findExecutable(kPython).isEmpty();
}

PlainScript::PlainScript(const QString& devicePath, const std::vector<CountedExchange>& exchanges) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(kPython, {QCoreApplication::applicationDirPath() + "/plain_read.py", devicePath});
    for (const CountedExchange& exchange : exchanges) {
        const QByteArray line = QByteArray::fromStdString(exchange.line).trimmed();  // it ends lines itself
        process_.write(QByteArray::number(static_cast<qulonglong>(exchange.awaited)) + ' ' + line + '\n');
    }
}

PlainScript::~PlainScript() {
    process_.closeWriteChannel();  // it ends by that
    process_.waitForFinished(kLimitMs);
}

double PlainScript::seconds() {
    process_.write("\n");
    while (!process_.canReadLine() && process_.waitForReadyRead(kLimitMs)) {
    }
    bool told = false;
    const double seconds = process_.readLine().trimmed().toDouble(&told);
    if (!told)
        throw std::runtime_error("The Python script does not tell how long it took.");
    return seconds;
}

}  // namespace quorvex::bench
