#pragma once

#include "link/operation.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/journal.h"

namespace quorvex {

/// A command link on an open port to a script.
struct LinkFixture {
    explicit LinkFixture(FakeLoop::Tick startTick = 0) : loop(startTick) { port.holdOpen(); }
    LinkFixture(const LinkFixture&) = delete;
    LinkFixture& operator=(const LinkFixture&) = delete;

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
};

/// Of a capture that nothing interrupts.
inline bool always() {
    return true;
}

/// Characters that arrive together.
struct Chunk {
    FakeLoop::Tick tick;
    QByteArray bytes;
};
using Chunks = QList<Chunk>;

inline void feed(FakePort& port, const Chunks& chunks) {
    for (const Chunk& chunk : chunks)
        port.receiveAt(chunk.tick, chunk.bytes.toStdString());
}

}  // namespace quorvex

Q_DECLARE_METATYPE(quorvex::Chunks)
