#include "link/settings_place.h"

namespace quorvex::settings_place {

QSettings::Format format() {
    return QSettings::NativeFormat;
}

QString location() {
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\QuorvexCfg");
}

QString inTheWay() {
    return {};
}

bool isForbidden() {
    return false;
}

void makeRoom() {}

}  // namespace quorvex::settings_place
