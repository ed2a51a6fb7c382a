#include "simulator/hex.h"
#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kPictures = 6;
constexpr int kFrameMs = 500;
constexpr int kTickMs = 250;

/// Has the volume turned up after each frame, so that no two of the first 31 are alike. `sent` is told what
/// was sent.
void turnVolumeWithEachFrame(sim::Beltpack& unit, QStringList& sent) {
    unit.setValue(0x0B, "01");
    unit.setTranscript([&unit, &sent](const sim::TranscriptEntry& entry) {
        if (entry.kind != sim::TranscriptEntry::Kind::kSent)
            return;
        sent << QString::fromStdString(entry.text);
        unit.setValue(0x0B, sim::hexByte(*sim::parseHex(unit.value(0x0B)) + 1));
    });
}

/// The frames that a Beltpack sends whose display is not disturbed.
QList<QByteArray> frames() {
    QStringList sent;
    sim::Beltpack unit(kRm5);
    turnVolumeWithEachFrame(unit, sent);
    unit.displayStream().start(0, kFrameMs);
    QList<QByteArray> all;
    for (int i = 0; i < kPictures; ++i)
        all << QByteArray::fromStdString(unit.take(i * kFrameMs));
    return all;
}

QImage drawn(const QByteArray& frame) {
    return ScreenPage::drawn(frame.sliced(4));
}

}  // namespace

/// The page with a Beltpack whose display stream is disturbed once: the third of its frames, as the second is
/// on its way already when the disturbance begins.
class TestDisplayFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void recovers_data();
    void recovers();
};

void TestDisplayFaults::recovers_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("bytes");         // of the third frame
    QTest::addColumn<QByteArray>("third");  // the third picture that is seen; empty for none between
    QTest::addColumn<int>("next");          // the first frame that is seen whole after that
    const QList<QByteArray> all = frames();
    QByteArray marked = all[2];
    marked.replace(4 + 100, 4, "sync");
    QTest::newRow("none") << "" << 516 << all[2] << 3;
    // "synsync": what has come of the first marker is used up, and with it the start of the second one.
    QTest::newRow("broken marker") << "display-broken-marker,once" << 519 << QByteArray() << 3;
    // The frame is filled up with what comes next, and that frame is lost with it.
    QTest::newRow("short frame") << "display-short:300,once" << 304 << all[2].first(304) + all[3].first(212)
                                 << 4;
    QTest::newRow("garbage between frames") << "display-garbage:50,once" << 566 << all[2] << 3;
    QTest::newRow("marker inside the data") << "display-inner-marker:100,once" << 516 << marked << 3;
}

void TestDisplayFaults::recovers() {
    QFETCH(QString, fault);
    QFETCH(int, bytes);
    QFETCH(QByteArray, third);
    QFETCH(int, next);
    sim::Beltpack unit(kRm5);
    ScreenPage page;
    page.bench.wire.plugIn(&unit);
    page.toFront();
    page.timer().stop();  // only the ticks made here count

    QList<QImage> seen;
    QList<QImage> expected{drawn(frames()[0]), drawn(frames()[1])};
    if (!third.isEmpty())
        expected << drawn(third);
    for (int i = next; i < kPictures; ++i)
        expected << drawn(frames()[i]);

    QStringList sent;
    turnVolumeWithEachFrame(unit, sent);
    unit.displayStream().start(page.bench.clock.nowMs, kFrameMs);
    for (int ticks = 0; ticks < 100 && seen.size() < expected.size(); ++ticks) {
        page.bench.clock.nowMs += kTickMs;
        page.tick();
        const QImage image = page.picture().image().convertToFormat(QImage::Format_RGB32);
        if (image == drawn(QByteArray(4, ' ')) || (!seen.isEmpty() && image == seen.last()))
            continue;
        seen << image;
        if (seen.size() == 1 && !fault.isEmpty())
            unit.addFault(sim::parseFault(fault.toStdString()));
    }
    QCOMPARE(sent[2], QString("display frame, %1 bytes").arg(bytes));
    QCOMPARE(seen, expected);
    QCOMPARE(page.bench.journal.take(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestDisplayFaults, QApplication)
#include "test_display_faults.moc"
