#pragma once

#include "simulator/screen.h"

namespace quorvex::sim {

/// What the Beltpack shows: a title line with the battery, which loses one of its three bars every 24th
/// picture, and a menu of three lines whose cursor moves on every eighth. `picture` counts the pictures from
/// 0; `volume` is the Master Volume, shown as a bar that is full at 31.
Screen drawMenu(int picture, int volume);

}  // namespace quorvex::sim
