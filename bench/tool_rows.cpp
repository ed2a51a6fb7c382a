#include <QProcess>
#include <QTemporaryDir>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "bench/bench_top.h"
#include "bench/counting_port.h"
#include "bench/figures.h"
#include "bench/rows.h"
#include "bench/shown_program.h"

namespace quorvex::bench {

namespace {

constexpr int kUnits = 8;
constexpr int kReads = 7;
constexpr int kLimitMs = 30000;
constexpr double kMostOfSlowest = 1.05;
constexpr double kMostOfScript = 1.02;
const QString kTool = QStringLiteral("quorvex-tool");
const QString kOnePort = QStringLiteral("COM1");
const QString kPython =
    QStringLiteral("/usr/bin/python3");  // the system's, which finds the system's pyserial

/// How long a process takes from its start to its end. Throws std::runtime_error when it fails.
double processSeconds(const QString& path, const QStringList& arguments, const QByteArray& input = {}) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    const double begun = nowSeconds();
    process.start(path, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool hasEnded = process.waitForFinished(kLimitMs);
    const double took = nowSeconds() - begun;
    if (!hasEnded || process.exitCode() != 0)
        throw std::runtime_error(path.toStdString() + " fails.");
    return took;
}

bool hasPyserial() {
    QProcess python;
    python.setStandardErrorFile(QProcess::nullDevice());
    python.start(kPython, {"-c", "import serial; serial.Serial"});
    return python.waitForFinished() && python.exitCode() == 0;
}

double toolSeconds(const QString& ports, const QStringList& words) {
    return processSeconds(ownProgram(kTool), QStringList{"--port", ports} + words);
}

/// All units at once and one of them in turns, so that other work on the machine meets both. The units are
/// alike, so the middle one of those alone stands for the slowest.
Row besideRow(const std::string& what, const QStringList& words) {
    QStringList ports;
    for (int number = 1; number <= kUnits; ++number)
        ports << "COM" + QString::number(number);
    std::vector<double> together;
    std::vector<double> alone;
    for (const QString& port : std::as_const(ports)) {
        together.push_back(toolSeconds(ports.join(','), words));
        alone.push_back(toolSeconds(port, words));
    }
    return ratioRow(what, median(together) / median(alone),
                    milliseconds(median(together)) + " to " + milliseconds(median(alone)), kMostOfSlowest);
}

/// What has passed at the unit's end of the line.
struct Passed {
    double seconds = 0;    ///< from the first line that came to the last that went
    QByteArray exchanges;  ///< as pyserial_read.py takes them
};

Passed takePassed(UnitProcess& unit) {
    Passed passed;
    QByteArray sent;
    std::vector<qint64> timesMs;
    for (const UnitProcess::Line& line : unit.traffic()) {
        const QByteArray text = line.text.mid(2).toLatin1();
        if (line.text.startsWith('*'))
            continue;
        timesMs.push_back(line.atMs);
        if (line.text.startsWith('>'))
            sent = text;
        else
            passed.exchanges += QByteArray::number(text.size()) + ' ' + sent + '\n';
    }
    unit.forget();
    if (timesMs.empty())
        throw std::runtime_error("Nothing was sent to the unit.");
    passed.seconds = static_cast<double>(timesMs.back() - timesMs.front()) / 1e3;
    return passed;
}

/// Seconds of each read.
struct Times {
    std::vector<double> exchanges, process;

    void add(double processSeconds, const Passed& passed) {
        process.push_back(processSeconds);
        exchanges.push_back(passed.seconds);
    }
};

Row scriptRow(const QString& module, const std::string& name) {
    const std::string what =
        "Read a Beltpack (" + name + ") at 19200 baud by the tool, to the same by a pyserial script";
    if (!hasPyserial())
        return leftOutRow(what, "python3-serial is not installed");
    BenchTop top;
    UnitProcess& unit = top.addBeltpack({"--module", module, "--pace", QString::number(kBaud), "--traffic"});
    toolSeconds(kOnePort, {"read"});  // not counted
    const QByteArray exchanges = takePassed(unit).exchanges;
    Times tool;
    Times script;
    for (int i = 0; i < kReads; ++i) {  // in turns, so that other work on the machine meets both
        const double byTool = toolSeconds(kOnePort, {"read"});
        tool.add(byTool, takePassed(unit));
        const double byScript =
            processSeconds(kPython, {ownProgram("pyserial_read.py"), top.portPath()}, exchanges);
        const Passed passed = takePassed(unit);
        script.add(byScript, passed);
        if (passed.exchanges != exchanges)
            throw std::runtime_error("The script and the tool do not exchange the same.");
    }
    const double took = median(tool.exchanges);
    const double byScript = median(script.exchanges);
    return ratioRow(what, took / byScript,
                    milliseconds(took) + " to " + milliseconds(byScript) + "; with start and end " +
                        milliseconds(median(tool.process)) + " to " + milliseconds(median(script.process)),
                    kMostOfScript);
}

}  // namespace

std::vector<Row> toolRows() {
    std::vector<Row> rows;
    {
        BenchTop top;
        top.addBeltpacks(kUnits, {"--pace", QString::number(kBaud)});
        const QTemporaryDir folder;
        const QString file = folder.filePath("settings.bpc");
        toolSeconds(kOnePort, {"read", file});
        rows.push_back(besideRow("Write eight Beltpacks side by side at 19200 baud, to the slowest alone",
                                 {"write", file}));
        rows.push_back(
            besideRow("Read eight Beltpacks side by side at 19200 baud, to the slowest alone", {"read"}));
    }
    rows.push_back(scriptRow("rm5", "RM5"));
    rows.push_back(scriptRow("kirk", "Kirk"));
    return rows;
}

}  // namespace quorvex::bench
