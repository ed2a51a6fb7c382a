#include "link/qt_settings_store.h"

#include <QSettings>
#include <utility>

#include "link/qt_text.h"
#include "link/settings_place.h"

namespace quorvex {

namespace {

QString settingKey(std::string_view key) {
    return QStringLiteral("Settings/") + fromLatin1(key);
}

/// As text, whatever kind of value it was stored as.
std::string textOf(const QVariant& stored) {
    // A text with commas comes back as its pieces.
    if (stored.typeId() == QMetaType::QStringList)
        return toLatin1(stored.toStringList().join(QLatin1Char(',')));
    return toLatin1(stored.toString());
}

}  // namespace

QString QtSettingsStore::location() {
    return settings_place::location();
}

std::string QtSettingsStore::get(std::string_view key, std::string_view byDefault) const {
    if (const QString thing = settings_place::inTheWay(); !thing.isEmpty()) {
        tellUnreadable(thing.toStdString() + " is no ordinary file.");
        return std::string(byDefault);
    }
    QSettings settings(location(), settings_place::format());
    settings.sync();  // another program may have written since
    if (settings_place::isForbidden())
        tellUnreadable("you have no right to read " + location().toStdString() + ".");
    const QVariant stored = settings.value(settingKey(key));
    return stored.isValid() ? textOf(stored) : std::string(byDefault);
}

void QtSettingsStore::tellUnreadable(const std::string& why) const {
    if (!std::exchange(unreadableTold_, true))
        tell_("The settings cannot be read: " + why);
}

void QtSettingsStore::save(std::string_view key, std::string_view text) {
    if (const QString thing = settings_place::inTheWay(); !thing.isEmpty()) {
        tell_("The settings could not be saved.\r\n" + thing.toStdString() + " is no ordinary file.");
        return;
    }
    settings_place::makeRoom();
    QSettings settings(location(), settings_place::format());
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
