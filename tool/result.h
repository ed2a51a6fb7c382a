#pragma once

#include <QJsonObject>
#include <QString>
#include <stdexcept>

namespace quorvex::tool {

/// How a command ended; the number is the exit status.
enum class Status {
    done = 0,
    differs = 1,     ///< verified otherwise, or files differ
    wrongUse = 2,    ///< of the command line
    noAnswer = 3,    ///< the unit did not answer as it must
    port = 4,        ///< cannot be opened, or was lost
    file = 5,        ///< cannot be read or written, or is not what it should be
    noResult = 128,  ///< of one of several ports: its process ended without one
};
inline constexpr int kSignalled = 128;  ///< the exit status of an interrupted command, less its signal

/// What a command has found out.
struct Result {
    Status status = Status::done;
    QString text;        ///< for people: whole lines
    QJsonObject object;  ///< the same for programs
    QString problem;     ///< what went wrong and what to do; empty for nothing
};

/// Ends a command that has nothing to tell but this.
class Failure : public std::runtime_error {
public:
    Failure(Status status, const QString& problem)
        : std::runtime_error(problem.toStdString()), status_(status) {}
    Status status() const { return status_; }
    QString problem() const { return QString::fromStdString(what()); }

private:
    Status status_;
};

/// What a command has found out that ended so.
inline Result failed(const Failure& failure) {
    Result result;
    result.status = failure.status();
    result.problem = failure.problem();
    return result;
}

}  // namespace quorvex::tool
