#include <fcntl.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <array>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "link/operation.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "link/runtime_fault.h"
#include "tests/support/cpu_time.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

constexpr int kSerialPort = 5;
constexpr int kSlackMs = 400;  ///< that a loaded machine may add to a limit

class NoConsole : public Console {
public:
    void status(std::string_view, Colour) override {}
    void messageBox(std::string_view, Icon, std::string_view) override {}
    void beep() override {}
    void hourglass(bool) override {}
};

/// Qt's own loop, watched: what is on the wire when a wait begins.
class WatchedLoop : public EventLoop {
public:
    explicit WatchedLoop(const PseudoTerminal& terminal) : terminal_(terminal) {}
    std::int32_t ticks() const override { return loop_.ticks(); }
    void run(std::int32_t untilTick) override {
        if (turns_++ == 0)
            onWireAtFirstWait_ = terminal_.arrived();
        loop_.run(untilTick);
    }
    QByteArray onWireAtFirstWait() const { return onWireAtFirstWait_; }
    int turns() const { return turns_; }

private:
    const PseudoTerminal& terminal_;
    QtEventLoop loop_;
    QByteArray onWireAtFirstWait_;
    int turns_ = 0;
};

double processorMs() {
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    const auto ms = [](const timeval& time) {
        return double(time.tv_sec) * 1000 + double(time.tv_usec) / 1000;
    };
    return ms(used.ru_utime) + ms(used.ru_stime);
}

}  // namespace

/// The real port, the real clock and the real event loop, with a
/// pseudo-terminal for the cable.
class TestSerialPort : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void lineSettings();
    void arrivedOnly_data();
    void arrivedOnly();
    void arrivedOnlyIsAtOnce();
    void blockWithoutAWait();
    void arrivedBlockBehindItsMarker();
    void commandIsOnTheWire();
    void everythingIsOnTheWireAtTheFirstWait();
    void sendingDropsWhatWaits();
    void openingDropsWhatWaits();
    void droppedBehindTheLoopsBack();
    void keepsSomeOfWhatNobodyReads();
    void unitThatDoesNotRead();
    void allBytesPass();
    void silence_data();
    void silence();
    void eachCharacterRestartsTheLimit();
    void floodKeepsTheWindowAlive();
    void hangUpInAWait();
    void hangUpAtRest();
    void hungUpPortCostsNothing();
    void opensAgain();
    void closedBehindALoss_data();
    void closedBehindALoss();
    void closedPort();
    void cannotOpen_data();
    void cannotOpen();
    void noFolderOfPorts();

private:
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<PseudoTerminal> terminal_;
    std::unique_ptr<QtSerialPort> port_;
    QtEventLoop loop_;
    NoConsole console_;
    std::unique_ptr<CommandLink> link_;
};

void TestSerialPort::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    qputenv("QUORVEX_PORTS", folder_->path().toLocal8Bit());
    terminal_ = std::make_unique<PseudoTerminal>();
    QVERIFY(terminal_->linkAs(folder_->filePath("COM5")));
    port_ = std::make_unique<QtSerialPort>();
    link_ = std::make_unique<CommandLink>(*port_, loop_, console_);
    port_->open(kSerialPort);
    QVERIFY(port_->isOpen());
}

void TestSerialPort::cleanup() {
    link_.reset();
    port_.reset();
    terminal_.reset();
}

