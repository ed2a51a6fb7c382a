#include "simulator/menu_picture.h"

#include <algorithm>

namespace quorvex::sim {

namespace {

constexpr int kLineHeight = 8;

void drawBattery(Screen& screen, int bars) {
    constexpr int kLeft = 108;
    screen.frame(kLeft, 0, 17, kLineHeight - 1);
    screen.fill(kLeft + 17, 2, 2, 3);
    for (int bar = 0; bar < bars; ++bar)
        screen.fill(kLeft + 2 + 5 * bar, 2, 3, 3);
}

void drawVolume(Screen& screen, int y, int volume) {
    constexpr int kLeft = 60;
    constexpr int kFull = 31;
    screen.frame(kLeft, y, 2 * kFull + 4, kLineHeight - 1);
    screen.fill(kLeft + 2, y + 2, 2 * std::clamp(volume, 0, kFull), 3);
}

}  // namespace

Screen drawMenu(int picture, int volume) {
    constexpr int kPicturesPerStep = 8;
    constexpr int kPicturesPerBar = 24;
    Screen screen;
    screen.text(1, 0, "BELTPACK  CH 1");
    drawBattery(screen, 3 - picture / kPicturesPerBar % 4);
    screen.text(8, kLineHeight, "VOLUME");
    drawVolume(screen, kLineHeight, volume);
    screen.text(8, 2 * kLineHeight, "MIC GAIN   2");
    screen.text(8, 3 * kLineHeight, "SIDETONE   OFF");
    const int cursorY = (1 + picture / kPicturesPerStep % 3) * kLineHeight;
    screen.text(1, cursorY, ">");
    screen.invert(0, cursorY, 58, kLineHeight - 1);
    return screen;
}

}  // namespace quorvex::sim
