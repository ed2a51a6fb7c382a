#pragma once

#include <cstdint>

namespace quorvex {

/// How the calibration dialog ended; owned by the main window, written by the dialog.
enum class CalResult : std::int16_t { none = 0, cancelled = 1, confirmed = 2 };

// The dialog's captions are also its key for the unit it works on.
inline constexpr const char* kCalibrateBeltpack = "Calibrate Beltpack";
inline constexpr const char* kCalibrateModuleA = "Calibrate Active Antenna - Module A";
inline constexpr const char* kCalibrateModuleB = "Calibrate Active Antenna - Module B";

}  // namespace quorvex
