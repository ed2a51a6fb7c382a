#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>

#include "form/guard.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "tests/calibration/calib_bench.h"
#include "tests/support/pty_peer.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kSecondMs = 1000;
const char* const kWays[] = {"Cancel", "OK", "Esc", "window button"};

struct Stream {
    const char* name;
    QByteArray bytes;
    int everyMs;
};

const std::vector<Stream>& streams() {
    static const std::vector<Stream> all{
        {"status records", "! 0407D7FF51\r\n", 20}, {"records of other types", "! 021200\r\n", 50},
        {"no record's end", "! 0407D7FF51", 20},    {"NUL bytes", QByteArray(16, '\0'), 10},
        {"characters without a record", "x", 1},    {"nothing", "", 0},
    };
    return all;
}

void closeBy(QDialog& dialog, const QString& way) {
    if (way == "Esc")
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    else if (way == "window button")
        dialog.close();
    else
        hand::click(part(dialog, "Command" + way));
}

}  // namespace

/// The calibration dialog can be left within a second, whatever its unit sends or does not send.
class TestCalibClosing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void atTheWindow_data();
    void atTheWindow();
    void onARealLine_data();
    void onARealLine();
};

void TestCalibClosing::atTheWindow_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("stream");
    QTest::addColumn<QString>("way");
    for (const char* target : {"Beltpack", "A", "B"}) {
        for (std::size_t i = 0; i < streams().size(); ++i) {
            for (const char* way : kWays)
                QTest::addRow("%s, %s, %s", target, streams()[i].name, way)
                    << target << static_cast<int>(i) << way;
        }
    }
}

void TestCalibClosing::atTheWindow() {
    QFETCH(QString, target);
    QFETCH(int, stream);
    QFETCH(QString, way);
    const Stream& its = streams()[static_cast<std::size_t>(stream)];
    CalibBench at(target, kKirk);
    at.unit().addFault(sim::parseFault("stream-stops:0"));
    std::int64_t pressedAtMs = -1;
    std::int64_t closedAtMs = -1;
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.babble(its.bytes, its.everyMs);
        at.bench.loop.inNextWait([&] {
            pressedAtMs = at.bench.clock.nowMs;
            closeBy(dialog, way);
        });
        QTRY_VERIFY(!dialog.isVisible());
        closedAtMs = at.bench.clock.nowMs;
        at.bench.wire.babble("", 0);  // out of calibration mode
    });
    QVERIFY(pressedAtMs >= 0);
    QVERIFY2(closedAtMs - pressedAtMs < kSecondMs, qPrintable(QString::number(closedAtMs - pressedAtMs)));
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened(target)));
    const QString outcome = way == "OK" ? "successfully" : "ancelled";
    QVERIFY2(at.bench.status().contains(outcome), qPrintable(at.bench.status()));
    QVERIFY(!at.unit().inCalibrationMode());
}

void TestCalibClosing::onARealLine_data() {
    QTest::addColumn<QString>("way");
    QTest::addColumn<QString>("fault");
    for (const char* way : kWays) {
        for (const char* fault : {"half-records:7", "stream-stops:1"})
            QTest::addRow("%s, %s", way, fault) << way << fault;
    }
}

void TestCalibClosing::onARealLine() {
    QFETCH(QString, way);
    QFETCH(QString, fault);
    setProgramEnd([](int status) { qFatal("the program ended with %d", status); });
    const auto back = qScopeGuard([] { setProgramEnd({}); });
    Journal journal;
    FakeStore store(journal);
    store.put("RfModule", "1");
    sim::Beltpack unit(kKirk);
    // OK looks for its answer in three records, so they must be slower than a busy machine.
    unit.calibrationStream().setIntervalMs(200);
    unit.addFault(sim::parseFault(fault.toStdString()));
    const PtyPeer peer(unit);  // COM1
    QtSerialPort port;
    QtEventLoop loop;
    Operator person(journal);
    FrmMain window({port, loop, store});
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    window.load();
    QVERIFY(port.isOpen());
    std::int64_t tookMs = -1;
    person.plan([&](QDialog& dialog) {
        QTRY_VERIFY(part<QLabel>(dialog, "LabelRssi").text() != "RSSI:");
        QElapsedTimer clock;
        clock.start();
        closeBy(dialog, way);
        QTRY_VERIFY(!dialog.isVisible());
        tookMs = clock.elapsed();
    });
    hand::click(*window.findChild<QWidget*>("CommandCalibBp"));
    QVERIFY2(tookMs >= 0 && tookMs < kSecondMs, qPrintable(QString::number(tookMs)));
    QCOMPARE(journal.take(), QStringList(dialogOpened("Beltpack")));
    QTRY_VERIFY(peer.ask([](sim::Unit& its) { return !its.inCalibrationMode(); }));
    port.close();
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibClosing, QApplication)
#include "test_calib_closing.moc"
