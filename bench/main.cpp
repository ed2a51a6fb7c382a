#include <stdlib.h>

#include <QApplication>
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>
#include <thread>

#include "bench/figures.h"
#include "bench/rows.h"

namespace {

using quorvex::bench::Row;

struct Group {
    std::string_view name;  ///< as asked for on the command line
    std::vector<Row> (*measure)();
};

// In the order of the table.
constexpr std::array<Group, 8> kGroups{{
    {"read", quorvex::bench::readRows},
    {"exchange", quorvex::bench::exchangeRows},
    {"wait", quorvex::bench::waitRows},
    {"idle", quorvex::bench::idleRows},
    {"start", quorvex::bench::startRows},
    {"others", quorvex::bench::othersRows},
    {"screen", quorvex::bench::screenRows},
    {"tool", quorvex::bench::toolRows},
}};

constexpr std::size_t kRuns = 3;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

bool isGroup(std::string_view name) {
    return std::ranges::find(kGroups, name, &Group::name) != kGroups.end();
}

int usage(std::FILE* where, int status) {
    std::string names;
    for (const Group& group : kGroups)
        names += " " + std::string(group.name);
    std::fprintf(
        where,
        "Usage: quorvex-bench [group ...]\n\nMeasures what the program costs and prints one table; all "
        "groups unless some are named.\nGroups:%s\nExit status: 0 when the table could be made, "
        "whatever it says.\n",
        names.c_str());
    return status;
}

/// What the figures depend on besides the program.
void printSurroundings() {
    double load = 0;
    const bool known = ::getloadavg(&load, 1) == 1;
    std::printf("Qt %s on %s, %u processors, load %s before\n\n", qVersion(),
                qPrintable(QGuiApplication::platformName()), std::thread::hardware_concurrency(),
                known ? quorvex::bench::fixed(load, 2).c_str() : "unknown");
    std::fflush(stdout);
}

/// All the groups asked for, once.
std::vector<Row> runOnce(const std::vector<std::string>& names) {
    std::vector<Row> rows;
    for (const Group& group : kGroups) {
        if (!names.empty() && std::ranges::find(names, group.name) == names.end())
            continue;
        std::fprintf(stderr, " %s", std::string(group.name).c_str());
        const std::vector<Row> more = group.measure();
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

/// Of each row the one with the middle value.
std::vector<Row> medians(std::array<std::vector<Row>, kRuns> runs) {
    std::vector<Row> rows;
    for (std::size_t i = 0; i < runs[0].size(); ++i) {
        std::ranges::sort(runs, {}, [i](const std::vector<Row>& run) { return run[i].value; });
        rows.push_back(runs[kRuns / 2][i]);
    }
    return rows;
}

int measure(const std::vector<std::string>& names) {
    printSurroundings();
    std::array<std::vector<Row>, kRuns> runs;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        std::fprintf(stderr, "run %zu of %zu:", i + 1, runs.size());
        runs[i] = runOnce(names);
        std::fprintf(stderr, "\n");
    }
    quorvex::bench::printTable(medians(std::move(runs)));
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const bool hasScreen =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!hasScreen && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Without a display the toolkit says of every window what it cannot do there.
    if (!qEnvironmentVariableIsSet("QT_LOGGING_RULES"))
        qputenv("QT_LOGGING_RULES", "default.warning=false");
    const QApplication application(argc, argv);
    qputenv("QUORVEX_BIN", QApplication::applicationDirPath().toLocal8Bit());  // for the simulated units
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments == std::vector<std::string>{"--help"})
        return usage(stdout, 0);
    if (!std::ranges::all_of(arguments, isGroup))
        return usage(stderr, kExitUsage);
    try {
        return measure(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvex-bench: %s\n", error.what());
        return kExitFailure;
    }
}
