#pragma once

#include <QByteArray>
#include <QString>
#include <atomic>

namespace quorvex {

/// A pseudo-terminal whose far end a test holds itself: what a unit would do,
/// byte by byte.
class PseudoTerminal {
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    /// The device that a program opens.
    QString path() const { return path_; }
    /// The far end's descriptor, which does not block.
    int farEnd() const { return far_; }
    /// Makes `link` lead to the device.
    bool linkAs(const QString& link) const;

    /// Waits while the program does not read; gives up after 5 s of that.
    void send(const QByteArray& bytes) const;
    /// What a program has sent by now, without waiting.
    QByteArray arrived() const;
    /// Sends without a pause and without a line end until `stop` is set.
    void flood(const std::atomic<bool>& stop) const;
    /// Hangs up, as a pulled adapter does.
    void hangUp();

private:
    bool sendSome(QByteArray& bytes, int limitMs) const;

    int far_ = -1;
    int near_ = -1;  ///< keeps the device from hanging up before a program has opened it
    QString path_;
};

}  // namespace quorvex
