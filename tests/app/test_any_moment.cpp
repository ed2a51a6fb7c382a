#include <QApplication>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTimer>

#include "tests/app/deals.h"
#include "tests/app/file_deeds.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kNever = 1'000'000;
constexpr int kHandMs = 100;  ///< until the next click; what was under way on the line has come by then
const char* const kTabs[] = {"R-Screen", "Active Antenna", "BeltPack"};

std::vector<Deal> allDeals() {
    std::vector<Deal> all = deals();
    all.insert(all.end(), calibrations().begin(), calibrations().end());
    return all;
}

}  // namespace

/// In each wait of each operation the window is closed, "&Exit" is chosen or a settings file is loaded, or in
/// all of them the pages are turned. (A changed port: TestPortGone and TestCalibPort.)
class TestAnyMoment : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { file_ = std::make_unique<OtherFile>(); }
    void inEachWait_data();
    void inEachWait();
    void pagesTurnInAll_data();
    void pagesTurnInAll();

private:
    void close() { bench_->window().close(); }
    void exit() { bench_->clickMenu("mnuExit"); }
    void turnPages();
    void load();
    void judgeEnd();
    void judgeFile();

    void setUp();
    /// Clicks the button; `deed` is done in the wait number `wait`, from 1, in which the window can be
    /// reached.
    void press(int wait, const std::function<void()>& deed);
    void inWait(int wait, const std::function<void()>& deed);
    void answerDialogs();
    void judge(const QString& what);
    QString outcome() const { return deal_.version ? bench_->text(deal_.version) : bench_->status(); }
    bool isCalibration() const { return QString(deal_.name).startsWith("calibrate"); }

    Deal deal_;
    QStringList whole_;    ///< the lines of a run that nothing disturbs
    int waits_ = 0;        ///< seen in the last run
    qsizetype sent_ = -1;  ///< lines when the event was over
    std::unique_ptr<OtherFile> file_;
    std::unique_ptr<sim::Unit> unit_;
    std::unique_ptr<Bench> bench_;
};

void TestAnyMoment::setUp() {
    bench_.reset();
    unit_ = unitFor(deal_);
    renew(bench_);
    bench_->wire.plugIn(unit_.get());
    bench_->store.put("RfModule", deal_.module == kKirk ? "1" : "0");
    bench_->start();
    if (deal_.readFirst)
        bench_->click("CommandRdSettingsBp");
    if (deal_.isAntenna)
        bench_->clickTab("Active Antenna");
    for (const auto& [field, text] : deal_.fills) {
        keys::empty(*bench_, field);
        keys::type(text);
    }
    bench_->journal.take();
    bench_->wire.forgetLines();
}

/// OK in the calibration dialog, the other file in the file dialog, whichever opens first.
void TestAnyMoment::answerDialogs() {
    const auto answer = [this](QDialog& dialog) {
        if (dialog.objectName() == "CommonDialog1") {
            takeFile(dialog, file_->path(), QDialogButtonBox::Open);
            return;
        }
        dialog.findChild<QTimer*>("Timer1")->setInterval(1);
        hand::click(*dialog.findChild<QWidget*>("CommandOK"));
        QTRY_VERIFY(!dialog.isVisible());
    };
    bench_->person.plan(answer);
    bench_->person.plan(answer);
}

void TestAnyMoment::inWait(int wait, const std::function<void()>& deed) {
    bench_->loop.inNextWait([=, this] {
        const bool isReachable = QApplication::activeModalWidget() == nullptr;
        waits_ += isReachable ? 1 : 0;
        if (!isReachable || waits_ < wait)
            inWait(wait, deed);
        else
            deed();
    });
}

void TestAnyMoment::press(int wait, const std::function<void()>& deed) {
    waits_ = 0;
    answerDialogs();
    inWait(wait, deed);
    bench_->click(deal_.button);
    bench_->person.forgetPlans();
}

void TestAnyMoment::turnPages() {
    for (const char* tab : kTabs)
        bench_->clickTab(tab);
    if (deal_.isAntenna)
        bench_->clickTab("Active Antenna");
}

void TestAnyMoment::load() {
    bench_->clickTab("BeltPack");
    bench_->click("CommandRead");
    if (deal_.isAntenna)
        bench_->clickTab("Active Antenna");
}

