#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

namespace quorvex {

/// A simulated unit in a process of its own, and what passed between it and the
/// program.
class UnitProcess {
public:
    struct Line {
        qint64 atMs;
        QString text;  ///< "> " received, "< " sent, "* " a note, and the line
    };

    /// `arguments` without --link and --traffic. Returns when the unit is ready
    /// on `link`.
    UnitProcess(const QStringList& arguments, const QString& link)
        : UnitProcess(arguments + QStringList{"--traffic", "--link", link}) {}
    /// The whole command line; without --traffic the unit tells nothing of what passes.
    explicit UnitProcess(const QStringList& commandLine);
    ~UnitProcess();

    bool isReady() const { return ready_; }
    /// Everything so far, in order.
    const QList<Line>& traffic();
    /// The lines that the program has sent so far.
    QStringList received();
    /// Lines both ways so far, "> ..." and "< ...".
    QStringList exchanged();
    void forget();
    /// What the unit holds now, "NN=DIGITS" in each line; `dump` is the file that it was told to write this
    /// to.
    QByteArray holds(const QString& dump) const;
    /// Ends in order, and writes what it holds where it was told to.
    void end();
    /// Ends at once, as a unit whose cable is pulled; its link stays.
    void pull();

private:
    QProcess process_;
    QList<Line> traffic_;
    bool ready_ = false;
};

}  // namespace quorvex
