#include "beltpack/settings_summary.h"

#include "link/number_text.h"

namespace quorvex {

std::string summaryText(const SettingsImage& image) {
    constexpr const char* kGap = "     ";
    std::string text = "Param  Description              Data\r\n" + std::string(44, '-') + "\r\n";
    for (int i = 0; i < SettingsImage::kParameters; ++i) {
        const Parameter& parameter = image[i];
        text +=
            HexPad(parameter.number, 2) + kGap + parameter.name.str() + kGap + parameter.value.str() + "\r\n";
    }
    return text;
}

}  // namespace quorvex
