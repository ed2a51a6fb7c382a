#include "link/qt_settings_store.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <utility>

#include "link/qt_text.h"

namespace quorvex {

namespace {

#ifdef Q_OS_WIN
constexpr auto kFormat = QSettings::NativeFormat;
#else
constexpr auto kFormat = QSettings::IniFormat;
#endif

QString settingKey(std::string_view key) {
    return QStringLiteral("Settings/") + fromLatin1(key);
}

/// What stands where the settings or their lock are kept and is no ordinary file, so that to open it may wait
/// without end, or lose what it is; empty when nothing does.
QString inTheWay() {
#ifndef Q_OS_WIN
    for (const char* ending : {"", ".lock"}) {
        const QFileInfo info(QtSettingsStore::location() + QLatin1String(ending));
        if ((info.exists() || info.isSymLink()) && !info.isFile())
            return info.filePath();
    }
#endif
    return {};
}

}  // namespace

QString QtSettingsStore::location() {
#ifdef Q_OS_WIN
    return QStringLiteral("HKEY_CURRENT_USER\\Software\\QuorvexCfg");
#else
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/QuorvexCfg.conf");
#endif
}

std::string QtSettingsStore::get(std::string_view key, std::string_view byDefault) const {
    if (const QString thing = inTheWay(); !thing.isEmpty()) {
        if (!std::exchange(unreadableTold_, true))
            tell_("The settings cannot be read: " + thing.toStdString() + " is no ordinary file.");
        return std::string(byDefault);
    }
    QSettings settings(location(), kFormat);
    settings.sync();  // another program may have written since
    const QVariant stored = settings.value(settingKey(key));
    if (!stored.isValid())
        return std::string(byDefault);
    // A text with commas comes back as its pieces.
    return toLatin1(stored.toStringList().join(QLatin1Char(',')));
}

void QtSettingsStore::save(std::string_view key, std::string_view text) {
    if (const QString thing = inTheWay(); !thing.isEmpty()) {
        tell_("The settings could not be saved.\r\n" + thing.toStdString() + " is no ordinary file.");
        return;
    }
#ifndef Q_OS_WIN
    QDir().mkpath(QFileInfo(location()).absolutePath());
#endif
    QSettings settings(location(), kFormat);
    const QVariant before = settings.value(settingKey(key));
    settings.setValue(settingKey(key), fromLatin1(text));
    settings.sync();
    // Lines that make no sense are reported as an error too, but the rest has been saved.
    if (settings.status() != QSettings::AccessError)
        return;
    // The toolkit keeps what it could not write and would hand it out; what is stored counts.
    if (before.isValid())
        settings.setValue(settingKey(key), before);
    else
        settings.remove(settingKey(key));
    tell_("The settings could not be saved.\r\nCheck the space and the rights of the settings folder.");
}

}  // namespace quorvex
