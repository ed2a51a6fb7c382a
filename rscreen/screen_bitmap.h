#pragma once

#include <string>

#include "rscreen/remote_screen.h"

namespace quorvex {

/// The picture as the bytes of a Windows bitmap file of 256 x 66 pixels, 24 bits each.
std::string bitmapOf(const ScreenBits& bits);

}  // namespace quorvex
