#pragma once

#include <QTemporaryDir>
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
    void addBeltpack(const QStringList& options) {
        if (!unit_.emplace(QStringList{"beltpack", "--link", portPath()} + options).isReady())
            throw std::runtime_error("The simulated unit does not start.");
    }

    /// Where the port's device is to be found; a link to it.
    QString portPath() const { return ports_.filePath("COM" + QString::number(kPort)); }

private:
    QTemporaryDir ports_;
    QTemporaryDir settings_;
    std::optional<UnitProcess> unit_;
};

}  // namespace quorvex::bench
