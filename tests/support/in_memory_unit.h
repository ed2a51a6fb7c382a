#pragma once

#include <QStringList>
#include <string>

#include "link/serial_port.h"
#include "simulator/unit.h"
#include "tests/support/fake_loop.h"

namespace quorvex {

/// A simulated unit at the other end of the program's port, in virtual time.
class InMemoryUnit : public SerialPort {
public:
    /// Open from the start. The unit and the loop must outlive it.
    InMemoryUnit(sim::Unit& unit, FakeLoop& loop);

    void close() override { unplug(); }
    bool isOpen() const override { return isOpen_; }
    std::size_t waiting() override;
    void discardInput() override;
    std::optional<char> read() override;
    void write(char c) override;
    void flush() override;

    void unplug();
    /// The lines that were sent to the unit, without their line ends.
    const QStringList& sentLines() const { return sentLines_; }

private:
    void openDevice(int number) override;
    void fetch();
    void demandOpen() const;

    sim::Unit& unit_;
    FakeLoop& loop_;
    bool isOpen_ = true;
    std::string written_, received_, line_;
    QStringList sentLines_;
};

}  // namespace quorvex
