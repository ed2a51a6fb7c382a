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

void TestPortLabel::statesDifferWithoutColour() {
    PortLabel shown("COM1");
    shown.resize(shown.sizeHint());
    QList<QImage> seen;
    for (const auto state : {PortLabel::State::notOpen, PortLabel::State::open, PortLabel::State::lost}) {
        shown.tell("COM1", state, {});
        QImage outline = shown.grab().toImage();
        for (int y = 0; y < outline.height(); ++y) {
            for (int x = 0; x < outline.width(); ++x) {
                const QColor colour = outline.pixelColor(x, y);
                outline.setPixel(x, y, colour.lightness() < 180 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
            }
        }
        QVERIFY(!seen.contains(outline));
        seen << outline;
    }
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPortLabel, QApplication)
#include "test_port_label.moc"
