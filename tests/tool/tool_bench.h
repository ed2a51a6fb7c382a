#pragma once

#include <QTemporaryDir>
#include <memory>
#include <utility>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "tests/faults/faulty_port.h"
#include "tests/support/fake_loop.h"
#include "tool/command_line.h"
#include "tool/session.h"
#include "tool/settings_files.h"

namespace quorvex {

/// A unit on a line, in virtual time, and command lines that are run on it.
class ToolBench {
public:
    explicit ToolBench(std::unique_ptr<sim::Unit> unit) : unit_(std::move(unit)), port_(*unit_, loop_) {
        port_.onPicked([this] { port_.open(1); });
    }

    static std::unique_ptr<sim::Unit> beltpack(sim::RfModule module) {
        return std::make_unique<sim::Beltpack>(module);
    }
    static std::unique_ptr<sim::Unit> antenna(sim::RfModule module) {
        return std::make_unique<sim::ActiveAntenna>(module);
    }

    /// What the tool makes of "quorvex-tool `line`" with this unit on the port.
    tool::Result run(const QString& line) {
        const tool::Request request = tool::parseCommandLine(line.split(' '));
        const tool::UnitJob job = request.command->prepare(request);
        tool::PlainWindow window(port_, loop_, [this](const QString& text) { progress_ << text; });
        return tool::runJob(job, window);
    }

    sim::Unit& unit() { return *unit_; }
    FaultyPort& port() { return port_; }
    FakeLoop& loop() { return loop_; }
    QStringList lines() const {
        QStringList lines;
        for (const std::string& line : port_.lines())
            lines << QString::fromStdString(line);
        return lines;
    }
    const QStringList& progress() const { return progress_; }

private:
    std::unique_ptr<sim::Unit> unit_;
    FakeLoop loop_;
    FaultyPort port_;
    QStringList progress_;
};

/// What a command line says when it is refused before anything is sent: its status and its words.
inline QString refusalOf(const QString& line) {
    try {
        const tool::Request request = tool::parseCommandLine(line.split(' ', Qt::SkipEmptyParts));
        if (request.command->talksToUnit())
            request.command->prepare(request);
        else
            return QString::number(int(request.command->run(request).status));
    } catch (const tool::Failure& failure) {
        return QString("%1 %2").arg(int(failure.status())).arg(failure.problem());
    }
    return "accepted";
}

/// A folder with settings files, in which the test works.
class SettingsFolder {
public:
    SettingsFolder() {
        sound_ = {"K4700", "00443186A0", "1F", "100ECE1000", "30", "00", "01", "02", "02", "03", "00",
                  "1F",    "01",         "00", "03FF000000", "00", "00", "00", "01", "00", "00", "02"};
    }

    QString path(const QString& name) const { return folder_.filePath(name); }
    /// A file that is as it should be, but for what `changes` says of its lines, from 1.
    QString make(const QString& name, const QMap<int, QString>& changes = {}) const {
        QStringList lines = sound_;
        for (auto change = changes.begin(); change != changes.end(); ++change)
            lines[change.key() - 1] = change.value();
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no room for %s", qPrintable(name));
        file.write(lines.takeFirst().toLatin1() + "\r\n");
        for (const QString& line : std::as_const(lines))
            file.write(line.leftJustified(10).toLatin1() + "\r\n");
        return file.fileName();
    }
    static QByteArray content(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }

private:
    QTemporaryDir folder_;
    QStringList sound_;
};

}  // namespace quorvex
