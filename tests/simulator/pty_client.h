#pragma once

#include <QByteArray>
#include <QString>

/// The program's end of the simulator's port, as any program would open it.
class PtyClient {
public:
    /// Opens the terminal at `path`; isOpen() tells whether that worked.
    explicit PtyClient(const QString& path);
    ~PtyClient();
    PtyClient(const PtyClient&) = delete;
    PtyClient& operator=(const PtyClient&) = delete;

    bool isOpen() const { return descriptor_ >= 0; }

    /// Whether the terminal hands bytes on as they are: no echo, no line editing, no translation.
    bool isRaw() const;

    /// Keeps others from opening it, as serial programs do.
    bool lock();
    bool isLocked() const;

    /// Count of bytes that have come and were not received yet.
    int unread() const;

    void send(const QByteArray& bytes);

    /// What comes until `count` bytes are there, or until none has come for `limitMs`.
    QByteArray receive(int count, int limitMs = 5000);

    /// What comes up to and including `end`, or until nothing has come for 5 s.
    QByteArray receiveUntil(const QByteArray& end);

    /// Sends `line` with its line end and receives `count` bytes.
    QByteArray exchange(const QByteArray& line, int count);

private:
    int descriptor_ = -1;
};
