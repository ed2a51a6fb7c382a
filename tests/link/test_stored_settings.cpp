#include <QSettings>
#include <QTest>

#include "link/qt_settings_store.h"
#include "link/settings_place.h"
#include "tests/support/registry.h"

namespace quorvex {

/// Settings as they may have been stored by another program or by hand. Where they are not kept in a file of
/// the test's own they are put back as they were.
class TestStoredSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { before_ = QSettings(settings_place::location(), settings_place::format()).value(kKey); }
    void cleanup();
    void kinds_data();
    void kinds();
    void none();
    void savedAndRead();

private:
    static constexpr const char* kKey = "Settings/ComPort";

    QVariant before_;
};

void TestStoredSettings::cleanup() {
    QSettings settings(settings_place::location(), settings_place::format());
    if (before_.isValid())
        settings.setValue(kKey, before_);
    else
        settings.remove(kKey);
}

void TestStoredSettings::kinds_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QVariant(QString("3")) << "3";
    QTest::newRow("number") << QVariant(3) << "3";
    QTest::newRow("large number") << QVariant(qlonglong(70000)) << "70000";
    // In a file of settings this is kept apart from a text.
    QTest::newRow("short number") << QVariant::fromValue(short(3)) << "3";
    QTest::newRow("pieces") << QVariant(QStringList({"a", " b", ""})) << "a, b,";
    QTest::newRow("one piece") << QVariant(QStringList("7")) << "7";
    QTest::newRow("empty") << QVariant(QString("")) << "";
}

void TestStoredSettings::kinds() {
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QSettings(settings_place::location(), settings_place::format()).setValue(kKey, value);
    QCOMPARE(QString::fromStdString(QtSettingsStore().get("ComPort", "none")), text);
}

void TestStoredSettings::none() {
    QSettings(settings_place::location(), settings_place::format()).remove(kKey);
    QCOMPARE(QtSettingsStore().get("ComPort", "none"), "none");
}

void TestStoredSettings::savedAndRead() {
    for (const char* text : {"7", "", "a,b", "\xE4\\\""}) {
        QtSettingsStore().save("ComPort", text);
        QCOMPARE(QtSettingsStore().get("ComPort", "none"), text);
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestStoredSettings, QCoreApplication)
#include "test_stored_settings.moc"
