#include <utime.h>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <ctime>

#include <QTemporaryDir>
#include "link/qt_serial_port.h"
#include "link/runtime_fault.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kPort = 1;
}

/// Lock files of other programs: a live one keeps the port, whatever the form and the age of its lock, a dead
/// one does not.
class TestPortLock : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void locks_data();
    void locks();
    void noNumberInIt_data();
    void noNumberInIt();

private:
    void write(const QByteArray& content, bool old);
    QByteArray content() const;
    bool opens();

    std::unique_ptr<QTemporaryDir> ports_;
    std::unique_ptr<PseudoTerminal> terminal_;
    std::unique_ptr<QProcess> other_;
    QString lock_;
};

void TestPortLock::init() {
    ports_ = std::make_unique<QTemporaryDir>();
    terminal_ = std::make_unique<PseudoTerminal>();
    QVERIFY(terminal_->linkAs(ports_->filePath("COM1")));
    qputenv("QUORVEX_PORTS", ports_->path().toLocal8Bit());
    lock_ = terminal_->path().replace("/dev/pts/", "/var/lock/LCK..pts_");
}

void TestPortLock::cleanup() {
    QFile::remove(lock_);
    other_.reset();
}

void TestPortLock::write(const QByteArray& content, bool old) {
    QFile lock(lock_);
    QVERIFY(lock.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(lock.write(content), content.size());
    lock.close();
    constexpr std::time_t kDay = 86'400;
    const std::time_t then = std::time(nullptr) - (old ? kDay : 0);
    const utimbuf times{then, then};
    QCOMPARE(::utime(lock_.toLocal8Bit().constData(), &times), 0);
}

QByteArray TestPortLock::content() const {
    QFile lock(lock_);
    return lock.open(QIODevice::ReadOnly) ? lock.readAll() : QByteArray();
}

bool TestPortLock::opens() {
    QtSerialPort port;
    try {
        port.open(kPort);
    } catch (const RuntimeFault&) {
        return false;
    }
    return port.isOpen();
}

void TestPortLock::locks_data() {
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("holder");
    QTest::addColumn<bool>("old");
    for (const char* form : {"%1\n", "%1", "      %1\n", "%1 sleep root\n", "%1\nsleep\nhost\n"}) {
        for (const char* holder : {"live", "dead", "reused number"}) {
            for (const bool old : {false, true})
                QTest::addRow("'%s' of a %s process, %s", qPrintable(QString(form).replace('\n', '/')),
                              holder, old ? "old" : "fresh")
                    << form << holder << old;
        }
    }
}

void TestPortLock::locks() {
    QFETCH(QString, form);
    QFETCH(QString, holder);
    QFETCH(bool, old);
    // "sleep" keeps whatever it is given as its input open, or does not.
    other_ = std::make_unique<QProcess>();
    if (holder == "live")
        other_->setStandardInputFile(terminal_->path());
    other_->start("sleep", {"60"});
    QVERIFY(other_->waitForStarted());
    const QByteArray written = form.arg(other_->processId()).toLatin1();
    if (holder == "dead") {
        other_->kill();
        QVERIFY(other_->waitForFinished());
    }
    write(written, old);
    QCOMPARE(opens(), holder != "live");
    if (holder == "live")
        QCOMPARE(content(), written);
    other_->kill();
    other_->waitForFinished();
    QVERIFY(opens());
}

void TestPortLock::noNumberInIt_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a name") << QByteArray("self\n");
    QTest::newRow("a path") << QByteArray("../proc/1\n");
    QTest::newRow("0") << QByteArray("0\n");
    QTest::newRow("junk") << QByteArray(100'000, '\xFF');
}

void TestPortLock::noNumberInIt() {
    QFETCH(QByteArray, content);
    write(content, false);
    QVERIFY(opens());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortLock, QCoreApplication)
#include "test_port_lock.moc"
