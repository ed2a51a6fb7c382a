#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "link/device_facts_linux.h"
#include "tests/support/registry.h"

namespace quorvex {

/// What the operating system tells of the adapter that a serial device is on.
class TestAdapter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void known_data();
    void known();
    void unknown_data();
    void unknown();

private:
    /// A device "ttyUSB0" at `place`, and the facts in the folder "usb1/1-2" of the adapter.
    static void make(const QDir& system, const QString& place, const QMap<QString, QByteArray>& facts);
};

void TestAdapter::make(const QDir& system, const QString& place, const QMap<QString, QByteArray>& facts) {
    const QString adapter = system.filePath("devices/usb1/1-2");
    QVERIFY(QDir().mkpath(adapter) && QDir().mkpath(system.filePath("devices/" + place)) &&
            QDir().mkpath(system.filePath("class/tty/ttyUSB0")));
    QVERIFY(QFile::link(system.filePath("devices/" + place), system.filePath("class/tty/ttyUSB0/device")));
    for (auto fact = facts.begin(); fact != facts.end(); ++fact) {
        QFile file(adapter + '/' + fact.key());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(fact.value()) == fact.value().size());
    }
}

void TestAdapter::known_data() {
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("maker");
    QTest::addColumn<QString>("product");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<QString>("text");
    const QString port = "usb1/1-2/1-2:1.0/ttyUSB0";
    QTest::newRow("all") << port << "Acme\n"
                         << "Serial Cable\n"
                         << "A1B2\n"
                         << "Acme Serial Cable, serial number A1B2";
    QTest::newRow("device is the interface") << "usb1/1-2/1-2:1.0"
                                             << "Acme\n"
                                             << "Modem\n"
                                             << "7\n"
                                             << "Acme Modem, serial number 7";
    QTest::newRow("no serial number") << port << "Acme\n"
                                      << "Serial Cable\n"
                                      << QString() << "Acme Serial Cable";
    QTest::newRow("no maker") << port << QString() << "Serial Cable\n"
                              << "9\n"
                              << "Serial Cable, serial number 9";
    QTest::newRow("blanks") << port << "  Acme \n"
                            << "Serial  Cable\n"
                            << "\n"
                            << "Acme Serial Cable";
}

void TestAdapter::known() {
    QFETCH(QString, place);
    QFETCH(QString, maker);
    QFETCH(QString, product);
    QFETCH(QString, serial);
    QFETCH(QString, text);
    const QTemporaryDir system;
    QMap<QString, QByteArray> facts;
    for (const auto& [name, fact] :
         {std::pair{"manufacturer", maker}, {"product", product}, {"serial", serial}}) {
        if (!fact.isNull())
            facts[name] = fact.toUtf8();
    }
    make(QDir(system.path()), place, facts);
    QCOMPARE(adapterOf("/dev/ttyUSB0", system.path()), text);
}

void TestAdapter::unknown_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("place");
    QTest::newRow("no such device") << "/dev/ttyUSB1"
                                    << "usb1/1-2/1-2:1.0/ttyUSB0";
    QTest::newRow("no path") << ""
                             << "usb1/1-2/1-2:1.0/ttyUSB0";
    QTest::newRow("on no adapter") << "/dev/ttyUSB0"
                                   << "platform/serial8250";
    QTest::newRow("too far above") << "/dev/ttyUSB0"
                                   << "usb1/1-2/a/b/c/d";
}

void TestAdapter::unknown() {
    QFETCH(QString, path);
    QFETCH(QString, place);
    const QTemporaryDir system;
    make(QDir(system.path()), place, {{"product", "Serial Cable"}});
    QCOMPARE(adapterOf(path, system.path()), QString());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAdapter, QCoreApplication)
#include "test_adapter.moc"
