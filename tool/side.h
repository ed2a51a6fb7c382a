#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>

#include "tool/shares.h"

namespace quorvex::tool {

/// Set in the environment of a side's process: the JSON object of its result holds the text for people, too.
inline constexpr char kTextInObject[] = "QUORVEX_TOOL_TEXT";

/// A share, done by a process of this program. The process ends in order when this one ends, however it does.
class Side {
public:
    explicit Side(const Share& share) : share_(share) {}

    void start();
    /// Interrupts it as one that runs alone is interrupted. Does nothing once it has ended.
    void interrupt(int signal);
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }

    /// What has come from its standard error output since the last call: whole lines, and the rest when it
    /// has ended.
    QByteArray takeSaid();
    /// What it has found out. To be called once, when it has ended.
    void takeResult();

    const Share& share() const { return share_; }
    // Once the result was taken:
    int status() const { return status_; }  ///< exit status; as documented for several ports
    const QJsonObject& object() const { return object_; }
    const QString& text() const { return text_; }
    /// What became of a process that could not tell it itself; empty for all others.
    const QString& untold() const { return untold_; }

private:
    const Share& share_;
    QProcess process_;
    int interruptedBy_ = 0;
    int status_ = 0;
    QJsonObject object_;
    QString text_;
    QString untold_;
};

}  // namespace quorvex::tool
