#include <cstdio>
#include <exception>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/bench_file.h"
#include "simulator/bench_processes.h"
#include "simulator/dump_file.h"
#include "simulator/options.h"
#include "simulator/replay.h"
#include "simulator/serve.h"

namespace {

using namespace quorvex::sim;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

int refused(const std::invalid_argument& error) {
    std::fprintf(stderr, "quorvex-simulator: %s\nquorvex-simulator --help says more.\n", error.what());
    return kExitUsage;
}

void playUnit(const Options& options) {
    const std::unique_ptr<Unit> unit = makeUnit(options);
    // Now: that there can be no dump must not turn out at the end.
    std::optional<DumpFile> file;
    if (!options.dumpPath.empty())
        file.emplace(options.dumpPath);
    serve(*unit, options, [&] {
        if (file)
            file->write(unit->dump());
    });
}

std::ifstream opened(const std::string& path) {
    std::ifstream file(path);
    if (!file)
        throw std::invalid_argument("Cannot open " + path + ".");
    return file;
}

void playTrace(const Options& options) {
    std::ifstream trace = opened(options.file);
    Replay unit(trace);
    serve(unit, options, [] {});
}

/// Plays what `options` say. What goes wrong is told; returns the exit status.
int play(const Options& options);

int playUnits(const Options& options) {
    std::ifstream file = opened(options.file);
    return playBench(readBench(file), play);
}

int play(const Options& options) {
    try {
        if (options.play == Options::Play::kBench)
            return playUnits(options);
        if (options.play == Options::Play::kReplay)
            playTrace(options);
        else
            playUnit(options);
        return 0;
    } catch (const std::invalid_argument& error) {
        return refused(error);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quorvex-simulator: %s\n", error.what());
        return kExitFailure;
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Options options = parseOptions(std::vector<std::string>(argv + 1, argv + argc));
        if (!options.help)
            return play(options);
        std::fputs(helpText().c_str(), stdout);
        return 0;
    } catch (const std::invalid_argument& error) {
        return refused(error);
    }
}