// As far as a pseudo-terminal keeps them: it knows no even parity and no 7 bits.
void TestSerialPort::lineSettings() {
    const int device = ::open(terminal_->path().toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    QVERIFY(device >= 0);
    termios settings{};
    const int asked = ::tcgetattr(device, &settings);
    ::close(device);
    QCOMPARE(asked, 0);
    QCOMPARE(::cfgetispeed(&settings), speed_t{B19200});
    QCOMPARE(::cfgetospeed(&settings), speed_t{B19200});
    QCOMPARE(settings.c_cflag & CSIZE, tcflag_t{CS8});
    QCOMPARE(settings.c_cflag & (PARENB | PARODD | CSTOPB | CRTSCTS), tcflag_t{0});
    QCOMPARE(settings.c_iflag & (IXON | IXOFF | IXANY | INPCK), tcflag_t{0});
}

// No event has run between the arrival and the read.
void TestSerialPort::arrivedOnly_data() {
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("characters");
    QTest::newRow("line") << QByteArray("#12345\r") << "#12345"
                          << "#12345";
    QTest::newRow("with a line before") << QByteArray("xx\r\n#1234\r\n56") << "#1234"
                                        << "#12345";
    QTest::newRow("incomplete") << QByteArray("#1234") << "Error"
                                << "Error";
    QTest::newRow("nothing") << QByteArray() << "Error"
                             << "Error";
    QTest::newRow("no start") << QByteArray("0123456\r") << "Error"
                              << "Error";
}

void TestSerialPort::arrivedOnly() {
    QFETCH(QByteArray, sent);
    QFETCH(QString, line);
    QFETCH(QString, characters);
    terminal_->send(sent);
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kArrivedOnly, '\r')), line);
    port_->discardInput();
    terminal_->send(sent);
    QCOMPARE(shown(Operation(*link_).serialGetResponseChars(limit::kArrivedOnly, 6)), characters);
}

void TestSerialPort::arrivedOnlyIsAtOnce() {
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kArrivedOnly, '\r')), "Error");
    QCOMPARE(shown(Operation(*link_).serialGetResponseChars(limit::kArrivedOnly, 6)), "Error");
    QVERIFY2(timer.elapsed() < kSlackMs, qPrintable(QString::number(timer.elapsed())));
}

void TestSerialPort::blockWithoutAWait() {
    terminal_->send("xxsyn");  // the marker breaks off
    link_->GetDataBuffer(limit::kArrivedOnly, 5, [] { return true; });
    QCOMPARE(link_->dataBuffer().count(), 0);
}

void TestSerialPort::arrivedBlockBehindItsMarker() {
    QByteArray block("xsync");
    for (int value = 0; value < 256; ++value)
        block.append(static_cast<char>(value));
    terminal_->send(block);
    link_->GetDataBuffer(limit::kArrivedOnly, 256, [] { return true; });
    QCOMPARE(link_->dataBuffer().count(), 256);
    for (std::size_t value = 0; value < 256; ++value)
        QCOMPARE(int(link_->dataBuffer().bytes().at(value)), int(value));
}

void TestSerialPort::commandIsOnTheWire() {
    Operation(*link_).serialSendString("# 0139");
    QCOMPARE(terminal_->arrived(), "# 0139\r\n");
}

void TestSerialPort::everythingIsOnTheWireAtTheFirstWait() {
    WatchedLoop watched(*terminal_);
    CommandLink link(*port_, watched, console_);
    Operation(link).serialSendString("! 0E030002100ECE00001503FF000000");
    QTimer::singleShot(20, this, [this] { terminal_->send("^ 020002\r\n"); });
    QCOMPARE(shown(Operation(link).serialGetResponse(limit::kLine, '\r')), "^ 020002");
    QCOMPARE(watched.onWireAtFirstWait(), "! 0E030002100ECE00001503FF000000\r\n");
    // It sleeps while it waits, and does not look round and round.
    QVERIFY2(watched.turns() < 50, qPrintable(QString::number(watched.turns())));
}

void TestSerialPort::sendingDropsWhatWaits() {
    terminal_->send("#stale\r\n");
    Operation(*link_).serialSendString("# 0101");
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kArrivedOnly, '\r')), "Error");
}

void TestSerialPort::openingDropsWhatWaits() {
    terminal_->send("#stale\r\n");
    port_->close();
    terminal_->send("#staler\r\n");
    port_->open(kSerialPort);
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kArrivedOnly, '\r')), "Error");
}

