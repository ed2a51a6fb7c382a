#include <QRegularExpression>
#include <ctime>

#include "tests/app/storm_deeds.h"
#include "tests/app/storm_hand.h"
#include "tests/support/image_view.h"
#include "tests/support/port_deeds.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kStorms = 20, kDeeds = 500;  ///< 10,000 in all
constexpr double kBudgetS = 20;            ///< of the processor, so that a busy machine does not fail it
#if defined(__SANITIZE_ADDRESS__)
constexpr int kSlower = 3;
#else
constexpr int kSlower = 1;
#endif
constexpr std::int64_t kLongestJumpMs = 700;

}  // namespace

/// Ten thousand deeds over the whole window, by somebody who does not think, with units that fail at random.
class TestStorm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storm();

private:
    void prepareDeedsOfTheWorld(StormHand& hand, Chance chance);
    void verifyWellAgain();

    std::vector<std::unique_ptr<sim::Unit>> units_;  ///< all, as the wire may hold any
    std::unique_ptr<Bench> bench_;
};

void TestStorm::prepareDeedsOfTheWorld(StormHand& hand, Chance chance) {
    const auto another = [this, chance] { return units_.emplace_back(anyUnit(chance)).get(); };
    Bench& bench = *bench_;
    const auto open = [&bench] {  // as by the port dialog, which a hand like this seldom leaves with a port
        bench.window().closePort();
        bench.wire.refuse(1, false);
        bench.wire.open(1);
    };
    hand.others = {
        open,
        open,
        open,
        [&bench, another, chance] { bench.wire.plugIn(1 + chance.upTo(1), another()); },
        [&bench, another] { bench.wire.plugIn(another()); },
        [this, chance] { units_.back()->addFault(anyFault(chance)); },
        [this] { units_.back()->clearFaults(); },
        [&bench, chance] { bench.wire.refuse(1 + chance.upTo(1), chance.oneIn(3)); },
        [&bench] {
            bench.wire.pullCable();
            bench.window().portLost();
        },
        [this, &bench, chance] {
            auto* beltpack = dynamic_cast<sim::Beltpack*>(units_.back().get());
            if (beltpack && chance.oneIn(2))
                beltpack->displayStream().start(bench.clock.nowMs, 100 + chance.upTo(400));
            else if (beltpack)
                beltpack->displayStream().stop();
        },
    };
}

/// After whatever has happened: the window answers, and a good unit is read as it is.
void TestStorm::verifyWellAgain() {
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(bench_->window().findChildren<QDialog*>().isEmpty());
    QVERIFY(!bench_->window().link().isBusy());
    units_.push_back(std::make_unique<sim::Beltpack>(kRm5));
    sim::Unit& good = *units_.back();
    bench_->wire.plugIn(1, &good);
    bench_->wire.refuse(1, false);
    bench_->journal.take();
    bench_->window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench_->window()));
    choosePort(*bench_, 1);
    bench_->clickTab("BeltPack");
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
    const auto image = imageOf(*bench_);
    QCOMPARE(image.size(), std::size_t{21});
    for (const auto& [number, value] : image)
        QCOMPARE(value.trimmed(), QString::fromStdString(good.value(number.toInt(nullptr, 16))));
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
    // Its ends are kept from what was typed, as intended.
    QCOMPARE(bench_->text("TextParkB").mid(1, 7), image.at("03").mid(1, 7));
    QCOMPARE(bench_->text("TextPli").trimmed(), image.at("02").trimmed());
    QCOMPARE(bench_->text("TextRfCarrs"), image.at("0E"));
    QVERIFY(!Bench::isHourglassUp());
}

void TestStorm::storm() {
    const unsigned seed = stormSeed();
    std::mt19937 numbers(seed);
    const Chance chance{numbers};
    const StormFolder folder;
    const std::clock_t begun = std::clock();
    renew(bench_);
    units_.push_back(std::make_unique<sim::Beltpack>(kRm5));
    for (int port = 1; port <= 16; ++port) {
        bench_->wire.plugIn(port, units_.back().get());
        bench_->wire.refuse(port, port > 2);
    }
    bench_->loop.jumpAtMost(kLongestJumpMs);
    bench_->start();
    verifyWellAgain();  // before the first read the production values end the program, as intended
    int deepest = 0;
    std::map<QString, int> places;
    for (int storm = 0; storm < kStorms; ++storm) {
        bench_->person.rest(true);
        StormHand hand(bench_->window(), chance, folder.path());
        hand.holdTimers();
        hand.timePasses = [this, chance] { bench_->clock.nowMs += chance.upTo(20); };
        hand.silence = [this] { bench_->wire.plugIn(nullptr); };
        hand.endCapture = [this] {
            bench_->wire.refuse(1, false);
            bench_->wire.open(1);
        };
        prepareDeedsOfTheWorld(hand, chance);
        hand.storm(kDeeds);
        deepest = std::max(deepest, hand.deepest());
        for (const auto& [place, deeds] : hand.places())
            places[place] += deeds;
        bench_->person.rest(false);
        const QStringList happened = bench_->journal.take();
        if (!happened.filter(QRegularExpression("^end")).isEmpty())
            QTest::qFail(qPrintable("the program ended: " +
                                    happened.last(qMin<qsizetype>(10, happened.size())).join("; ")),
                         __FILE__, __LINE__);
        else
            verifyWellAgain();
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(
                QString("storm %1 of seed %2: %3").arg(storm).arg(seed).arg(hand.lastDeeds().join("; "))));
    }
    const double tookS = static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC;
    qInfo("%d deeds, %lld lines, up to %d deeds inside each other, in %.1f s", kStorms * kDeeds,
          static_cast<long long>(bench_->wire.lines().size()), deepest, tookS);
    for (const char* place : {"FrmMain", "mnuFile", "mnuHelp", "ComSelect", "FormRfModule", "FormCalib",
                              "FormCfgSummary", "CommonDialog1", "QMessageBox"})
        QVERIFY2(places[place] > 0, place);
    QVERIFY(tookS < kBudgetS * kSlower);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestStorm, QApplication)
#include "test_storm.moc"
