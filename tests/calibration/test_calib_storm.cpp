#include <QRegularExpression>
#include <QTest>
#include <ctime>

#include "simulator/active_antenna.h"
#include "simulator/beltpack.h"
#include "tests/calibration/virtual_dialog.h"
#include "tests/support/chance.h"
#include "tests/support/fake_radio_module.h"
#include "tests/support/in_memory_unit.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

constexpr int kRuns = 10'000;
constexpr double kBudgetS = 20;  ///< of the processor, so that a busy machine does not fail it
#if defined(__SANITIZE_ADDRESS__)
constexpr int kSlower = 6;
#else
constexpr int kSlower = 1;
#endif
constexpr int kRecordEveryMs = 10;
constexpr FakeLoop::Tick kPatienceMs = 6'000;  ///< then the operator gives up and cancels
constexpr FakeLoop::Tick kLongestRunMs = 120'000;

enum class Target { beltpack, moduleA, moduleB };

/// One run from the click on its button to its end, with an operator who does not think.
class Storm : private CalibNeighbours {
public:
    explicit Storm(Chance chance)
        : chance_(chance),
          target_(static_cast<Target>(chance.upTo(2))),
          kirk_(!chance.oneIn(5)),
          unit_(makeUnit()),
          port_(*unit_, loop_) {
        store_.put("RfModule", kirk_ ? "1" : "0");
        module_.hold(kirk_ ? 1 : 0);
        unit_->calibrationStream().setIntervalMs(kRecordEveryMs);
        for (FakeField* field : {&fmA_, &fmB_, &freq_, &tx_, &rx_})
            field->type(std::to_string(chance_.upTo(7)));
        if (chance_.oneIn(4))
            loop_.at(chance_.upTo(4000), [this] { pullCable(); });
        if (kirk_ && chance_.oneIn(10))
            unit_->addFault({sim::FaultKind::kStreamStops, std::nullopt, chance_.upTo(200), false});
        if (kirk_ && chance_.oneIn(10))
            unit_->addFault({sim::FaultKind::kHalfRecords, std::nullopt, 2 + chance_.upTo(8), false});
        if (chance_.oneIn(10))
            unit_->addFault({sim::FaultKind::kNoReply, 0x02, 0, chance_.oneIn(2)});
    }

    void run() {
        if (target_ == Target::beltpack)
            calib_.CommandCalibBp_Click({fmA_, freq_, rx_, tx_}, threshold_);
        else if (target_ == Target::moduleA)
            calib_.CommandCalibAAA_Click({fmA_, freq_, rx_, tx_}, {fmB_, freq_, rx_, tx_});
        else
            calib_.CommandCalibAAB_Click({fmA_, freq_, rx_, tx_}, {fmB_, freq_, rx_, tx_});
    }

    /// What is wrong afterwards; empty if nothing is.
    QString complaint() const {
        if (dialogsShown_ != 1 || dialogsOpen_ != 0)
            return QString("%1 dialogs shown, %2 left").arg(dialogsShown_).arg(dialogsOpen_);
        if (console_.isHourglassUp())
            return "the hourglass is still up";
        if (journal_.entriesOf("status ").filter(QRegularExpression("[Cc]alibrat")).size() != 1)
            return "no outcome told, or two";
        if (loop_.ticks() > kLongestRunMs)
            return "took too long";
        if (!cablePulled_ && unit_->inCalibrationMode())
            return "the unit was left in calibration mode";
        const auto count = [&](const char* data) { return port_.sentLines().filter(data).size(); };
        const qsizetype entered = kirk_ ? 1 : 0;
        if (!cablePulled_ && (count("! 0309E803") + count("! 0308E803") != entered ||
                              count("! 03090000") + count("! 03080000") != entered))
            return "calibration mode not entered once and left once";
        return {};
    }
    const QStringList& lines() const { return port_.sentLines(); }

private:
    /// A dialog that counts itself.
    struct Counted : VirtualDialog {
        Counted(Storm& storm, CalResult& result)
            : VirtualDialog(storm.link_, storm.store_, result, storm.loop_, storm.journal_), storm_(storm) {
            ++storm_.dialogsOpen_;
        }
        ~Counted() override { --storm_.dialogsOpen_; }
        void showModally() override {
            ++storm_.dialogsShown_;
            storm_.planDeeds(*this);
            atEachTurn = [this] { storm_.port_.waiting(); };  // what streams in is received, read or not
            VirtualDialog::showModally();
        }
        Storm& storm_;
    };