// What has come is dropped when the event loop has seen it and the port has not read it yet.
void TestSerialPort::droppedBehindTheLoopsBack() {
    port_->close();
    std::array<int, 2> pipe{};
    QCOMPARE(::pipe(pipe.data()), 0);
    const auto closePipe = qScopeGuard([&pipe] {
        ::close(pipe[0]);
        ::close(pipe[1]);
    });
    // Made before the port is opened, so it is served before the port in the same turn of the loop.
    QSocketNotifier first(pipe[0], QSocketNotifier::Read);
    port_->open(kSerialPort);
    QCoreApplication::processEvents();
    bool lost = false;
    port_->onLost([&lost] { lost = true; });
    bool dropped = false;
    connect(&first, &QSocketNotifier::activated, this, [&] {
        first.setEnabled(false);
        port_->discardInput();
        dropped = true;
    });

    terminal_->send("# 0139\r\n");
    QCOMPARE(::write(pipe[1], "!", 1), ssize_t{1});
    QTRY_VERIFY(dropped);
    QCoreApplication::processEvents();
    QVERIFY(!lost);
    QVERIFY(port_->isOpen());
    // What comes now still wakes the wait.
    QElapsedTimer clock;
    clock.start();
    std::thread unit([this] {  // an event of this thread would wake it all the same
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        terminal_->send("# 0280\r\n");
    });
    const std::string reply = Operation(*link_).serialGetResponse(limit::kLine, '\r');
    unit.join();
    QCOMPARE(shown(reply), "# 0280");
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
}

// The rest waits with the system, and nothing of it is lost.
void TestSerialPort::keepsSomeOfWhatNobodyReads() {
    constexpr std::size_t kMost = 4096, kSent = 6000;
    terminal_->send(QByteArray(kSent, 'x'));
    QTRY_COMPARE(port_->waiting(), kMost);
    QCoreApplication::processEvents();
    QCOMPARE(port_->waiting(), kMost);
    std::size_t count = 0;
    const auto readAll = [&] {
        while (port_->read())
            ++count;
        return count;
    };
    QTRY_COMPARE(readAll(), kSent);
    QCOMPARE(port_->waiting(), std::size_t{0});
}

// What the unit does not take does not pile up: a command goes out whole or not at all, and none is stale
// once the unit reads again.
void TestSerialPort::unitThatDoesNotRead() {
    bool lost = false;
    port_->onLost([&lost] { lost = true; });
    constexpr int kCommands = 4000;  // more than a pseudo-terminal holds
    QByteArray last;
    for (int i = 0; i < kCommands; ++i) {
        last = QByteArray::number(100'000 + i) + " 3456789 123456789 12345";
        Operation(*link_).serialSendString(last.toStdString());
        QCoreApplication::processEvents();
        QVERIFY(SerialPort::kTransmitBuffer - port_->room() <= 512);
    }
    QVERIFY(port_->room() < static_cast<std::size_t>(last.size() + 2));
    QVERIFY(!lost);
    QByteArray arrived;
    QTRY_VERIFY((arrived += terminal_->arrived(), port_->room() == SerialPort::kTransmitBuffer));
    QTRY_VERIFY((arrived += terminal_->arrived()).endsWith("\r\n"));
    QVERIFY(arrived.size() < kCommands * last.size() / 2);
    int before = 0;
    QList<QByteArray> lines = arrived.split('\n');
    lines.removeLast();
    for (const QByteArray& line : lines) {
        const int number = line.left(6).toInt();
        QVERIFY2(number > before && line.sliced(6) == " 3456789 123456789 12345\r", line.constData());
        before = number;
    }
    // There is room again.
    Operation(*link_).serialSendString("# 0139");
    arrived.clear();
    QTRY_COMPARE((arrived += terminal_->arrived()), QByteArray("# 0139\r\n"));
    QVERIFY(!lost);
}

void TestSerialPort::allBytesPass() {
    QByteArray every("#");
    for (int value = 1; value < 256; ++value) {
        if (value != '\r')
            every.append(static_cast<char>(value));
    }
    terminal_->send(every + '\r');
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kArrivedOnly, '\r')).toLatin1(), every);
    for (const char byte : every)
        port_->write(byte);
    port_->flush();
    QByteArray arrived;
    QTRY_COMPARE_WITH_TIMEOUT((arrived += terminal_->arrived()).size(), every.size(), 5000);
    QCOMPARE(arrived, every);
}

