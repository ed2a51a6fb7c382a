#pragma once

#include <string>

#include "beltpack/settings_image.h"

namespace quorvex {

/// The image as a table for a fixed-pitch face: two heading lines and a row of 42 characters for each of
/// the 21 parameters; every line ends with carriage return and line feed.
std::string summaryText(const SettingsImage& image);

}  // namespace quorvex
