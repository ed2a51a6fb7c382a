#include <QTemporaryDir>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/plain_line.h"
#include "bench/plain_script.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

constexpr int kReads = 5;
constexpr int kRestMs = 100;  // lets what the window has to do for an opened port pass
constexpr double kMostOfWireTime = 1.03;
constexpr double kMostWithTrace = 1.01;

using Exchanges = std::vector<CountedExchange>;

/// Seconds of each read of one unit.
struct Reads {
    std::vector<double> program;
    std::vector<double> traced;  ///< by the program while it writes a trace
    std::vector<double> plain;   ///< by a plain loop on the system's own calls
    std::vector<double> script;  ///< by a plain script; empty where there is nothing to run it
    double wire = 0;             ///< what the bytes of one read take at 19200 baud
};

/// A read with a click in the real window, which has the port for that long only.
double readInWindow(WindowAtWork& window) {
    window.port().open(kPort);
    window.rest(kRestMs);
    window.port().forget();
    const double begun = nowSeconds();
    window.click("CommandRdSettingsBp");
    const double took = nowSeconds() - begun;
    window.port().close();
    if (window.statusText() != "Settings read from Beltpack successfully.")
        throw std::runtime_error("The Beltpack was not read: " + window.statusText());
    return took;
}

/// The same exchanges without the program. What they take above the wire time is the system's and the
/// simulator's part.
double readPlainly(const QString& portPath, const Exchanges& exchanges) {
    PlainLine line(portPath);
    const double begun = nowSeconds();
    for (const CountedExchange& exchange : exchanges)
        line.exchange(exchange.line, exchange.awaited);
    return nowSeconds() - begun;
}

Reads readInTurns(const QStringList& unit) {
    BenchTop top;
    top.addBeltpack(unit);
    WindowAtWork window;
    readInWindow(window);  // not counted: stores the module that it found, lays out its calibration frames
    const Exchanges exchanges = window.port().exchanges();  // every read has the same ones
    std::optional<PlainScript> script;
    if (PlainScript::isRunnable())
        script.emplace(top.portPath(), exchanges);
    const QTemporaryDir folder;
    WindowAtWork tracing(folder.filePath("trace").toStdString());
    readInWindow(tracing);
    Reads reads;
    reads.wire = wireSeconds(exchanges);
    for (int i = 0; i < kReads; ++i) {  // in turns, so that other work on the machine meets all
        reads.program.push_back(readInWindow(window));
        reads.traced.push_back(readInWindow(tracing));
        reads.plain.push_back(readPlainly(top.portPath(), exchanges));
        if (script)
            reads.script.push_back(script->seconds());
    }
    return reads;
}

Row wireRow(const std::string& what, const Reads& reads) {
    const double took = median(reads.program);
    return ratioRow(what + ", to the wire time of its bytes", took / reads.wire,
                    milliseconds(took) + " to " + milliseconds(reads.wire) + "; plain loop " +
                        fixed(median(reads.plain) / reads.wire, 3),
                    kMostOfWireTime);
}

Row traceRow(const std::string& what, const Reads& reads) {
    const double traced = median(reads.traced);
    const double took = median(reads.program);
    return ratioRow(what + " with a trace, to one without", traced / took,
                    milliseconds(traced) + " to " + milliseconds(took), kMostWithTrace);
}

Row scriptRow(const std::string& what, const Reads& reads) {
    const std::string whole = what + ", to the same by a Python script";
    if (reads.script.empty())
        return leftOutRow(whole, "python3 is not installed");
    const double took = median(reads.program);
    const double byScript = median(reads.script);
    return toldRow(whole, took / byScript,
                   milliseconds(took) + " to " + milliseconds(byScript) + "; plain loop " +
                       milliseconds(median(reads.plain)));
}

}  // namespace

std::vector<Row> readRows() {
    std::vector<Row> rows;
    for (const auto& [module, name] : {std::pair{"rm5", "RM5"}, std::pair{"kirk", "Kirk"}}) {
        const std::string what = "Read a Beltpack (" + std::string(name) + ")";
        const Reads paced = readInTurns({"--module", module, "--pace", QString::number(kBaud)});
        rows.push_back(wireRow(what + " at 19200 baud", paced));
        rows.push_back(traceRow(what + " at 19200 baud", paced));
        rows.push_back(scriptRow(what + " at 19200 baud", paced));
        rows.push_back(scriptRow(what + ", unpaced", readInTurns({"--module", module})));
    }
    return rows;
}

}  // namespace quorvex::bench
