#pragma once

#include <QList>
#include <functional>

#include "rscreen/remote_screen.h"
#include "tests/rscreen/frames.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/journal.h"
#include "tests/support/rows.h"

namespace quorvex {

/// The window's side of the remote screen: keeps what it was given to paint, notes "save <path>".
class FakeScreenWindow : public RemoteScreenWindow {
public:
    explicit FakeScreenWindow(Journal& journal) : journal_(journal) {}

    const void* inFront() const override { return front; }
    void repaint(const ScreenBits& bits) override {
        painted.append(
            QByteArray(reinterpret_cast<const char*>(bits.data()), static_cast<qsizetype>(bits.size())));
    }
    std::string savePicture(const std::string& path) override {
        journal_.note("save " + QString::fromStdString(path));
        return problem;
    }

    const void* front = nullptr;  ///< the box that is open
    std::string problem;          ///< what the next save ends with
    QList<QByteArray> painted;    ///< all 33 lines of each picture

private:
    Journal& journal_;
};

/// A remote screen on an open port to a script. A tick that waits lets virtual time pass.
struct ScreenBench {
    explicit ScreenBench(FakeLoop::Tick startTick = 0) : loop(startTick) { port.holdOpen(); }
    ScreenBench(const ScreenBench&) = delete;
    ScreenBench& operator=(const ScreenBench&) = delete;

    void receive(const QByteArray& bytes) { port.receive(bytes.toStdString()); }
    void receiveAt(FakeLoop::Tick tick, const QByteArray& bytes) {
        port.receiveAt(tick, bytes.toStdString());
    }
    bool tick() { return screen.RScreenTimer_Timer(); }
    /// The lines 0 to 31 of the picture painted last.
    QByteArray shownFrame() const {
        return window.painted.isEmpty() ? QByteArray() : window.painted.last().first(kFrameBytes);
    }
    /// The 33rd line of the picture painted last.
    QByteArray shownLastLine() const {
        return window.painted.isEmpty() ? QByteArray() : window.painted.last().sliced(kFrameBytes);
    }
    /// As if `text` were typed over what the counter's field holds, its last key last.
    void typeCounter(const QByteArray& text) {
        counter.type(text.toStdString());
        screen.autoIncValText_Change();
    }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    FakeScreenWindow window{journal};
    FakeField rootDir{journal, "screenDump"};
    FakeField fileName{journal, "ScreenDumpFName"};
    FakeField counter{journal, "autoIncValText"};
    FakeCheck autoIncrement{journal, "AutoIncrementOption"};
    RemoteScreen screen{link, window, {rootDir, fileName, counter, autoIncrement}};
};

/// What the lines 0 to 31 show when `begin` was received over `before`.
inline QByteArray mixed(const QByteArray& begin, const QByteArray& before) {
    return begin + before.sliced(begin.size());
}

}  // namespace quorvex