/// The program is gone then: what runs on here, because the test's end of it returns, may not send a line.
void TestAnyMoment::judgeEnd() {
    QStringList happened = bench_->journal.take();
    if (isCalibration())
        happened = happened.filter(QRegularExpression("^(close|end)"));
    QCOMPARE(happened.first(2), QStringList({"close", "end 0"}));
    QCOMPARE(bench_->wire.lines().size(), sent_);
    QVERIFY(!bench_->wire.isOpen());
    if (!isCalibration())
        QVERIFY2(outcome() != deal_.success, qPrintable(outcome()));
}

void TestAnyMoment::judgeFile() {
    const bool isForTheImage = !deal_.isAntenna && !deal_.version && !isCalibration();
    if (isForTheImage) {
        QCOMPARE(outcome(), deal_.failure);
        // The flag is sent whatever became of the write, as intended.
        const bool isProduction = QString(deal_.button) == "buttonSetProdSettiings";
        QCOMPARE(bench_->wire.lines().mid(sent_), isProduction ? QStringList("# 027E01") : QStringList());
    } else {
        QVERIFY(bench_->wire.lines() == whole_);
    }
    if (deal_.isAntenna)
        bench_->clickTab("BeltPack");
    verifyIsOtherFile(*bench_);
    if (deal_.isAntenna)
        bench_->clickTab("Active Antenna");
}

/// And what holds after every event.
void TestAnyMoment::judge(const QString& what) {
    QVERIFY(sent_ >= 0);
    QVERIFY(!Bench::isHourglassUp());
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!unit_->inCalibrationMode());
    if (what != "file") {
        judgeEnd();
        return;
    }
    judgeFile();
    bench_->wire.waiting();  // what the unit has said is on its way
    bench_->clock.nowMs += kHandMs;
    press(kNever, [] {});
    QCOMPARE(outcome(), deal_.success);
}

void TestAnyMoment::inEachWait_data() {
    QTest::addColumn<int>("deal");
    QTest::addColumn<QString>("what");
    const std::vector<Deal> all = allDeals();
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (const char* what : {"closed", "exit", "file"})
            QTest::addRow("%s, %s", all[i].name, what) << static_cast<int>(i) << what;
    }
}

void TestAnyMoment::inEachWait() {
    QFETCH(int, deal);
    QFETCH(QString, what);
    deal_ = allDeals()[static_cast<std::size_t>(deal)];
    const auto deed = what == "closed" ? &TestAnyMoment::close
                      : what == "exit" ? &TestAnyMoment::exit
                                       : &TestAnyMoment::load;
    setUp();
    press(kNever, [] {});
    QCOMPARE(outcome(), deal_.success);
    whole_ = bench_->wire.lines();
    const int waits = waits_;
    QVERIFY(waits > 0);
    for (int wait = 1; wait <= waits; ++wait) {
        setUp();
        sent_ = -1;
        press(wait, [&] {
            (this->*deed)();
            sent_ = bench_->wire.lines().size();
        });
        judge(what);
        if (QTest::currentTestFailed()) {
            qWarning("in wait %d of %d", wait, waits);
            return;
        }
    }
}

void TestAnyMoment::pagesTurnInAll_data() {
    QTest::addColumn<int>("deal");
    const std::vector<Deal> all = allDeals();
    for (std::size_t i = 0; i < all.size(); ++i)
        QTest::newRow(all[i].name) << static_cast<int>(i);
}

void TestAnyMoment::pagesTurnInAll() {
    QFETCH(int, deal);
    deal_ = allDeals()[static_cast<std::size_t>(deal)];
    setUp();
    press(kNever, [] {});
    whole_ = bench_->wire.lines();
    const int waits = waits_;
    setUp();
    int turned = 0;
    std::function<void()> turn = [&] {
        turnPages();
        if (++turned < waits)
            inWait(turned + 1, turn);
    };
    press(1, turn);
    QCOMPARE(turned, waits);
    QCOMPARE(outcome(), deal_.success);
    QCOMPARE(bench_->wire.lines(), whole_);
    QCOMPARE(bench_->journal.take().size(), isCalibration() ? 1 : 0);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestAnyMoment, QApplication)
#include "test_any_moment.moc"
