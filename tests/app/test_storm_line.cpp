#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>

#include "form/guard.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "simulator/active_antenna.h"
#include "tests/app/storm_deeds.h"
#include "tests/app/storm_hand.h"
#include "tests/support/bench.h"
#include "tests/support/other_file.h"
#include "tests/support/pty_peer.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kLineStorms = 5, kLineDeeds = 200;  ///< 1,000 in all
constexpr int kEveryMs = 3;
constexpr int kLimitMs = 15'000;

/// A unit on a pseudo-terminal, and a cable that can be pulled and put back with another unit.
struct Line {
    std::unique_ptr<sim::Unit> unit;
    std::unique_ptr<PtyPeer> peer;

    void plugIn(std::unique_ptr<sim::Unit> another) {
        peer.reset();
        unit = std::move(another);
        peer = std::make_unique<PtyPeer>(*unit);
    }
    void add(const sim::Fault& fault) const {
        peer->ask([&](sim::Unit& its) {
            its.addFault(fault);
            return true;
        });
    }
    void clearFaults() const {
        peer->ask([](sim::Unit& its) {
            its.clearFaults();
            return true;
        });
    }
};

}  // namespace

/// A thousand deeds over the whole window, by somebody who does not think, on a real line.
class TestStormLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storm();

private:
    void plugAndRead();

    Journal journal_;
    FakeStore store_{journal_};
    Line line_;
    std::unique_ptr<Operator> person_;
    std::unique_ptr<FrmMain> window_;
};

void TestStormLine::plugAndRead() {
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(!QApplication::activeModalWidget() && !QApplication::activePopupWidget());
    QVERIFY(window_->findChildren<QDialog*>().isEmpty());
    line_.plugIn(std::make_unique<sim::Beltpack>(kRm5));
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    person_->plan([](QDialog& dialog) {
        dialog.findChild<QComboBox*>("ComboCom")->setCurrentIndex(0);
        hand::click(*dialog.findChild<QWidget*>("CmdOK"));
    });
    hand::clickMenuItem(*window_, *window_->findChild<QAction*>("mnuComPort"));
    hand::clickTab(*window_->findChild<QWidget*>("SSTab1"), "BeltPack");
    hand::click(*window_->findChild<QWidget*>("CommandRdSettingsBp"));
    QTRY_COMPARE_WITH_TIMEOUT(window_->findChild<QLabel*>("LblStatus")->text(),
                              "Settings read from Beltpack successfully.", kLimitMs);
    const auto text = [this](const char* name) { return window_->findChild<QLineEdit*>(name)->text(); };
    QCOMPARE(text("TextBeltpackId"), "12345");
    // Its ends are kept from what was typed, as intended.
    QCOMPARE(text("TextParkB").mid(1, 7), QString::fromStdString(line_.unit->value(0x03)).mid(1, 7));
    QCOMPARE(text("TextPli").trimmed(), QString::fromStdString(line_.unit->value(0x02)));
    QCOMPARE(text("TextRfCarrs"), QString::fromStdString(line_.unit->value(0x0E)));
    QVERIFY(!Bench::isHourglassUp());
}

void TestStormLine::storm() {
    const unsigned seed = stormSeed();
    std::mt19937 numbers(seed);
    const Chance chance{numbers};
    const StormFolder folder;
    QElapsedTimer clock;
    clock.start();
    setProgramEnd([this](int status) { journal_.note("end " + QString::number(status)); });
    const auto back = qScopeGuard([] { setProgramEnd({}); });
    line_.plugIn(std::make_unique<sim::Beltpack>(kRm5));
    QtSerialPort port;
    QtEventLoop loop;
    person_ = std::make_unique<Operator>(journal_);
    window_ = std::make_unique<FrmMain>(Machine{port, loop, store_});
    port.onLost([this] { window_->portLost(); });
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    window_->load();
    plugAndRead();  // before the first read the production values end the program, as intended
    for (int storm = 0; storm < kLineStorms && !QTest::currentTestFailed(); ++storm) {
        person_->rest(true);
        StormHand hand(*window_, chance, folder.path());
        hand.everyMs = kEveryMs;
        hand.others = {
            [&] {
                line_.plugIn(anyUnit(chance));
                window_->closePort();
                port.open(1);  // as by the port dialog, which a hand like this seldom leaves with a port
            },
            [&] { line_.add(anyFault(chance)); },
            [&] { line_.clearFaults(); },
            [&] { line_.peer->pullCable(); },
        };
        hand.silence = [&] { line_.peer->pullCable(); };
        hand.storm(kLineDeeds);
        person_->rest(false);
        QVERIFY(journal_.take().filter(QRegularExpression("^end")).isEmpty());
        plugAndRead();
        if (QTest::currentTestFailed())
            qWarning("storm %d of seed %u: %s", storm, seed, qPrintable(hand.lastDeeds().join("; ")));
    }
    port.close();
    window_.reset();
    person_.reset();
    qInfo("%d deeds in %lld ms", kLineStorms * kLineDeeds, clock.elapsed());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestStormLine, QApplication)
#include "test_storm_line.moc"
