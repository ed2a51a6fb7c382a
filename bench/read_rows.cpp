#include <stdexcept>
#include <string>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/plain_line.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

constexpr int kReads = 5;
constexpr double kMostOfWireTime = 1.03;

struct Reads {
    std::vector<double> seconds;
    std::vector<CountedExchange> exchanges;  ///< of one read; all are alike
};

/// Reads with a click in the real window. The first read of each module is not counted: it stores the module
/// that it found, and lays the calibration frames out for it.
Reads readInWindow() {
    WindowAtWork window;
    Reads reads;
    for (int i = -1; i < kReads; ++i) {
        window.port().forget();
        const double begun = nowSeconds();
        window.click("CommandRdSettingsBp");
        const double took = nowSeconds() - begun;
        if (window.statusText() != "Settings read from Beltpack successfully.")
            throw std::runtime_error("The Beltpack was not read: " + window.statusText());
        reads.exchanges = window.port().exchanges();
        if (i >= 0)
            reads.seconds.push_back(took);
    }
    return reads;
}

/// The same exchanges without the program. What they take above the wire time is the system's and the
/// simulator's part.
double plainSeconds(const QString& portPath, const std::vector<CountedExchange>& exchanges) {
    PlainLine line(portPath);
    std::vector<double> seconds;
    for (int i = 0; i < kReads; ++i) {
        const double begun = nowSeconds();
        for (const CountedExchange& exchange : exchanges)
            line.exchange(exchange.line, exchange.awaited);
        seconds.push_back(nowSeconds() - begun);
    }
    return median(seconds);
}

Row readRow(const char* module, const std::string& name) {
    BenchTop top;
    top.addBeltpack({"--module", module, "--pace", QString::number(kBaud)});
    const Reads reads = readInWindow();
    const double wire = wireSeconds(reads.exchanges);
    const double took = median(reads.seconds);
    const double plain = plainSeconds(top.portPath(), reads.exchanges);
    return ratioRow(
        "Read a Beltpack (" + name + ") at 19200 baud, to the wire time of its bytes", took / wire,
        milliseconds(took) + " to " + milliseconds(wire) + "; plain loop " + fixed(plain / wire, 3),
        kMostOfWireTime);
}

}  // namespace

std::vector<Row> readRows() {
    return {readRow("rm5", "RM5"), readRow("kirk", "Kirk")};
}

}  // namespace quorvex::bench
