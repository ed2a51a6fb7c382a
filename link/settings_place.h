#pragma once

#include <QSettings>
#include <QString>

/// Where the settings are kept: a file of the user's, or on Windows the user's branch of the registry.
namespace quorvex::settings_place {

QSettings::Format format();
QString location();
/// What stands where the settings or their lock are kept and is no ordinary file, so that to open it may wait
/// without end, or lose what it is; empty when nothing does.
QString inTheWay();
/// The settings are there and may not be read.
bool isForbidden();
/// Makes the folder where there is none.
void makeRoom();

}  // namespace quorvex::settings_place
