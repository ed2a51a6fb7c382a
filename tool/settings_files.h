#pragma once

#include <QString>
#include <filesystem>
#include <vector>

#include "beltpack/settings_check.h"
#include "beltpack/settings_image.h"

namespace quorvex::tool {

/// What is wrong with a file, a line each: "line 5: Headset Limit: ...".
QString textOf(const std::vector<SettingsFileDefect>& defects);
/// checkSettingsFile, with a Failure where the file cannot be read.
std::vector<SettingsFileDefect> defectsOf(const QString& path);

enum class Ranges { anyValue, demanded };
/// The values of a file that is as it should be. Throws Failure otherwise, which names what is wrong.
SettingsImage loadSettings(const QString& path, Ranges ranges);

/// Refuses what a file could not be saved as. Throws Failure.
void demandSavable(const QString& path);
/// Saves what `image` holds, whole or not at all. Throws Failure.
void saveSettings(const QString& path, const SettingsImage& image);

}  // namespace quorvex::tool
