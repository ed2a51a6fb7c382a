#include "tests/support/in_memory_unit.h"

#include <utility>

#include "link/qt_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

InMemoryUnit::InMemoryUnit(sim::Unit& unit, FakeLoop& loop) : unit_(unit), loop_(loop) {
    loop.addSource([&unit] { return unit.nextEventMs(); });
}

void InMemoryUnit::openDevice(int /*number*/) {
    isOpen_ = true;
    static_cast<void>(unit_.take(loop_.ticks()));
    received_.clear();
}

void InMemoryUnit::fetch() {
    const std::string bytes = unit_.take(loop_.ticks());
    if (isOpen_)
        received_ += bytes;
}

std::size_t InMemoryUnit::waiting() {
    fetch();
    return received_.size();
}

void InMemoryUnit::discardInput() {
    demandOpen();
    fetch();
    received_.clear();
}

std::optional<char> InMemoryUnit::read() {
    if (waiting() == 0)
        return std::nullopt;
    const char c = received_.front();
    received_.erase(0, 1);
    return c;
}

void InMemoryUnit::write(char c) {
    demandOpen();
    written_ += c;
}

void InMemoryUnit::flush() {
    demandOpen();
    for (const char c : written_) {
        line_ += c;
        if (line_.ends_with("\r\n"))
            sentLines_.append(fromLatin1(std::exchange(line_, {})).chopped(2));
    }
    unit_.receive(std::exchange(written_, {}), loop_.ticks());
}

void InMemoryUnit::unplug() {
    isOpen_ = false;
    received_.clear();
}

void InMemoryUnit::demandOpen() const {
    if (!isOpen_)
        throw RuntimeFault::portNotOpen();
}

}  // namespace quorvex
