#include <stdexcept>
#include <string>
#include <thread>

#include "bench/bench_top.h"
#include "bench/child_process.h"
#include "bench/figures.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kPort = 1;
constexpr auto kSettles = 500ms;
constexpr auto kIdles = 10s;
constexpr int kStarts = 15;
constexpr double kMostIdleShare = 0.005;
constexpr double kMostOfEmptyTime = 1.5;
constexpr double kMostOfEmptyMemory = 1.3;

/// A program with a window, and how long it took from its start until the window was drawn.
class ShownProgram {
public:
    explicit ShownProgram(const std::string& name, const std::vector<std::string>& arguments = {})
        : process_(
              builtProgram(name), arguments,
              {"QT_PLUGIN_PATH=" + builtProgram("bench-plugins"), "QT_QPA_GENERIC_PLUGINS=quorvex-shown"}) {
        const std::string line = process_.readLine();
        if (!line.starts_with(kShown))
            throw std::runtime_error(name + " says: " + line);
        secondsToShown_ = std::stod(line.substr(kShown.size())) / 1e9 - process_.startedAt();
    }

    ~ShownProgram() { process_.endByInput(); }
    ShownProgram(const ShownProgram&) = delete;
    ShownProgram& operator=(const ShownProgram&) = delete;

    double secondsToShown() const { return secondsToShown_; }
    const ChildProcess& process() const { return process_; }

private:
    static constexpr std::string_view kShown = "shown ";

    ChildProcess process_;
    double secondsToShown_ = 0;
};

/// What several starts of one program gave.
struct Starts {
    std::vector<double> seconds;
    std::vector<double> residentMb;
    std::vector<double> proportionalMb;

    void add(const std::string& name, const std::vector<std::string>& arguments = {}) {
        const ShownProgram program(name, arguments);
        std::this_thread::sleep_for(kSettles);
        const ChildProcess::Memory memory = program.process().memory();
        seconds.push_back(program.secondsToShown());
        residentMb.push_back(memory.residentMb);
        proportionalMb.push_back(memory.proportionalMb);
    }
};

std::string megabytes(double mb) {
    return fixed(mb, 1) + " MB";
}

}  // namespace

std::vector<Row> idleRows() {
    BenchTop top;
    top.addBeltpack(kPort, "rm5");
    const ShownProgram program("quorvex-config");
    std::this_thread::sleep_for(kSettles);
    const double begun = nowSeconds();
    const double usedBefore = program.process().cpuUsed();
    std::this_thread::sleep_for(kIdles);
    const double used = program.process().cpuUsed() - usedBefore;
    return {shareRow("CPU of the idle program over 10 s", used / (nowSeconds() - begun), milliseconds(used),
                     kMostIdleShare)};
}

std::vector<Row> startRows() {
    BenchTop top;
    top.addBeltpack(kPort, "rm5");
    const QSize size = WindowAtWork(kPort).size();
    const std::vector<std::string> sized{std::to_string(size.width()), std::to_string(size.height())};
    std::vector<std::string> withMenu = sized;
    withMenu.emplace_back("menu");
    // What is read from the disk for the first time is not counted.
    Starts().add("quorvex-bench-empty-window", sized);
    Starts().add("quorvex-config");
    Starts program;
    Starts empty;
    Starts oneMenu;
    for (int i = 0; i < kStarts; ++i) {  // in turns, so that other work on the machine meets both
        empty.add("quorvex-bench-empty-window", sized);
        oneMenu.add("quorvex-bench-empty-window", withMenu);
        program.add("quorvex-config");
    }
    const double took = median(program.seconds);
    const double least = median(empty.seconds);
    const double holds = median(program.residentMb);
    const double leastMb = median(empty.residentMb);
    // Only told: what any text costs, and what changes with the number of other programs on the machine
    // that use the same toolkit.
    const double withText = median(oneMenu.seconds) / least;
    const double proportional = median(program.proportionalMb) / median(empty.proportionalMb);
    return {
        ratioRow("Time to the shown window, to an empty main window", took / least,
                 milliseconds(took) + " to " + milliseconds(least) + "; one menu alone " + fixed(withText, 2),
                 kMostOfEmptyTime),
        ratioRow("Memory (RSS), to an empty main window", holds / leastMb,
                 megabytes(holds) + " to " + megabytes(leastMb) + "; PSS " + fixed(proportional, 3),
                 kMostOfEmptyMemory)};
}

}  // namespace quorvex::bench
