#pragma once

#include <QByteArray>
#include <QString>

namespace quorvex {

/// A pseudo-terminal in raw mode: the program opens path() as its serial port, a test plays the unit.
class TerminalPair {
public:
    TerminalPair();
    ~TerminalPair();
    TerminalPair(const TerminalPair&) = delete;
    TerminalPair& operator=(const TerminalPair&) = delete;

    QString path() const { return path_; }
    int unitSide() const { return unitSide_; }
    /// Puts `bytes` on the line; returns how many of them it took.
    static qsizetype send(int unitSide, const QByteArray& bytes);

private:
    int unitSide_ = -1;
    int programSide_ = -1;  ///< kept open, or the unit's side would fail while the program has not opened it
    QString path_;
};

}  // namespace quorvex
