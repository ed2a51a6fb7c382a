#include "tool/shares.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

/// The command line of each share, one a line; or the status and the words of the refusal.
QString dealtOut(const QString& line) {
    try {
        QStringList lines;
        for (const tool::Share& share : tool::sharesOf(tool::parseCommandLine(line.split(' '))))
            lines << share.words().join(' ');
        return lines.join('\n');
    } catch (const tool::Failure& failure) {
        return QString("%1 %2").arg(int(failure.status())).arg(failure.problem());
    }
}

}  // namespace

/// What each of several ports gets to do, and what is refused before any of them is opened.
class TestShares : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void dealt_data();
    void dealt();
    void refused_data();
    void refused();
    void onePortAndItsDevice();
    void filesThatAreMissing();
    void identitiesInFiles();

private:
    QTemporaryDir ports_;
};

void TestShares::initTestCase() {
    qputenv("QUORVEX_PORTS", ports_.path().toLocal8Bit());
}

void TestShares::dealt_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("shares");
    const auto row = [](const char* line, const char* shares) { QTest::newRow(line) << line << shares; };
    row("--port com1,COM12 read", "--port=COM1 read\n--port=COM12 read");
    row("read --json --port COM2,/dev/serial/ttyU1 {port}.bpc",
        "--port=COM2 --json read COM2.bpc\n--port=/dev/serial/ttyU1 --json read ttyU1.bpc");
    row("--port COM1 read {port}.bpc", "--port=COM1 read COM1.bpc");
    row("--trace={port}/../{port}.trace --port COM1,COM2 version beltpack",
        "--port=COM1 --trace=COM1/../COM1.trace version beltpack\n"
        "--port=COM2 --trace=COM2/../COM2.trace version beltpack");
    row("--port COM1,COM2 screen --frames 2 {port}.bmp",
        "--frames=2 --port=COM1 screen COM1.bmp\n--frames=2 --port=COM2 screen COM2.bmp");
    row("--port COM1,COM11 screen --frames 11 {port}-.bmp",
        "--frames=11 --port=COM1 screen COM1-.bmp\n--frames=11 --port=COM11 screen COM11-.bmp");
    row("--port COM1,COM2,COM3 set psn 1048573",
        "--port=COM1 set psn 1048573\n--port=COM2 set psn 1048574\n--port=COM3 set psn 1048575");
    row("--port COM3,COM1 set psn 0099", "--port=COM3 set psn 99\n--port=COM1 set psn 100");
    row("--port COM1,COM2 set psn 7,3", "--port=COM1 set psn 7\n--port=COM2 set psn 3");
    row("--port COM1,COM2 set system-id 100ECE1000,100ECE1100",
        "--port=COM1 set system-id 100ECE1000\n--port=COM2 set system-id 100ECE1100");
    row("--port COM1,COM2 set pli 1F", "--port=COM1 set pli 1F\n--port=COM2 set pli 1F");
    row("--port COM1,COM2 set pli 1F,1F", "--port=COM1 set pli 1F\n--port=COM2 set pli 1F");
}

void TestShares::dealt() {
    QFETCH(QString, line);
    QFETCH(QString, shares);
    QCOMPARE(dealtOut(line), shares);
}

