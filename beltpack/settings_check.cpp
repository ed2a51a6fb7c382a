#include "beltpack/settings_check.h"

#include <algorithm>

#include "beltpack/settings_file.h"
#include "link/number_text.h"

namespace quorvex {

namespace {

std::string inQuotes(std::string_view text) {
    return "\"" + printable(text) + "\"";
}

/// What is wrong with `value`; empty text for nothing.
SettingsFileDefect defectOf(const Parameter& parameter, std::string_view value) {
    if (value == kNotAvailable)
        return {};
    if (value.empty())
        return {0, "has no value"};
    if (!std::all_of(value.begin(), value.end(), isHexDigit))
        return {0, inQuotes(value) + " is not hexadecimal"};
    if (static_cast<int>(value.size()) != parameter.digits())
        return {0, inQuotes(value) + " has " + std::to_string(value.size()) + " digits in place of " +
                       std::to_string(parameter.digits())};
    if (parameter.highest >= 0 && hexValue(value) > static_cast<std::uint64_t>(parameter.highest))
        return {0, inQuotes(value) + " is out of its range, 00 to " + HexPad(parameter.highest, 2), true};
    return {};
}

std::string nameOf(const Parameter& parameter) {
    return std::string(trimmedRight(parameter.name.str()));
}

}  // namespace

std::vector<SettingsFileDefect> checkSettingsFile(const std::filesystem::path& path) {
    FileNumberOne file;
    file.openForInput(path);
    if (file.atEnd())
        return {{1, "the file is empty"}};
    if (const std::string first = file.readLine(); first != kSettingsSignature)
        return {{1, inQuotes(first) + " is not the signature " + inQuotes(kSettingsSignature)}};
    std::vector<SettingsFileDefect> defects;
    const SettingsImage image;
    int line = 2;
    for (int i = 0; i < SettingsImage::kParameters; ++i, ++line) {
        if (file.atEnd()) {
            defects.push_back({line, nameOf(image[i]) + ": the file ends here, " +
                                         std::to_string(SettingsImage::kParameters - i) + " of " +
                                         std::to_string(SettingsImage::kParameters) + " values are missing"});
            return defects;
        }
        SettingsFileDefect defect = defectOf(image[i], trimmedRight(file.readLine()));
        if (!defect.text.empty())
            defects.push_back({line, nameOf(image[i]) + ": " + defect.text, defect.isRange});
    }
    if (!file.atEnd())
        defects.push_back({line, "more than " + std::to_string(SettingsImage::kParameters) + " values"});
    return defects;
}

}  // namespace quorvex