void TestSerialPort::silence_data() {
    QTest::addColumn<bool>("line");
    QTest::addColumn<int>("limitMs");
    QTest::newRow("line, one unit") << true << 2000;
    QTest::newRow("characters, one unit") << false << 1000;
}

// Neither sooner nor much later, and asleep all the while.
void TestSerialPort::silence() {
    QFETCH(bool, line);
    QFETCH(int, limitMs);
    const double before = processorMs();
    QElapsedTimer timer;
    timer.start();
    const std::string reply =
        line ? Operation(*link_).serialGetResponse(1, '\r') : Operation(*link_).serialGetResponseChars(1, 8);
    const qint64 elapsedMs = timer.elapsed();
    QCOMPARE(shown(reply), "Error");
    QVERIFY2(elapsedMs >= limitMs - 1 && elapsedMs < limitMs + kSlackMs,
             qPrintable(QString::number(elapsedMs)));
    const double used = processorMs() - before;
    QVERIFY2(used < 0.02 * limitMs, qPrintable(QString::number(used) + " ms"));
}

void TestSerialPort::eachCharacterRestartsTheLimit() {
    // Two gaps of 700 ms under a limit of 1 s.
    QTimer::singleShot(700, this, [this] { terminal_->send("# 02"); });
    QTimer::singleShot(1400, this, [this] { terminal_->send("BD21\r\n"); });
    QCOMPARE(shown(Operation(*link_).serialGetResponseChars(1, 8)), "# 02BD21");
}

// Somebody at the other end who never ends a line: the window still gets its
// turns.
void TestSerialPort::floodKeepsTheWindowAlive() {
    qint64 longestMs = 0;
    int turns = 0;
    QElapsedTimer sinceTurn;
    QTimer window;
    window.setInterval(5);
    connect(&window, &QTimer::timeout, this, [&] {
        longestMs = std::max(longestMs, sinceTurn.restart());
        ++turns;
    });
    std::atomic<bool> stop = false;
    std::thread flood([this, &stop] {
        terminal_->send("#");
        terminal_->flood(stop);
        terminal_->send("\r");
    });
    std::thread stopper([&stop] {
        std::this_thread::sleep_for(std::chrono::milliseconds(1200));
        stop = true;
    });
    window.start();
    sinceTurn.start();
    const std::string reply = Operation(*link_).serialGetResponse(limit::kLine, '\r');
    stopper.join();
    flood.join();
    QCOMPARE(reply.size(), std::size_t{4096});  // the rest of an endless line is dropped
    QVERIFY2(longestMs < kSlackMs, qPrintable(QString::number(longestMs)));
    QVERIFY2(turns > 5, qPrintable(QString::number(turns)));
}

void TestSerialPort::hangUpInAWait() {
    int lost = 0;
    port_->onLost([&lost] { ++lost; });
    QTimer::singleShot(50, this, [this] {
        terminal_->send("# 02");
        terminal_->hangUp();
    });
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(shown(Operation(*link_).serialGetResponseChars(limit::kReply, 8)), "Error");
    QVERIFY2(timer.elapsed() < 2000 + kSlackMs, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(lost, 1);
    QVERIFY(!port_->isOpen());
}

void TestSerialPort::hangUpAtRest() {
    int lost = 0;
    port_->onLost([&lost] { ++lost; });
    terminal_->hangUp();
    QTRY_COMPARE(lost, 1);
    QVERIFY(!port_->isOpen());
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kLine, '\r')), "Error");
}

