#include <sys/stat.h>

#include <QDir>
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
    void noRightToRead();
    void somethingElseInItsPlace_data();
    void somethingElseInItsPlace();

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
    store.onFailure([&](const std::string&) { ++failures; });
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
    store.onFailure([&](const std::string&) { ++failures; });
    store.save("ComPort", "7");
    QCOMPARE(failures, 0);
    QCOMPARE(store.get("ComPort", "none"), "7");
    QVERIFY2(content().contains("ComPort=7"), content().constData());
}

void TestSettingsStore::somethingElseInItsPlace_data() {
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("ending");
    for (const char* ending : {"", ".lock"}) {
        for (const char* what : {"FIFO", "socket", "folder", "link to a device", "link to nothing"})
            QTest::addRow("%s%s", what, ending) << what << ending;
    }
}

void TestSettingsStore::noRightToRead() {
    write("[Settings]\nComPort=2\n");
    QVERIFY(QFile::setPermissions(QtSettingsStore::location(), QFile::Permissions()));
    QtSettingsStore store;
    std::vector<std::string> told;
    store.onFailure([&](const std::string& text) { told.push_back(text); });
    {
        const WithoutPrivileges rest;
        QCOMPARE(store.get("ComPort", "1"), std::string("1"));
        QCOMPARE(store.get("RfModule", "0"), std::string("0"));
    }
    QCOMPARE(told, std::vector<std::string>{"The settings cannot be read: you have no right to read " +
                                            QtSettingsStore::location().toStdString() + "."});
}

// It is told of within a moment, once for reading and at each save, and stays what it is.
void TestSettingsStore::somethingElseInItsPlace() {
    QFETCH(QString, what);
    QFETCH(QString, ending);
    const QString name = QtSettingsStore::location() + ending;
    const QByteArray path = name.toLocal8Bit();
    if (what == "FIFO")
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
    else if (what == "socket")
        QCOMPARE(::mknod(path.constData(), S_IFSOCK | 0600, 0), 0);
    else if (what == "folder")
        QVERIFY(QDir().mkdir(name));
    else
        QVERIFY(QFile::link(what == "link to a device" ? "/dev/full" : "/nowhere/at/all", name));
    struct stat before {};
    QCOMPARE(::lstat(path.constData(), &before), 0);

    QtSettingsStore store;
    std::vector<std::string> told;
    store.onFailure([&](const std::string& text) { told.push_back(text); });
    QCOMPARE(store.get("ComPort", "1"), std::string("1"));
    QCOMPARE(store.get("RfModule", "0"), std::string("0"));
    QCOMPARE(told, std::vector<std::string>{"The settings cannot be read: " + name.toStdString() +
                                            " is no ordinary file."});
    told.clear();
    store.save("ComPort", "3");
    QCOMPARE(told, std::vector<std::string>{"The settings could not be saved.\r\n" + name.toStdString() +
                                            " is no ordinary file."});
    struct stat after {};
    QCOMPARE(::lstat(path.constData(), &after), 0);
    QCOMPARE(after.st_ino, before.st_ino);
    QCOMPARE(after.st_mode, before.st_mode);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsStore, QCoreApplication)
#include "test_settings_store.moc"
