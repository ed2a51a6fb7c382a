#pragma once

#include <QProcess>
#include <vector>

#include "bench/figures.h"

namespace quorvex::bench {

/// How it is known that a program's window is shown.
enum class SeenBy {
    Probe,  ///< the toolkit loads shown_probe.cpp into the program: on any display, with this very toolkit
            ///< only
    Eye,    ///< the empty screen begins to show something: any program, on an empty X display only
};

/// Whether the display is one on which SeenBy::Eye works; leaves windows that have just been closed a second
/// to vanish.
bool isScreenEmpty();

/// A program with its window shown. It is told to end when the object does.
class ShownProgram {
public:
    /// Returns when the window is drawn. Throws std::runtime_error when it is not within 10 s.
    explicit ShownProgram(const QString& path, const QStringList& arguments = {},
                          SeenBy seenBy = SeenBy::Probe);
    ~ShownProgram();
    ShownProgram(const ShownProgram&) = delete;
    ShownProgram& operator=(const ShownProgram&) = delete;

    /// How long that took from its start.
    double secondsToShown() const { return secondsToShown_; }
    pid_t id() const { return static_cast<pid_t>(process_.processId()); }
    /// Lets it come to rest.
    static void settle();

private:
    /// When the window was drawn, by the clock of nowSeconds().
    double awaitProbe();
    double awaitPicture() const;

    QProcess process_;
    double secondsToShown_ = 0;
};

/// Several starts of one program.
class Starts {
public:
    /// The first start is made here and not counted: it reads from the disk what later ones find in memory.
    explicit Starts(QString path, QStringList arguments = {}, SeenBy seenBy = SeenBy::Probe);

    /// Starts it once more, and ends it when it has come to rest.
    void run();

    double seconds() const { return median(seconds_); }
    double residentMb() const { return median(residentMb_); }
    double proportionalMb() const { return median(proportionalMb_); }

private:
    QString path_;
    QStringList arguments_;
    SeenBy seenBy_;
    std::vector<double> seconds_;
    std::vector<double> residentMb_;
    std::vector<double> proportionalMb_;
};

/// Where a program of this build is.
QString ownProgram(const QString& name);

std::string megabytes(double mb);

}  // namespace quorvex::bench
