#pragma once

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <map>
#include <memory>

#include "tests/support/unit_process.h"

namespace quorvex {

/// The built tool, with ports and settings of the test's own, and units at the ports.
class ToolProcess {
public:
    struct Ended {
        int status = -1;  ///< exit status; -1 for a crash or no end
        QString out, err;
        QJsonObject object() const { return QJsonDocument::fromJson(out.toUtf8()).object(); }
    };

    ToolProcess() {
        qputenv("QUORVEX_PORTS", ports_.path().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", settings_.path().toLocal8Bit());
    }

    /// A unit at COM`number`; takes the place of one that is there.
    UnitProcess& plugIn(int number, const QStringList& arguments) {
        end(number);
        auto& unit = units_[number];
        unit = std::make_unique<UnitProcess>(arguments, portLink(number));
        return *unit;
    }
    /// The unit at COM`number` ends in order.
    void end(int number) {
        if (units_[number])
            units_[number]->end();
        units_[number].reset();
    }
    QString portLink(int number) const { return ports_.filePath("COM" + QString::number(number)); }
    QString settingsFile() const { return settings_.filePath("QuorvexCfg.conf"); }

    /// Starts it on the words of `line`; they hold no blanks.
    void start(const QString& line) {
        process_ = std::make_unique<QProcess>();
        process_->start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tool",
                        line.split(' ', Qt::SkipEmptyParts));
        QVERIFY(process_->waitForStarted());
    }
    QProcess& process() { return *process_; }
    /// Whether it has COM`number` open by now.
    bool hasOpen(int number) const {
        const QString device = QFileInfo(portLink(number)).canonicalFilePath();
        const QDir open(QStringLiteral("/proc/%1/fd").arg(process_->processId()));
        const QStringList files = open.entryList(QDir::AllEntries | QDir::System);
        return std::any_of(files.begin(), files.end(), [&](const QString& file) {
            return QFile::symLinkTarget(open.filePath(file)) == device;
        });
    }
    Ended end() {
        constexpr int kLimitMs = 60'000;
        if (!process_->waitForFinished(kLimitMs) || process_->exitStatus() != QProcess::NormalExit)
            return {};
        return {process_->exitCode(), QString::fromUtf8(process_->readAllStandardOutput()),
                QString::fromUtf8(process_->readAllStandardError())};
    }
    Ended run(const QString& line) {
        start(line);
        return end();
    }

private:
    QTemporaryDir ports_, settings_;
    std::map<int, std::unique_ptr<UnitProcess>> units_;
    std::unique_ptr<QProcess> process_;
};

}  // namespace quorvex
