#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <optional>
#include <stdexcept>

#include "tests/support/unit_process.h"

namespace quorvex::bench {

inline constexpr int kPort = 1;

/// A technician's bench for one measurement: a folder of ports, and settings that hold nothing yet. This
/// process and those it starts use them while the object lives; there is one at a time.
class BenchTop {
public:
    BenchTop() {
        qputenv("QUORVEX_PORTS", ports_.path().toLocal8Bit());
        // All that any program would keep in the user's home.
        for (const char* kind : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            qputenv(kind, settings_.path().toLocal8Bit());
    }

    /// Puts a simulated Beltpack on the port. `options` are the simulator's own.
    UnitProcess& addBeltpack(const QStringList& options) {
        if (!unit_.emplace(QStringList{"beltpack", "--link", portPath()} + options).isReady())
            throw std::runtime_error("The simulated unit does not start.");
        return *unit_;
    }

    /// Puts one on each port from 1 to `count`. The options hold no blanks.
    void addBeltpacks(int count, const QStringList& options) {
        QFile bench(ports_.filePath("bench.txt"));
        if (!bench.open(QIODevice::WriteOnly))
            throw std::runtime_error("The bench of units cannot be written.");
        for (int port = 1; port <= count; ++port)
            bench.write(("beltpack --link " + portPath(port) + ' ' + options.join(' ') + '\n').toLocal8Bit());
        bench.close();
        unit_.emplace(QStringList{"bench", bench.fileName()});
        const auto areThere = [&] {
            for (int port = 1; port <= count; ++port) {
                if (!QFile::exists(portPath(port)))
                    return false;
            }
            return true;
        };
        if (!QTest::qWaitFor(areThere))
            throw std::runtime_error("The simulated units do not start.");
    }

    /// Where the port's device is to be found; a link to it.
    QString portPath(int port = kPort) const { return ports_.filePath("COM" + QString::number(port)); }

private:
    QTemporaryDir ports_;
    QTemporaryDir settings_;
    std::optional<UnitProcess> unit_;
};

}  // namespace quorvex::bench
