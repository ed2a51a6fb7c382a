#include <QCoreApplication>
#include <QProcess>
#include <stdexcept>
#include <string>
#include <thread>

#include "bench/bench_top.h"
#include "bench/figures.h"
#include "bench/rows.h"
#include "bench/window_at_work.h"

namespace quorvex::bench {

namespace {

using namespace std::chrono_literals;

constexpr int kShownWithinMs = 10000;
constexpr int kEndsWithinMs = 3000;
constexpr auto kSettles = 500ms;
constexpr auto kIdles = 10s;
constexpr int kStarts = 7;
constexpr double kMostIdleShare = 0.005;
constexpr double kMostOfMenuTime = 1.5;
constexpr double kMostOfEmptyMemory = 1.3;

/// A program with a window, and how long it took from its start until the window was drawn.
class ShownProgram {
public:
    explicit ShownProgram(const QString& name, const QStringList& arguments = {}) {
        const QString folder = QCoreApplication::applicationDirPath() + '/';
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_PLUGIN_PATH", folder + "bench-plugins");
        environment.insert("QT_QPA_GENERIC_PLUGINS", "quorvex-shown");
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const double begun = nowSeconds();
        process_.start(folder + name, arguments);
        while (!process_.canReadLine() && process_.waitForReadyRead(kShownWithinMs)) {
        }
        const QByteArray line = process_.readLine();
        if (!line.startsWith(kShown))
            throw std::runtime_error(name.toStdString() + " says: " + line.toStdString());
        secondsToShown_ = line.mid(kShown.size()).trimmed().toDouble() / 1e9 - begun;
    }

    ~ShownProgram() {
        process_.closeWriteChannel();  // it ends by that
        process_.waitForFinished(kEndsWithinMs);
    }
    ShownProgram(const ShownProgram&) = delete;
    ShownProgram& operator=(const ShownProgram&) = delete;

    double secondsToShown() const { return secondsToShown_; }
    pid_t id() const { return static_cast<pid_t>(process_.processId()); }

private:
    static constexpr QByteArrayView kShown = "shown ";

    QProcess process_;
    double secondsToShown_ = 0;
};

/// What several starts of one program gave.
struct Starts {
    std::vector<double> seconds;
    std::vector<double> residentMb;
    std::vector<double> proportionalMb;

    void add(const QString& name, const QStringList& arguments = {}) {
        const ShownProgram program(name, arguments);
        std::this_thread::sleep_for(kSettles);
        const Memory memory = memoryOf(program.id());
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
    top.addBeltpack({"--module", "rm5"});
    const ShownProgram program("quorvex-config");
    std::this_thread::sleep_for(kSettles);
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
    // What is read from the disk for the first time is not counted.
    Starts().add("quorvex-bench-empty-window", sized);
    Starts().add("quorvex-config");
    Starts program;
    Starts empty;
    Starts oneMenu;
    for (int i = 0; i < kStarts; ++i) {  // in turns, so that other work on the machine meets both
        empty.add("quorvex-bench-empty-window", sized);
        oneMenu.add("quorvex-bench-empty-window", sized + QStringList("menu"));
        program.add("quorvex-config");
    }
    const double took = median(program.seconds);
    const double least = median(oneMenu.seconds);
    const double holds = median(program.residentMb);
    const double leastMb = median(empty.residentMb);
    // Only told: an entirely empty window never touches a font; PSS changes with the number of other programs
    // on the machine that use the same toolkit.
    const double toEmpty = took / median(empty.seconds);
    const double proportional = median(program.proportionalMb) / median(empty.proportionalMb);
    return {ratioRow("Time to the shown window, to a main window with one menu", took / least,
                     milliseconds(took) + " to " + milliseconds(least) + "; to an entirely empty one " +
                         fixed(toEmpty, 3),
                     kMostOfMenuTime),
            ratioRow("Memory (RSS), to an entirely empty main window", holds / leastMb,
                     megabytes(holds) + " to " + megabytes(leastMb) + "; PSS " + fixed(proportional, 3),
                     kMostOfEmptyMemory)};
}

}  // namespace quorvex::bench
