#include <QStandardPaths>
#include <string>
#include <thread>

#include "bench/bench_top.h"
#include "bench/rows.h"
#include "bench/shown_program.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

using namespace std::chrono_literals;

const QString kProgram = QStringLiteral("quorvex-config");
constexpr auto kIdles = 10s;
constexpr int kStarts = 7;
constexpr double kMostIdleShare = 0.005;
constexpr double kMostOfMenuTime = 1.5;
constexpr double kMostOfEmptyMemory = 1.3;
constexpr double kMostOfOtherTime = 0.6;
constexpr double kMostOfOtherMemory = 0.5;

Row memoryRow(const std::string& what, const Starts& program, const Starts& other, double most) {
    // PSS is only told: it changes with the number of programs on the machine that use the same toolkit.
    const double proportional = program.proportionalMb() / other.proportionalMb();
    return ratioRow(what, program.residentMb() / other.residentMb(),
                    megabytes(program.residentMb()) + " to " + megabytes(other.residentMb()) + "; PSS " +
                        fixed(proportional, 3),
                    most);
}

std::vector<Row> otherRows(const QString& name) {
    const std::string time = "Time to the first picture on the screen, to that of " + name.toStdString();
    const std::string memory = "Memory (RSS), to that of " + name.toStdString();
    const QString path = QStandardPaths::findExecutable(name);
    const std::string missing = path.isEmpty()     ? "it is not installed"
                                : !isScreenEmpty() ? "the display is no empty X display"
                                                   : "";
    if (!missing.empty())
        return {leftOutRow(time, missing), leftOutRow(memory, missing)};

    Starts program(ownProgram(kProgram), {}, SeenBy::Eye);
    Starts other(path, {}, SeenBy::Eye);
    for (int i = 0; i < kStarts; ++i) {  // in turns, so that other work on the machine meets both
        other.run();
        program.run();
    }
    return {
        ratioRow(time, program.seconds() / other.seconds(),
                 milliseconds(program.seconds()) + " to " + milliseconds(other.seconds()), kMostOfOtherTime),
        memoryRow(memory, program, other, kMostOfOtherMemory)};
}

}  // namespace

std::vector<Row> idleRows() {
    BenchTop top;
    top.addBeltpack({"--module", "rm5"});
    const ShownProgram program(ownProgram(kProgram));
    ShownProgram::settle();
    const double begun = nowSeconds();
    const double usedBefore = cpuSeconds(program.id());
    std::this_thread::sleep_for(kIdles);
    const double used = cpuSeconds(program.id()) - usedBefore;
    return {shareRow("CPU of the idle program over 10 s", used / (nowSeconds() - begun), milliseconds(used),
                     kMostIdleShare)};
}

std::vector<Row> startRows() {
    BenchTop top;
    top.addBeltpack({"--module", "rm5"});
    const QSize size = WindowAtWork().size();
    const QStringList sized{QString::number(size.width()), QString::number(size.height())};
    const QString emptyWindow = ownProgram("quorvex-bench-empty-window");
    Starts program(ownProgram(kProgram));
    Starts empty(emptyWindow, sized);
    Starts oneMenu(emptyWindow, sized + QStringList("menu"));
    for (int i = 0; i < kStarts; ++i) {  // in turns, so that other work on the machine meets all
        empty.run();
        oneMenu.run();
        program.run();
    }
    // An entirely empty window never touches a font, so the time to it is only told.
    return {ratioRow("Time to the shown window, to a main window with one menu",
                     program.seconds() / oneMenu.seconds(),
                     milliseconds(program.seconds()) + " to " + milliseconds(oneMenu.seconds()) +
                         "; to an entirely empty one " + fixed(program.seconds() / empty.seconds(), 3),
                     kMostOfMenuTime),
            memoryRow("Memory (RSS), to an entirely empty main window", program, empty, kMostOfEmptyMemory)};
}

std::vector<Row> othersRows() {
    BenchTop top;
    top.addBeltpack({"--module", "rm5"});
    std::vector<Row> rows = otherRows("cutecom");
    const std::vector<Row> more = otherRows("qdmr");
    rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

}  // namespace quorvex::bench