    std::unique_ptr<CalibDialog> createDialog(CalResult& result) override {
        return std::make_unique<Counted>(*this, result);
    }
    std::unique_ptr<sim::Unit> makeUnit() const {
        const auto module = kirk_ ? sim::RfModule::kKirk : sim::RfModule::kRm5;
        if (target_ == Target::beltpack)
            return std::make_unique<sim::Beltpack>(module);
        return std::make_unique<sim::ActiveAntenna>(module);
    }
    void pullCable() {
        cablePulled_ = true;
        port_.unplug();
    }
    void plan(VirtualDialog& dialog, FakeLoop::Tick inMs, std::function<void(VirtualDialog&)> deed) {
        loop_.at(loop_.ticks() + inMs, [weak = dialog.handleForLater(), deed = std::move(deed)] {
            if (const auto self = weak.lock())
                (*self)->handle([&] { deed(**self); });
        });
    }
    void planDeeds(VirtualDialog& dialog) {
        const int lasts = chance_.upTo(1500);
        for (int at = 0; at < lasts; at += 1 + chance_.upTo(60)) {
            const int which = chance_.upTo(4);
            const int value = chance_.upTo(70);
            plan(dialog, at, [which, value](VirtualDialog& its) {
                FakeSlider* const all[] = {&its.fmDev, &its.freqAccr, &its.tx, &its.mid, &its.rx};
                all[which]->drag(which == 0 ? value : value % 8);
            });
        }
        for (int i = chance_.upTo(2); i > 0; --i) {
            plan(dialog, chance_.upTo(lasts), [text = std::to_string(chance_.upTo(255))](VirtualDialog& its) {
                its.threshold.type(text);
                its.tuning.CmdSetRssiThr_Click();
            });
        }
        for (int i = chance_.upTo(2); i > 0; --i)
            plan(dialog, chance_.upTo(lasts), [](VirtualDialog& its) { its.tuning.CommandOK_Click(); });
        if (chance_.oneIn(3))
            plan(dialog, chance_.upTo(lasts), [](VirtualDialog& its) { its.tuning.CommandCancel_Click(); });
        plan(dialog, kPatienceMs, [](VirtualDialog& its) { its.tuning.CommandCancel_Click(); });
    }

    Chance chance_;
    Target target_;
    bool kirk_;
    Journal journal_;
    FakeLoop loop_;
    std::unique_ptr<sim::Unit> unit_;
    InMemoryUnit port_;
    FakeConsole console_{journal_};
    CommandLink link_{port_, loop_, console_};
    FakeStore store_{journal_};
    FakeField fmA_{journal_, "TextFmDevA"}, fmB_{journal_, "TextFmDevB"}, freq_{journal_, "freq"};
    FakeField tx_{journal_, "tx"}, rx_{journal_, "rx"}, threshold_{journal_, "TextRssiThr"};
    FakeRadioModule module_{journal_};
    CalibRun calib_{link_, module_, *this};
    bool cablePulled_ = false;
    int dialogsShown_ = 0;
    int dialogsOpen_ = 0;
};

}  // namespace

/// Ten thousand calibrations by an operator who presses everything at once.
class TestCalibStorm : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storm();
};

void TestCalibStorm::storm() {
    const unsigned seed = stormSeed();
    const std::clock_t begun = std::clock();
    for (int i = 0; i < kRuns; ++i) {
        std::mt19937 numbers(seed + static_cast<unsigned>(i));
        Storm storm(Chance{numbers});
        storm.run();
        const QString complaint = storm.complaint();
        QVERIFY2(complaint.isEmpty(), qPrintable(QString("run %1 (seed %2): %3\n%4")
                                                     .arg(i)
                                                     .arg(seed + static_cast<unsigned>(i))
                                                     .arg(complaint, storm.lines().join("; "))));
    }
    const double tookS = static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC;
    qInfo("%d runs in %.1f s", kRuns, tookS);
    QVERIFY(tookS < kBudgetS * kSlower);
}

QUORVEX_TEST(TestCalibStorm, quorvex::NoApplication)
#include "test_calib_storm.moc"
