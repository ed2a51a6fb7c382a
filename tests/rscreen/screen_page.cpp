#include "tests/rscreen/screen_page.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTimerEvent>

namespace quorvex {

ScreenPage::ScreenPage(sim::RfModule module) : unit_(module) {
    bench.store.put("RfModule", module == kKirk ? "1" : "0");
    bench.wire.plugIn(&unit_);
    bench.start();
    bench.journal.take();
}

QTimer& ScreenPage::timer() {
    auto* found = bench.window().findChild<QTimer*>(QStringLiteral("RScreenTimer"));
    if (!found)
        qFatal("no RScreenTimer");
    return *found;
}

void ScreenPage::tick() {
    QTimerEvent event(timer().timerId());
    QCoreApplication::sendEvent(&timer(), &event);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);  // on Windows other timers are posted, too
}

void ScreenPage::receive(const QByteArray& bytes) {
    unit_.say(bytes, bench.clock.nowMs);
    static_cast<void>(bench.wire.waiting());  // now it is on its way
    bench.clock.nowMs += Wire::kTransitMs;
}

void ScreenPage::show(const QByteArray& picture) {
    receive(frameOf(picture));
    tick();
}

void ScreenPage::type(const QString& field, const QString& text) {
    QWidget& control = bench.control(field);
    hand::click(control);
    QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&control, Qt::Key_Delete);
    for (const QChar c : text) {
        if (c.unicode() < 0x80) {
            QTest::keyClick(&control, c.toLatin1());
        } else {  // no key of the test library's keyboard
            QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(&control, &press);
        }
    }
}

QImage ScreenPage::drawn(const QByteArray& picture) {
    constexpr int kLines = 33;
    constexpr int kLineBytes = 16;
    QImage image(kLineBytes * 8 * 2, kLines * 2, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int index = y / 2 * kLineBytes + x / 16;
            const int byte = index < picture.size() ? static_cast<unsigned char>(picture[index]) : 0;
            const bool isSet = (byte & (128 >> (x / 2 % 8))) != 0;
            image.setPixel(x, y, isSet ? qRgb(0, 0, 0) : qRgb(0, 255, 0));
        }
    }
    return image;
}

void ScreenPage::onceReceived(std::function<void()> deed) {
    bench.loop.inNextWait([this, deed = std::move(deed)] {
        if (bench.wire.waiting() > 0)
            onceReceived(deed);
        else
            deed();
    });
}

}  // namespace quorvex
