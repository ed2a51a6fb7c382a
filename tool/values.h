#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <array>
#include <string>
#include <vector>

#include "beltpack/settings_image.h"

namespace quorvex::tool {

/// The values of the 21 parameters without the blanks at their ends.
using Values = std::array<std::string, SettingsImage::kParameters>;
Values valuesOf(const SettingsImage& image);

bool isAvailable(const std::string& value);

/// The name of a parameter in the table, as its field holds it, without the blanks at its end.
QString nameOf(int record);
/// Whether it says which unit this is: the PSN or the System ID.
bool isIdentity(int record);
/// "System Id 100ECE1000", the same for whatever is the same value.
QString identityOf(int record, const std::string& value);

/// A parameter with one value here and another there.
struct Difference {
    int record;
    std::string one, other;
};
std::vector<Difference> differences(const Values& one, const Values& other);

/// A line for each difference: "Headset Limit         24 -> 30". `between` stands in place of the arrow.
QString textOf(const std::vector<Difference>& differences, const QString& between);
/// [{"name": "Headset Limit", "before": "24", "after": "30"}]; `one` and `other` are what the values are
/// called.
QJsonArray jsonOf(const std::vector<Difference>& differences, const char* one, const char* other);
/// {"Headset Limit": "30"}; null for what the unit does not have.
QJsonObject jsonOf(const Values& values);

}  // namespace quorvex::tool
