#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quorvex {

/// Something that is wrong with a settings file.
struct SettingsFileDefect {
    int line = 0;  ///< from 1; the one behind the last where something is missing
    std::string text;
    bool isRange = false;  ///< a value that means nothing, in a file that is whole otherwise
};

/// What is wrong with the file, in the order of its lines; empty for one as it is written. Loading is more
/// lenient: it takes commas for line ends, and whatever stands there for a value. Throws as FileNumberOne
/// does.
std::vector<SettingsFileDefect> checkSettingsFile(const std::filesystem::path& path);

}  // namespace quorvex