void TestSerialPort::hungUpPortCostsNothing() {
    terminal_->hangUp();
    QTRY_VERIFY(!port_->isOpen());
    constexpr int kMeasureMs = 500;
    const double share = cpuShare(QCoreApplication::applicationPid(), kMeasureMs);
    QVERIFY2(share >= 0 && share < 0.05, qPrintable(QString::number(share)));
}

void TestSerialPort::opensAgain() {
    terminal_->hangUp();
    QTRY_VERIFY(!port_->isOpen());
    terminal_ = std::make_unique<PseudoTerminal>();
    QVERIFY(terminal_->linkAs(folder_->filePath("COM5")));
    port_->open(kSerialPort);
    Operation(*link_).serialSendString("# 0101");
    QCOMPARE(terminal_->arrived(), "# 0101\r\n");
    terminal_->send("# 0681\r\n");
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kLine, '\r')), "# 0681");
    int lost = 0;
    port_->onLost([&lost] { ++lost; });
    QCoreApplication::processEvents();
    QCOMPARE(lost, 0);
}

void TestSerialPort::closedBehindALoss_data() {
    QTest::addColumn<bool>("again");
    QTest::newRow("closed") << false;
    QTest::newRow("opened again") << true;
}

// A loss is told by an event; whoever has closed the port by then, or opened another, is not told of the old
// one.
void TestSerialPort::closedBehindALoss() {
    QFETCH(bool, again);
    int lost = 0;
    port_->onLost([&lost] { ++lost; });
    terminal_->hangUp();
    QCOMPARE(port_->waiting(), std::size_t{0});
    QVERIFY(!port_->isOpen());
    port_->close();
    if (again) {
        terminal_ = std::make_unique<PseudoTerminal>();
        QVERIFY(terminal_->linkAs(folder_->filePath("COM5")));
        port_->open(kSerialPort);
    }
    QCoreApplication::processEvents();
    QCOMPARE(lost, 0);
    QCOMPARE(port_->isOpen(), again);
    Operation(*link_).serialSendString("# 0101");
    QCOMPARE(terminal_->arrived(), again ? "# 0101\r\n" : "");
}

void TestSerialPort::closedPort() {
    port_->close();
    QElapsedTimer timer;
    timer.start();
    Operation(*link_).serialSendString("# 0101");
    QCOMPARE(shown(Operation(*link_).serialGetResponse(limit::kLine, '\r')), "Error");
    QCOMPARE(shown(Operation(*link_).serialGetResponseChars(limit::kReply, 8)), "Error");
    QVERIFY2(timer.elapsed() < kSlackMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(terminal_->arrived(), "");
    port_->close();  // nothing happens
    QVERIFY(!port_->isOpen());
}

void TestSerialPort::cannotOpen_data() {
    QTest::addColumn<QString>("device");  // "" is no link at all
    QTest::newRow("absent") << "";
    QTest::newRow("dangling link") << "/dev/pts/no-such";
    QTest::newRow("no serial port") << "/dev/null";
    QTest::newRow("folder") << "/tmp";
}

void TestSerialPort::cannotOpen() {
    QFETCH(QString, device);
    if (!device.isEmpty())
        QVERIFY(QFile::link(device, folder_->filePath("COM7")));
    QVERIFY_EXCEPTION_THROWN(port_->open(7), RuntimeFault);
    QVERIFY(!port_->isOpen());
    port_->open(kSerialPort);
    QVERIFY(port_->isOpen());
}

// The root of the file system is none.
void TestSerialPort::noFolderOfPorts() {
    QCOMPARE(findPortDevice(5).asked, folder_->filePath("COM5"));
    qputenv("QUORVEX_PORTS", "");
    QVERIFY(findPortDevice(5).asked != "/COM5");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSerialPort, QCoreApplication)
#include "test_serial_port.moc"
