#pragma once

#include <QMap>
#include <QTemporaryDir>
#include <memory>

#include "tests/support/program.h"
#include "tests/support/unit_process.h"

namespace quorvex {

/// A folder of ports and a folder of settings of the test's own, a unit at a
/// port, and the program.
class BenchTop {
public:
    BenchTop();

    /// A unit at COM`number`; takes the place of one that is there.
    UnitProcess& plugIn(int number, const QStringList& arguments);
    /// For the program, besides its ports and settings.
    void setEnvironment(const QString& name, const QString& value) { environment_[name] = value; }
    /// The program, with its window up and nothing in front of it. False if it
    /// does not come to that.
    bool start();
    /// The program, however it starts.
    Program& run();

    UnitProcess& unit() { return *unit_; }
    Program& program() { return *program_; }
    QString portLink(int number) const { return ports_.filePath("COM" + QString::number(number)); }
    QString settingsFile() const { return settings_.filePath("QuorvexCfg.conf"); }
    QByteArray settings() const;
    void writeSettings(const QByteArray& text) const;
    /// Picks a port in the open port dialog by its keys.
    void pickPort(int number);
    /// Confirms the port dialog on COM`number`, the port in use, and waits until it is open again.
    void chooseAgain(int number);

private:
    QMap<QString, QString> environment_;
    QTemporaryDir ports_;
    QTemporaryDir settings_;
    std::unique_ptr<UnitProcess> unit_;
    std::unique_ptr<Program> program_;
};

}  // namespace quorvex
