#include "app/port_label.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The dot of the port label, which says whether the port is open.
class TestPortLabel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void states();
    void statesDifferWithoutColour();

private:
    PortLabel& label() { return dynamic_cast<PortLabel&>(bench_->control("LabelComPort")); }

    std::unique_ptr<Bench> bench_;
};

void TestPortLabel::states() {
    bench_->show();
    QCOMPARE(label().state(), PortLabel::State::notOpen);
    bench_->window().load();
    QCOMPARE(label().state(), PortLabel::State::open);
    QCOMPARE(label().accessibleDescription(), "open");
    bench_->wire.pullCable();
    bench_->window().portLost();
    QCOMPARE(label().state(), PortLabel::State::lost);
    QCOMPARE(label().accessibleDescription(), "lost");
    bench_->person.plan([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    bench_->clickMenu("mnuComPort");
    QCOMPARE(label().state(), PortLabel::State::notOpen);
    QCOMPARE(label().accessibleDescription(), "not open");
    QCOMPARE(label().text(), "No Comms");
}

// A ring, a ring with a stroke, a full dot: each covers more than the one before.
void TestPortLabel::statesDifferWithoutColour() {
    constexpr int kMore = 5;
    PortLabel shown("");
    shown.resize(60, 30);
    int before = 0;
    for (const auto state : {PortLabel::State::notOpen, PortLabel::State::lost, PortLabel::State::open}) {
        shown.tell("", state, {});
        const QImage picture = shown.grab().toImage().copy(2, 2, 56, 26);
        const QRgb ground = picture.pixel(0, 0);
        int covered = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                covered += picture.pixel(x, y) == ground ? 0 : 1;
        }
        QVERIFY2(covered >= before + kMore,
                 qPrintable(QStringLiteral("%1 after %2").arg(covered).arg(before)));
        before = covered;
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortLabel, QApplication)
#include "test_port_label.moc"
