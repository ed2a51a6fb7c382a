#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cerrno>

#include "link/settings_place.h"

namespace quorvex::settings_place {

QSettings::Format format() {
    return QSettings::IniFormat;
}

QString location() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/QuorvexCfg.conf");
}

QString inTheWay() {
    for (const char* ending : {"", ".lock"}) {
        const QFileInfo info(location() + QLatin1String(ending));
        if ((info.exists() || info.isSymLink()) && !info.isFile())
            return info.filePath();
    }
    return {};
}

bool isForbidden() {
    return ::faccessat(AT_FDCWD, QFile::encodeName(location()).constData(), R_OK, AT_EACCESS) != 0 &&
           errno == EACCES;
}

void makeRoom() {
    QDir().mkpath(QFileInfo(location()).absolutePath());
}

}  // namespace quorvex::settings_place
