#include <signal.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <memory>
#include <tuple>

#include "simulator/menu_picture.h"
#include "tests/simulator/pty_client.h"
#include "tests/support/registry.h"

namespace {

constexpr int kLimitMs = 10'000;

/// The first line that `program` prints, waited for.
QByteArray firstLine(QProcess& program) {
    while (!program.canReadLine()) {
        if (!program.waitForReadyRead(kLimitMs))
            return {};
    }
    return program.readLine();
}

bool endsBy(QProcess& program, int signalNumber) {
    ::kill(static_cast<pid_t>(program.processId()), signalNumber);
    return program.waitForFinished(kLimitMs);
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

}  // namespace

/// The built program, through its pseudo-terminal.
class TestProgram : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void answersThroughThePort();
    void endsCleanlyOnSignals_data();
    void endsCleanlyOnSignals();
    void portMayBeReopened();
    void nothingIsLeftForTheNextProgram();
    void nothingGathersWhileThePortIsClosed();
    void survivesAProgramThatDoesNotRead();
    void dumps();
    void dumpThatCannotBeWritten_data();
    void dumpThatCannotBeWritten();
    void dumpWhoseFolderGoes();
    void leavesAnOldDumpUntilTheFirst();
    void showsTraffic();
    void outlivesTheReaderOfItsTraffic();
    void keepsThePace();
    void sendsStreams();
    void linkPath_data();
    void linkPath();
    void leavesALinkThatWasTakenOver();
    void wrongCommandLine_data();
    void wrongCommandLine();
    void help();
    void bench();
    void benchWithoutAPlace();
    void replay();

private:
    void start(const QStringList& arguments);
    /// Waits until `text` has been printed `count` times from now on.
    bool trafficShows(const QByteArray& text, int count);
    QString path(const QString& name) const { return folder_->filePath(name); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<QProcess> program_;
    QString link_;
};

void TestProgram::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    program_ = std::make_unique<QProcess>();
    program_->setProgram(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-simulator");
    link_ = path("port");
}

void TestProgram::cleanup() {
    program_->kill();
    program_->waitForFinished(kLimitMs);
}

void TestProgram::start(const QStringList& arguments) {
    program_->setArguments(QStringList(arguments) << "--link" << link_);
    program_->start();
    QVERIFY2(firstLine(*program_).contains(" ready on " + link_.toLocal8Bit()),
             program_->readAllStandardError().constData());
}

bool TestProgram::trafficShows(const QByteArray& text, int count) {
    QByteArray traffic;
    while (traffic.count(text) < count) {
        if (!program_->waitForReadyRead(kLimitMs))
            return false;
        traffic += program_->readAllStandardOutput();
    }
    return true;
}

void TestProgram::answersThroughThePort() {
    start({"beltpack", "--module", "rm5"});
    PtyClient client(link_);
    QVERIFY(client.isOpen());
    QVERIFY(client.isRaw());
    QCOMPARE(client.exchange("# 0139", 8), "# 01BF\r\n");
    client.send("# 0247AB        \r\n");
    QCOMPARE(client.exchange("# 0107", 10), "# 0287AB\r\n");
}

void TestProgram::endsCleanlyOnSignals_data() {
    QTest::addColumn<int>("signalNumber");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestProgram::endsCleanlyOnSignals() {
    QFETCH(int, signalNumber);
    start({"antenna"});
    QVERIFY(QFileInfo(link_).isSymLink());
    QVERIFY(endsBy(*program_, signalNumber));
    QCOMPARE(program_->exitStatus(), QProcess::NormalExit);
    QCOMPARE(program_->exitCode(), 0);
    QVERIFY(!QFileInfo(link_).isSymLink());
    QCOMPARE(program_->readAllStandardError(), "");
}

void TestProgram::portMayBeReopened() {
    start({"antenna"});
    for (int i = 0; i < 5; ++i) {
        PtyClient client(link_);
        QVERIFY(client.isOpen());
        // Left behind by the one before, as if it had been killed.
        QTRY_VERIFY_WITH_TIMEOUT(!client.isLocked(), kLimitMs);
        QVERIFY(client.lock());
        QVERIFY(client.isLocked());
        QCOMPARE(client.exchange("# 0105", 10), "# 028504\r\n");
    }
}

void TestProgram::nothingIsLeftForTheNextProgram() {
    start({"antenna"});
    {
        PtyClient client(link_);
        client.send("# 0101\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(client.unread(), 10, kLimitMs);
    }
    // The reply that nobody fetched must not be taken for the answer to the next command.
    PtyClient client(link_);
    QTRY_COMPARE_WITH_TIMEOUT(client.unread(), 0, kLimitMs);
    QCOMPARE(client.exchange("# 0102", 10), "# 028228\r\n");
}

void TestProgram::nothingGathersWhileThePortIsClosed() {
    start({"beltpack", "--display-rate", "50", "--traffic"});
    // From the 25th picture on the battery has lost a bar, so that older ones can be told.
    QVERIFY(trafficShows("display frame", 24));
    PtyClient client(link_);
    client.send("# 0102\r\n");
    QVERIFY(trafficShows("> # 0102", 1));
    const QByteArray bytes = client.receiveUntil("# 02821F\r\n");
    QVERIFY(bytes.endsWith("# 02821F\r\n"));
    for (int picture = 0; picture < 24; ++picture)
        QVERIFY(!bytes.contains(QByteArray::fromStdString(quorvex::sim::drawMenu(picture, 0x10).bytes())));
}

void TestProgram::survivesAProgramThatDoesNotRead() {
    const QString dump = path("dump");
    start({"beltpack", "--dump", dump});
    PtyClient client(link_);
    QByteArray commands;
    constexpr int kCommands = 8000;
    for (int i = 0; i < kCommands; ++i)
        commands += "# 0101\r\n";
    client.send(commands + "# 0247AB\r\n");
    // The write is the last command; once it shows, all the replies have been sent.
    const auto allDone = [&] {
        ::kill(static_cast<pid_t>(program_->processId()), SIGUSR1);
        return contents(dump).contains("07=AB");
    };
    QTRY_VERIFY_WITH_TIMEOUT(allDone(), kLimitMs);
    const QByteArray kept = client.receive(kCommands * 18, 200);
    QVERIFY2(kept.startsWith("# 06810044303039\r\n") && kept.size() < kCommands * 18,
             qPrintable(QString::number(kept.size())));
    QCOMPARE(client.exchange("# 0102", 10), "# 02821F\r\n");
}

void TestProgram::dumps() {
    const QString dump = path("dump");
    start({"antenna", "--module", "rm5", "--dump", dump});
    PtyClient client(link_);
    QCOMPARE(client.exchange("# 0101", 10), "# 028121\r\n");
    QVERIFY(!QFileInfo::exists(dump));
    ::kill(static_cast<pid_t>(program_->processId()), SIGUSR1);
    QTRY_COMPARE_WITH_TIMEOUT(contents(dump), "01=21\n02=28\n05=0C\n06=03\n", kLimitMs);
    client.send("# 024107\r\n");
    QCOMPARE(client.exchange("# 0101", 10), "# 028107\r\n");
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(program_->exitCode(), 0);
    QCOMPARE(contents(dump), "01=07\n02=28\n05=0C\n06=03\n");
}

void TestProgram::dumpThatCannotBeWritten_data() {
    QTest::addColumn<QString>("dump");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("absent folder") << "nowhere/dump" << QByteArray("No such file or directory");
    QTest::newRow("folder without rights") << "closed/dump" << QByteArray("Permission denied");
    QTest::newRow("folder") << "folder" << QByteArray("it is a folder");
    QTest::newRow("file as folder") << "file/dump" << QByteArray("Not a directory");
    QTest::newRow("device") << "/dev/null" << QByteArray("it is no file");
}

void TestProgram::dumpThatCannotBeWritten() {
    QFETCH(QString, dump);
    QFETCH(QByteArray, reason);
    QVERIFY(QDir(folder_->path()).mkdir("folder"));
    QVERIFY(write(path("file"), "kept"));
    QVERIFY(QDir(folder_->path()).mkdir("closed"));
    QVERIFY(write(path("closed/dump"), "kept"));
    const auto open = QFile::permissions(path("closed"));
    QVERIFY(QFile::setPermissions(path("closed"), QFile::ReadOwner | QFile::ExeOwner));
    const auto reopen = qScopeGuard([&] { QFile::setPermissions(path("closed"), open); });
    if (dump.startsWith("closed") && QFileInfo(path("closed")).isWritable())
        QSKIP("Nothing is closed to this user.");
    const QString target = QDir(folder_->path()).absoluteFilePath(dump);
    program_->setArguments({"antenna", "--link", link_, "--dump", target});
    program_->start();
    QVERIFY(program_->waitForFinished(kLimitMs));
    QCOMPARE(program_->exitCode(), 1);
    QCOMPARE(program_->readAllStandardError(),
             "quorvex-simulator: Cannot write the dump " + target.toLocal8Bit() + ": " + reason + ".\n");
    QCOMPARE(program_->readAllStandardOutput(), "");
    QCOMPARE(namesIn(folder_->path()), QStringList({"closed", "file", "folder"}));
    QCOMPARE(namesIn(path("folder")), QStringList());
    QCOMPARE(namesIn(path("closed")), QStringList("dump"));
    QCOMPARE(contents(path("file")), "kept");
    QCOMPARE(contents(path("closed/dump")), "kept");
}

void TestProgram::dumpWhoseFolderGoes() {
    QVERIFY(QDir(folder_->path()).mkdir("folder"));
    start({"antenna", "--dump", path("folder/dump")});
    QVERIFY(QDir(folder_->path()).rmdir("folder"));
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(program_->exitCode(), 1);
    QVERIFY(program_->readAllStandardError().contains("Cannot write the dump"));
    QVERIFY(!QFileInfo(link_).isSymLink());
}

void TestProgram::leavesAnOldDumpUntilTheFirst() {
    QVERIFY(write(path("dump"), "old"));
    start({"antenna", "--module", "rm5", "--dump", path("dump")});
    QCOMPARE(contents(path("dump")), "old");
    QCOMPARE(namesIn(folder_->path()), QStringList({"dump", "port"}));
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(contents(path("dump")), "01=21\n02=28\n05=0C\n06=03\n");
    QCOMPARE(namesIn(folder_->path()), QStringList("dump"));
}

void TestProgram::showsTraffic() {
    start({"beltpack", "--traffic", "--fault", "no-reply=02"});
    PtyClient client(link_);
    client.send("# 0102\r\n");
    QCOMPARE(client.exchange("# 0104", 10), "# 028430\r\n");
    QVERIFY(endsBy(*program_, SIGTERM));
    QList<QByteArray> shown;
    for (const QByteArray& line : program_->readAllStandardOutput().split('\n'))
        shown << line.trimmed().mid(line.trimmed().indexOf(' ') + 1);
    QCOMPARE(shown, QList<QByteArray>({"> # 0102", "* fault: no reply", "> # 0104", "< # 028430", ""}));
}

void TestProgram::outlivesTheReaderOfItsTraffic() {
    QProcess reader;
    program_->setStandardOutputProcess(&reader);
    program_->setArguments({"beltpack", "--traffic", "--link", link_});
    program_->start();
    reader.start("head", {"-n", "1"});
    QVERIFY(reader.waitForFinished(kLimitMs));
    QVERIFY(reader.readAllStandardOutput().contains(" ready on "));
    PtyClient client(link_);
    QCOMPARE(client.exchange("# 0102", 10), "# 02821F\r\n");
    QCOMPARE(client.exchange("# 0102", 10), "# 02821F\r\n");
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(program_->exitStatus(), QProcess::NormalExit);
    QVERIFY(!QFileInfo(link_).isSymLink());
}

void TestProgram::keepsThePace() {
    start({"beltpack", "--pace", "1200"});
    PtyClient client(link_);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.exchange("# 0102", 10), "# 02821F\r\n");
    constexpr qint64 kWholeNs = 18LL * 10 * 1'000'000'000 / 1200;
    QVERIFY2(timer.nsecsElapsed() >= kWholeNs, qPrintable(QString::number(timer.nsecsElapsed())));
    QVERIFY2(timer.nsecsElapsed() < 20 * kWholeNs, qPrintable(QString::number(timer.nsecsElapsed())));
}

void TestProgram::sendsStreams() {
    start({"beltpack", "--stream-rate", "50", "--display-rate", "50"});
    PtyClient client(link_);
    QVERIFY(client.receiveUntil("sync").endsWith("sync"));
    QCOMPARE(client.receive(512).size(), 512);
    client.send("! 0309E803\r\n");
    QVERIFY(client.receiveUntil("! 0407").endsWith("! 0407"));
}

void TestProgram::linkPath_data() {
    QTest::addColumn<QString>("there");
    QTest::addColumn<QByteArray>("refusal");
    QTest::newRow("nothing") << QString() << QByteArray();
    QTest::newRow("link to nowhere") << QStringLiteral("nowhere") << QByteArray();
    QTest::newRow("link to a terminal") << QStringLiteral("/dev/pts/ptmx") << QByteArray();
    QTest::newRow("link to a file") << QStringLiteral("file") << QByteArray("is a link to something else");
    QTest::newRow("file") << QStringLiteral("itself") << QByteArray("is no link");
}

void TestProgram::linkPath() {
    QFETCH(QString, there);
    QFETCH(QByteArray, refusal);
    QFile file(there == "itself" ? link_ : path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("kept");
    file.close();
    if (!there.isEmpty() && there != "itself")
        QVERIFY(QFile::link(there.startsWith('/') ? there : path(there), link_));
    if (refusal.isEmpty()) {
        start({"antenna"});
        PtyClient client(link_);
        QCOMPARE(client.exchange("# 0105", 10), "# 028504\r\n");
        return;
    }
    program_->setArguments({"antenna", "--link", link_});
    program_->start();
    QVERIFY(program_->waitForFinished(kLimitMs));
    QCOMPARE(program_->exitCode(), 1);
    QVERIFY(program_->readAllStandardError().contains(refusal));
    QCOMPARE(contents(link_), "kept");
}

void TestProgram::leavesALinkThatWasTakenOver() {
    start({"antenna"});
    QVERIFY(QFile::remove(link_));
    QVERIFY(QFile::link("/dev/null", link_));
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(QFileInfo(link_).symLinkTarget(), "/dev/null");
}

void TestProgram::wrongCommandLine_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("nothing") << QStringList() << QByteArray("Say which unit");
    QTest::newRow("no link") << QStringList("beltpack") << QByteArray("--link PATH");
    QTest::newRow("fault") << QStringList({"beltpack", "--link", "x", "--fault", "lat"})
                           << QByteArray("no fault named");
    QTest::newRow("value") << QStringList({"beltpack", "--link", "x", "--set", "02=X"})
                           << QByteArray("does not fit");
}

void TestProgram::wrongCommandLine() {
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, part);
    program_->setWorkingDirectory(folder_->path());
    program_->setArguments(arguments);
    program_->start();
    QVERIFY(program_->waitForFinished(kLimitMs));
    QCOMPARE(program_->exitStatus(), QProcess::NormalExit);
    QCOMPARE(program_->exitCode(), 2);
    QVERIFY(program_->readAllStandardError().contains(part));
    QCOMPARE(program_->readAllStandardOutput(), "");
    QVERIFY(!QFileInfo(path("x")).isSymLink());
}

void TestProgram::help() {
    program_->setArguments({"--help"});
    program_->start();
    QVERIFY(program_->waitForFinished(kLimitMs));
    QCOMPARE(program_->exitCode(), 0);
    QVERIFY(program_->readAllStandardOutput().startsWith("Usage: quorvex-simulator"));
}

void TestProgram::bench() {
    QVERIFY(write(path("bench"), "beltpack --module rm5 --link " + path("COM1").toLocal8Bit() +
                                     " --set 02=27 --dump " + path("dump").toLocal8Bit() +
                                     "\nantenna --link " + path("COM2").toLocal8Bit() + "\n"));
    program_->setArguments({"bench", path("bench")});
    program_->start();
    QByteArrayList ready{firstLine(*program_), firstLine(*program_)};
    std::ranges::sort(ready);
    QVERIFY2(
        ready[0].startsWith("antenna (Kirk) ready on ") && ready[1].startsWith("beltpack (RM5) ready on "),
        ready.join().constData());
    for (const auto& [link, line, reply] : {std::tuple{"COM1", "# 0102\r\n", "# 028227\r\n"},
                                            {"COM2", "! 0107\r\n", "!DECT Version:4.07;\r\n"}}) {
        PtyClient client(path(link));
        client.send(line);
        QCOMPARE(client.receive(int(qstrlen(reply)), kLimitMs), reply);
    }
    QVERIFY(endsBy(*program_, SIGTERM));
    QCOMPARE(program_->exitStatus(), QProcess::NormalExit);
    QCOMPARE(program_->exitCode(), 0);
    QCOMPARE(namesIn(folder_->path()), QStringList({"bench", "dump"}));
    QVERIFY(contents(path("dump")).contains("02=27\n"));
}

// One unit cannot be there: none is.
void TestProgram::benchWithoutAPlace() {
    QVERIFY(write(path("bench"), "beltpack --link " + path("COM1").toLocal8Bit() + "\nantenna --link " +
                                     path("none/COM2").toLocal8Bit() + "\n"));
    program_->setArguments({"bench", path("bench")});
    program_->start();
    QVERIFY(program_->waitForFinished(kLimitMs));
    QCOMPARE(program_->exitCode(), 1);
    QCOMPARE(namesIn(folder_->path()), QStringList("bench"));
    QVERIFY(program_->readAllStandardError().contains("Cannot make the link"));
}

void TestProgram::replay() {
    QVERIFY(write(path("trace"),
                  "0.000 * open COM1\n0.100 < hello | 68 65 6C 6C 6F\n"
                  "1.000 > x | 23 20 30 31 30 32 0D 0A\n1.020 < y | 23 20 30 32 0D 0A\n"));
    start({"replay", path("trace")});
    PtyClient client(link_);
    QCOMPARE(client.receive(5, kLimitMs), "hello");
    client.send("# 0102\r\n");
    QCOMPARE(client.receive(6, kLimitMs), "# 02\r\n");
}

QUORVEX_TEST(TestProgram, QCoreApplication)
#include "test_program.moc"
