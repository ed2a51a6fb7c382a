#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <filesystem>

#include "link/device_facts_linux.h"
#include "link/port_device.h"
#include "tests/support/bench_top.h"
#include "tests/support/registry.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

/// What the operator is told about a port: which device it is, and what stands in the way.
class TestPortDevice : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { bench_.reset(); }
    void free();
    void absent();
    void inUse();
    void staleLock();
    void noRights();
    void otherwise();
    void noSerialPort();
    void allAtOnce();
    void states();
    void byPath();
    void looksOnce();

private:
    QString device() const { return QFileInfo(bench_->portLink(1)).canonicalFilePath(); }

    std::unique_ptr<BenchTop> bench_;
};

void TestPortDevice::init() {
    bench_ = std::make_unique<BenchTop>();
    qputenv("QUORVEX_PORTS", QFileInfo(bench_->portLink(1)).path().toLocal8Bit());
    bench_->plugIn(1, {"beltpack", "--module", "rm5"});
}

// The simulator has its own device open; that keeps nobody out.
void TestPortDevice::free() {
    QCOMPARE(findPortDevice(1).path, device());
    QCOMPARE(findPortDevice(1).description(), device());
}

void TestPortDevice::absent() {
    QCOMPARE(findPortDevice(2).path, "");
    QCOMPARE(findPortDevice(2).description(),
             bench_->portLink(2) + "\nAbsent: connect the adapter, or choose another port.");
}

void TestPortDevice::inUse() {
    QVERIFY(bench_->start());
    QCOMPARE(findPortDevice(1).description(),
             QString("%1\nIn use by quorvex-config (%2): close that program first.")
                 .arg(device())
                 .arg(bench_->program().id()));
    bench_->program().clickMenu("mnuFile", "mnuExit");
    QCOMPARE(bench_->program().end(), "exit 0");
    QCOMPARE(findPortDevice(1).description(), device());
}

// A program that was killed leaves its lock behind, which keeps nobody out either.
void TestPortDevice::staleLock() {
    QVERIFY(bench_->start());
    QVERIFY(::kill(static_cast<pid_t>(bench_->program().id()), SIGKILL) == 0);
    QCOMPARE(bench_->program().end(), "crash");
    QCOMPARE(findPortDevice(1).description(), device());
    // Nor does it when another program has got the number of the one that was killed.
    QFile lock(device().replace("/dev/pts/", "/var/lock/LCK..pts_"));
    QVERIFY(lock.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = lock.readAll().split('\n');
    QCOMPARE(lines.value(1), QByteArray("quorvex-config"));
    lock.close();
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.write(QByteArray::number(::getppid()) + '\n' + lines.mid(1).join('\n'));
    lock.close();
    QCOMPARE(findPortDevice(1).description(), device());
    QVERIFY(lock.remove());
}

void TestPortDevice::noRights() {
    namespace fs = std::filesystem;
    const QString path = device();
    fs::permissions(path.toStdString(), fs::perms::none);
    // Whoever lacks the superuser's rights must still get as far as the link.
    fs::permissions(QFileInfo(bench_->portLink(1)).path().toStdString(),
                    fs::perms::group_exec | fs::perms::others_exec, fs::perm_options::add);
    const WithoutPrivileges rest;
    QCOMPARE(
        findPortDevice(1).description(),
        QString("%1\nNo rights: join the group \"%2\" and log in again.").arg(path, QFileInfo(path).group()));
}

void TestPortDevice::otherwise() {
    QCOMPARE(findPortDevice(1).description("Closed."), device() + "\nClosed.");
    QVERIFY(findPortDevice(2).description("Closed.").contains("\nAbsent: "));
}

void TestPortDevice::noSerialPort() {
    QVERIFY(QFile::link("/dev/null", bench_->portLink(2)));
    QCOMPARE(findPortDevice(2).description(), "/dev/null\nNo serial port: choose another one.");
    QVERIFY(lookAtPorts(2)[1].kind == PortState::Kind::noSerialPort);
}

void TestPortDevice::allAtOnce() {
    const QString absent = "\nAbsent: connect the adapter, or choose another port.";
    QCOMPARE(describePorts(3),
             std::vector<QString>({device(), bench_->portLink(2) + absent, bench_->portLink(3) + absent}));
}

void TestPortDevice::states() {
    const std::vector<PortState> states = lookAtPorts(2);
    QCOMPARE(states.size(), std::size_t(2));
    QVERIFY(states[0].kind == PortState::Kind::free);
    QCOMPARE(states[0].device.path, device());
    QCOMPARE(states[0].advice, "");
    QVERIFY(states[1].kind == PortState::Kind::absent);
    QCOMPARE(states[1].advice, "Absent: connect the adapter, or choose another port.");
    QVERIFY(bench_->start());
    QVERIFY(lookAtPorts(1)[0].kind == PortState::Kind::inUse);
    std::filesystem::permissions(device().toStdString(), std::filesystem::perms::none);
    std::filesystem::permissions(QFileInfo(bench_->portLink(1)).path().toStdString(),
                                 std::filesystem::perms::others_exec, std::filesystem::perm_options::add);
    const WithoutPrivileges rest;
    QVERIFY(lookAtPorts(1)[0].kind == PortState::Kind::noRights);
}

void TestPortDevice::byPath() {
    QCOMPARE(portDeviceAt(bench_->portLink(1)).path, device());
    QCOMPARE(portDeviceAt(device()).path, device());
    QCOMPARE(portDeviceAt("/dev/none").path, "");
    QCOMPARE(portDeviceAt("/dev/none").asked, "/dev/none");
}

// Whoever asks for many devices has the processes of the machine looked through for the first one only.
void TestPortDevice::looksOnce() {
    QTemporaryDir folder;
    const auto hold = [&folder](QProcess& process, const QString& name) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        process.setStandardInputFile(file.fileName());
        process.start("sleep", {"60"});
        QVERIFY(process.waitForStarted());
    };
    QProcess first, second;
    hold(first, "first");
    DeviceUsers users;
    const QString firstUser = QString("sleep (%1)").arg(first.processId());
    QCOMPARE(users.otherUserOf(folder.filePath("first")), firstUser);
    hold(second, "second");
    QCOMPARE(users.otherUserOf(folder.filePath("first")), firstUser);
    QCOMPARE(users.otherUserOf(folder.filePath("second")), "");
    QCOMPARE(DeviceUsers().otherUserOf(folder.filePath("second")),
             QString("sleep (%1)").arg(second.processId()));
    for (QProcess* process : {&first, &second}) {
        process->kill();
        QVERIFY(process->waitForFinished());
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortDevice, QCoreApplication)
#include "test_port_device.moc"
