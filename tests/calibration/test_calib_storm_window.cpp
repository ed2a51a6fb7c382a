#include <QApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSlider>
#include <QTimer>

#include "form/guard.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "tests/calibration/calib_bench.h"
#include "tests/support/chance.h"
#include "tests/support/fake_store.h"
#include "tests/support/pty_peer.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kWindowRuns = 100;
constexpr int kBudgetMs = 40'000;
constexpr int kTickMs = 20;
constexpr int kWindowRecordEveryMs = 10;
constexpr int kDeedEveryMs = 3;

/// Somebody who moves and presses whatever the open dialog has, until it has closed.
class Fidgeter : public QObject {
public:
    Fidgeter(Chance chance, PtyPeer& peer, bool pulls) : chance_(chance), peer_(peer), pulls_(pulls) {
        lasts_ = chance_.upTo(30);
        deedSoon();
    }
    int dialogsSeen() const { return dialogsSeen_; }

private:
    /// A single shot each time: one timer does not fire inside its own handler, and deeds must nest.
    void deedSoon() {
        QTimer::singleShot(kDeedEveryMs, this, [this] { deed(); });
    }

    void deed() {
        deedSoon();
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            box->button(QMessageBox::Ok)->click();
            return;
        }
        auto* dialog = qobject_cast<QDialog*>(modal);
        if (!dialog)
            return;
        if (dialog != seen_) {
            seen_ = dialog;
            ++dialogsSeen_;
            dialog->findChild<QTimer*>("Timer1")->setInterval(kTickMs);
        }
        if (lasts_-- <= 0) {
            if (pulls_ && !peer_.isPulled())
                peer_.pullCable();
            else if (chance_.upTo(1) == 0 && !peer_.isPulled())
                part<QAbstractButton>(*dialog, "CommandOK").click();
            else
                dialog->reject();
            return;
        }
        const char* const sliders[] = {"SliderFmDev", "SliderFreqAccr", "SliderTx", "SliderMid", "SliderRx"};
        auto& slider = part<QSlider>(*dialog, sliders[chance_.upTo(4)]);
        slider.setValue(slider.minimum() + chance_.upTo(slider.maximum() - slider.minimum()));
        if (chance_.upTo(20) == 0 && part(*dialog, "CmdSetRssiThr").isVisible())
            part<QAbstractButton>(*dialog, "CmdSetRssiThr").click();
    }

    Chance chance_;
    PtyPeer& peer_;
    bool pulls_;
    int lasts_ = 0;
    int dialogsSeen_ = 0;
    QWidget* seen_ = nullptr;
};

}  // namespace

/// A hundred calibrations in the real window on a real line, by somebody who does everything at once.
class TestCalibStormWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storm();
};

void TestCalibStormWindow::storm() {
    std::mt19937 numbers(stormSeed());
    setProgramEnd([](int status) { qFatal("the program ended with %d", status); });

    Journal journal;
    FakeStore store(journal);
    QtSerialPort port;
    QtEventLoop loop;
    QElapsedTimer clock;
    clock.start();
    for (int run = 0; run < kWindowRuns; ++run) {
        const bool kirk = run % 4 != 3;
        const int target = run % 10 == 0 ? 0 : 1 + run % 2;  // a Kirk Beltpack's end takes a second
        const bool pulls = run % 5 == 4;
        const auto module = kirk ? kKirk : kRm5;
        std::unique_ptr<sim::Unit> unit;
        if (target == 0)
            unit = std::make_unique<sim::Beltpack>(module);
        else
            unit = std::make_unique<sim::ActiveAntenna>(module);
        unit->calibrationStream().setIntervalMs(kWindowRecordEveryMs);
        const auto peer = std::make_unique<PtyPeer>(*unit);
        store.put("RfModule", kirk ? "1" : "0");
        FrmMain window({port, loop, store});
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.load();
        QVERIFY(port.isOpen());

        const char* const buttons[] = {"CommandCalibBp", "CommandCalibAAA", "CommandCalibAAB"};
        {
            Fidgeter person(Chance{numbers}, *peer, pulls);
            window.findChild<QAbstractButton*>(buttons[target])->click();
            QVERIFY2(person.dialogsSeen() == 1, qPrintable(QString("run %1").arg(run)));
        }
        QVERIFY2(!QApplication::activeModalWidget(), qPrintable(QString("run %1").arg(run)));
        QVERIFY2(window.findChildren<QDialog*>().isEmpty(), qPrintable(QString("run %1").arg(run)));
        QVERIFY(window.findChild<QLabel*>("LblStatus")->text().contains(QRegularExpression("[Cc]alibrat")));
        if (pulls)
            QTRY_VERIFY(!port.isOpen());
        else
            QTRY_VERIFY2(peer->ask([](sim::Unit& its) { return !its.inCalibrationMode(); }),
                         qPrintable(peer->lines().join("; ")));
        const QStringList lines = peer->lines();
        const qsizetype entered = lines.filter("E803").size();
        QCOMPARE(entered, qsizetype{kirk ? 1 : 0});
        if (!pulls)
            QCOMPARE(lines.filter(QRegularExpression("^! 030[89]0000$")).size(), entered);
        port.close();
    }
    setProgramEnd({});
    qInfo("%d runs in %lld ms", kWindowRuns, clock.elapsed());
    QVERIFY(clock.elapsed() < kBudgetMs);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibStormWindow, QApplication)
#include "test_calib_storm_window.moc"
