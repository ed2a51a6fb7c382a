#include <cstdlib>
#include <string>

#include "fuzz/input.h"
#include "fuzz/plain_window.h"
#include "fuzz/scripted_line.h"
#include "link/operation.h"
#include "rscreen/remote_screen.h"

// The capture of frames. Input: what is typed as the number of the next picture, on one line; then the line.
// "{c" in the line does inside a capture's wait what may happen there.

namespace quorvex::fuzz {

namespace {

constexpr std::int32_t kFrameBytes = 512;

struct Window : RemoteScreenWindow {
    const void* inFront() const override { return isBoxOpen ? this : nullptr; }
    void repaint(const ScreenBits& bits) override {
        ++repaints;
        for (std::size_t i = kFrameBytes; i < bits.size(); ++i)
            require(bits[i] == 0, "the last line shows the ground");
    }
    std::string savePicture(const std::string& path) override {
        require(path.ends_with(".bmp"), "a bitmap's name");
        return {};
    }

    bool isBoxOpen = false;
    int repaints = 0;
};

struct Bench {
    explicit Bench(std::string_view script) : line(script) {
        line.onEvent = [this](char what) { happen(what); };
    }

    void happen(char what) {
        if (what == 'b') {
            window.isBoxOpen = !window.isBoxOpen;
        } else if (what == 'o') {
            Operation operation(link);
            tick();
            operation.exchange("# 0139", 8);
        } else {
            tick();
        }
    }
    void tick() {
        const bool wasBusy = link.isBusy();
        const int before = window.repaints;
        const bool whole = screen.RScreenTimer_Timer();
        const std::int32_t count = link.dataBuffer().count();
        require(count >= 0 && count <= kFrameBytes, "no more than a frame is stored");
        require(!whole || (!wasBusy && window.repaints > before), "a whole frame is shown");
    }

    ScriptedLine line;
    QuietConsole console;
    CommandLink link{line, line, console};
    Window window;
    PlainField rootDir, fileName, counter;
    PlainCheck autoIncrement;
    RemoteScreen screen{link, window, {rootDir, fileName, counter, autoIncrement}};
};

void checkCounter(Bench& bench) {
    bench.screen.autoIncValText_Change();
    bench.autoIncrement.setValue(1);
    bench.screen.CommandScreenDump_Click();
    const std::string shown = bench.counter.text();
    const int number = std::atoi(shown.c_str());
    require(number >= 0 && number <= 255, "the number is from 0 to 255");
}

}  // namespace

void tryInput(Input input) {
    const std::string_view typed = input.line();
    Bench bench(input.rest());
    constexpr int kMostTicks = 16;
    for (int tick = 0; tick < kMostTicks; ++tick) {
        try {
            bench.tick();
            bench.line.run(bench.line.ticks() + 250);
        } catch (const OperationRefused&) {  // NOLINT(bugprone-empty-catch): told in the status line
        }
    }
    for (const std::int16_t byte : bench.link.dataBuffer().bytes())
        require(byte >= 0 && byte <= 255, "an entry is a byte");
    bench.counter.setText(typed);
    checkCounter(bench);
}

}  // namespace quorvex::fuzz
