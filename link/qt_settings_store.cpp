#include "link/qt_settings_store.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

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
    QSettings settings(location(), kFormat);
    settings.sync();  // another program may have written since
    const QVariant stored = settings.value(settingKey(key));
    if (!stored.isValid())
        return std::string(byDefault);
    // A text with commas comes back as its pieces.
    return toLatin1(stored.toStringList().join(QLatin1Char(',')));
}

void QtSettingsStore::save(std::string_view key, std::string_view text) {
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
    if (saveFailed_)
        saveFailed_();
}

}  // namespace quorvex
