#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "link/qt_settings_store.h"
#include "tests/support/registry.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

/// The settings file under faults.
class TestSettingsStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void notSaved_data();
    void notSaved();
    void savedAmongNonsense();

private:
    void write(const QByteArray& text);
    QByteArray content();

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestSettingsStore::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", folder_->path().toLocal8Bit());
}

void TestSettingsStore::write(const QByteArray& text) {
    QFile file(QtSettingsStore::location());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QByteArray TestSettingsStore::content() {
    QFile file(QtSettingsStore::location());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestSettingsStore::notSaved_data() {
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("value");
    QTest::newRow("another value") << QByteArray("[Settings]\nComPort=1\n") << "1";
    QTest::newRow("no value") << QByteArray("[Settings]\nRfModule=1\n") << "none";
}

// What could not be saved is told, and is not taken for stored.
void TestSettingsStore::notSaved() {
    QFETCH(QByteArray, stored);
    QFETCH(QString, value);
    write(stored);
    constexpr auto kReadable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup;
    QVERIFY(QFile::setPermissions(QtSettingsStore::location(), QFile::ReadOwner | QFile::ReadGroup));
    QVERIFY(QFile::setPermissions(folder_->path(), kReadable));
    QtSettingsStore store;
    int failures = 0;
    store.onSaveFailed([&] { ++failures; });
    {
        const WithoutPrivileges rest;
        store.save("ComPort", "2");
        QCOMPARE(failures, 1);
        QCOMPARE(QString::fromStdString(store.get("ComPort", "none")), value);
        QCOMPARE(QString::fromStdString(QtSettingsStore().get("ComPort", "none")), value);
    }
    QCOMPARE(content(), stored);
    QVERIFY(QFile::setPermissions(folder_->path(), kReadable | QFile::WriteOwner));
}

void TestSettingsStore::savedAmongNonsense() {
    write("garbage\n[Settings\nComPort=2\n=3\n");
    QtSettingsStore store;
    int failures = 0;
    store.onSaveFailed([&] { ++failures; });
    store.save("ComPort", "7");
    QCOMPARE(failures, 0);
    QCOMPARE(store.get("ComPort", "none"), "7");
    QVERIFY2(content().contains("ComPort=7"), content().constData());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsStore, QCoreApplication)
#include "test_settings_store.moc"