void TestShares::refused_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("told");
    const auto row = [](const char* line, const char* told) { QTest::newRow(line) << line << told; };
    row("--port COM1,COM2,com1 read", "2 --port: COM1 and com1 are the same port.");
    row("--port /dev/null,COM1,/dev/../dev/null read",
        "2 --port: /dev/null and /dev/../dev/null are the same port.");
    const char* noPort = "2 --port: \"\" is neither COM1 to COM12 nor a device such as /dev/ttyUSB0.";
    row("--port COM1, read", noPort);
    row("--port , read", noPort);
    const char* oneFile =
        "2 CWD/x.bpc would be written for COM1 and for COM2: put {port} into its name, which becomes the "
        "name of "
        "the port.";
    row("--port COM1,COM2 read x.bpc", oneFile);
    row("--port COM1,COM2 read --trace x.bpc", oneFile);
    row("--port COM1 --trace x.bpc write ./x.bpc",
        "2 --trace: x.bpc is what the command works on; name another file.");
    row("--trace x10.bmp screen --frames 11 x.bmp",
        "2 --trace: x10.bmp is what the command works on; name another file.");
    row("--trace x.bpc read x.bpc", "2 --trace: x.bpc is what the command works on; name another file.");
    row("--port COM1,COM2 --trace {port}.x read {port}.x",
        "2 --trace: COM1.x is what the command works on; name another file.");
    row("--port COM1,COM2 screen x.bmp", QByteArray(oneFile).replace("bpc", "bmp").constData());
    row("--port COM1,COM2 --trace {port}/../x read",
        "2 CWD/x would be written for COM1 and for COM2: put {port} into its name, which becomes the "
        "name of the port.");
    row("--port /dev/a/tty,/dev/b/tty read {port}.bpc",
        "2 CWD/tty.bpc would be written for /dev/a/tty and for /dev/b/tty: put {port} into its name, which "
        "becomes the name of the port.");
    // The eleventh picture of one, the first of the other.
    row("--port COM1,COM11 screen --frames 11 {port}.bmp",
        "2 CWD/COM110.bmp would be written for COM1 and for COM11: put {port} into its name, which becomes "
        "the "
        "name of the port.");
    row("--port COM1,COM2 set psn 1,2,3", "2 There are 3 values for 2 ports: each port takes one.");
    row("--port COM1,COM2,COM3 set psn 1,2", "2 There are 2 values for 3 ports: each port takes one.");
    row("--port COM1,COM2 set pli 1F,1F,1F", "2 There are 3 values for 2 ports: each port takes one.");
    const auto twice = [&](const char* line, const QString& what) {
        row(line, qPrintable("2 " + what +
                             " would be set for COM1 and for COM2: it says which unit it is, so give "
                             "each port another one."));
    };
    twice("--port COM1,COM2 set psn 7,007", "Beltpack PSN/ID 0044300007");
    row("--port COM1,COM2 set psn 1048575",
        "2 \"1048576\" is no PSN: it takes a decimal number, 0 to 1048575.");
    row("--port COM1,COM2 set psn 1,", "2 \"\" is no PSN: it takes a decimal number, 0 to 1048575.");
    row("--port COM1,COM2 set psn x", "2 \"x\" is no PSN: it takes a decimal number, 0 to 1048575.");
    row("--port COM1,COM2 set volume 1,2",
        "2 \"volume\" cannot be set; what can is psn, system-id, pli, rf-carriers.");
    row("--port COM1 set psn 1,2", "2 \"1,2\" is no PSN: it takes a decimal number, 0 to 1048575.");
    row("--port COM1,COM2 version x", "2 \"x\" is neither \"beltpack\" nor \"antenna\".");
}

void TestShares::refused() {
    QFETCH(QString, line);
    QFETCH(QString, told);
    QCOMPARE(dealtOut(line), told.replace("CWD", QDir::currentPath()));
}

void TestShares::onePortAndItsDevice() {
    QVERIFY(QFile::link("/dev/null", ports_.filePath("COM4")));
    QCOMPARE(dealtOut("--port COM4,/dev/null read"), "2 --port: COM4 and /dev/null are the same port.");
    QVERIFY(QFile::link("/dev/null", ports_.filePath("COM5")));
    QCOMPARE(dealtOut("--port COM4,COM5 read"), "2 --port: COM4 and COM5 are the same port.");
}

// Each share's own files are looked at.
void TestShares::filesThatAreMissing() {
    const SettingsFolder folder;
    folder.make("COM1.bpc");
    const QString line = "--port COM1,COM2 write " + folder.path("{port}.bpc");
    QCOMPARE(dealtOut(line), QString("5 %1: there is no such file.").arg(folder.path("COM2.bpc")));
    folder.make("COM2.bpc");
    QVERIFY(dealtOut(line).endsWith("--port=COM2 write " + folder.path("COM2.bpc")));
}

// A file with another PSN is needed for each.
void TestShares::identitiesInFiles() {
    const SettingsFolder folder;
    folder.make("COM1.bpc", {{2, "0044300001"}});
    const QString lineOfEach = "--port COM1,COM2 write --with-identity " + folder.path("{port}.bpc");
    const auto told = [](const QString& what) {
        return "2 " + what +
               " would be set for COM1 and for COM2: it says which unit it is, so give each port another "
               "one.";
    };
    folder.make("COM2.bpc", {{4, "100ECE1100"}, {2, "0044300001"}});
    QCOMPARE(dealtOut(lineOfEach), told("Beltpack PSN/ID 0044300001"));
    folder.make("COM2.bpc", {{2, "0044300002"}});
    QVERIFY(dealtOut(lineOfEach).contains("--with-identity --port=COM2 write "));
    const QString lineOfOne = "--port COM1,COM2 write " + folder.path("COM1.bpc");
    QCOMPARE(dealtOut(lineOfOne + " --with-identity"), told("Beltpack PSN/ID 0044300001"));
    QVERIFY(dealtOut(lineOfOne).startsWith("--port=COM1 write "));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestShares, quorvex::NoApplication)
#include "test_shares.moc"
