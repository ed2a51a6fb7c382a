#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>

#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kLastIndex = kFrameBytes - 1;
}  // namespace

/// The picture of the display as it stands in the window, and the timer that brings it there.
class TestPicture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { page_ = std::make_unique<ScreenPage>(); }
    void cleanup();
    void asItOpens();
    void timer();
    void timerRunsOnEveryPage();
    void tickCountsFromTheEndOfAFrame();
    void ticksByItself();
    void bits_data();
    void bits();
    void lastLineIsGreen();
    void everyByte();
    void framesReplaceEachOther();
    void partOfAFrame();
    void clickDoesNothing();
    void capturesBehindOtherPages();
    void simulatedMenu();

private:
    QImage shown() { return page_->picture().grab().toImage().convertToFormat(QImage::Format_RGB32); }

    std::unique_ptr<ScreenPage> page_;
};

void TestPicture::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
}

void TestPicture::asItOpens() {
    page_->toFront();
    QCOMPARE(page_->picture().size(), QSize(256, 66));
    QCOMPARE(shown(), ScreenPage::drawn({}));
    Bench& bench = page_->bench;
    QCOMPARE(bench.text("screenDump"), "");
    QCOMPARE(bench.text("ScreenDumpFName"), "Grab1");
    QCOMPARE(bench.text("autoIncValText"), "0");
    QCOMPARE(bench.text("AutoIncrementOption"), "Auto Increment");
    QCOMPARE(bench.text("CommandScreenDump"), "Save");
    QVERIFY(!bench.control<QCheckBox>("AutoIncrementOption").isChecked());
    const QMap<QString, QString> captions{{"screenDump", "Root Dir:"}, {"ScreenDumpFName", "Filename:"}};
    int labels = 0;
    for (const auto* label : bench.window().findChildren<QLabel*>()) {
        if (label->buddy() && captions.contains(label->buddy()->objectName())) {
            QCOMPARE(label->text(), captions[label->buddy()->objectName()]);
            ++labels;
        }
    }
    QCOMPARE(labels, 2);
}

void TestPicture::timer() {
    QCOMPARE(page_->timer().interval(), 250);
    QVERIFY(page_->timer().isActive());
    QVERIFY(!page_->timer().isSingleShot());
}

void TestPicture::timerRunsOnEveryPage() {
    for (const char* caption : {"Active Antenna", "R-Screen", "BeltPack"}) {
        page_->bench.clickTab(caption);
        QVERIFY(page_->timer().isActive());
        QSignalSpy ticks(&page_->timer(), &QTimer::timeout);
        QVERIFY2(ticks.wait(5000), caption);
    }
    // A frame sets the timer's next tick anew, and does not end it.
    page_->show(pictureBytes(1));
    QVERIFY(page_->timer().isActive());
    QCOMPARE(page_->timer().interval(), 250);
}

// Frames that follow each other take longer than a tick. Were it not set back by them, it would fall on the
// marker of one of them sooner or later, half of it not there yet, and that frame would be lost.
void TestPicture::tickCountsFromTheEndOfAFrame() {
    QTRY_VERIFY(page_->timer().remainingTime() < 150);
    page_->show(pictureBytes(1));
    QVERIFY(page_->timer().remainingTime() > 200);
    QTRY_VERIFY(page_->timer().remainingTime() < 150);
    page_->receive("sync" + pictureBytes(2).first(100));
    page_->tick();
    QVERIFY(page_->timer().remainingTime() < 150);  // not by one that was cut short
}

void TestPicture::ticksByItself() {
    page_->toFront();
    page_->receive(frame(1));
    QTRY_COMPARE(shown(), ScreenPage::drawn(pictureBytes(1)));
}

void TestPicture::bits_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");
    QTest::addColumn<QRect>("black");  // the only black pixels
    QTest::newRow("128: the leftmost") << 0 << 128 << QRect(0, 0, 2, 2);
    QTest::newRow("1: the rightmost") << 0 << 1 << QRect(14, 0, 2, 2);
    QTest::newRow("255: all eight") << 0 << 255 << QRect(0, 0, 16, 2);
    QTest::newRow("64: the second") << 0 << 64 << QRect(2, 0, 2, 2);
    QTest::newRow("end of the first line") << 15 << 1 << QRect(254, 0, 2, 2);
    QTest::newRow("begin of the second line") << 16 << 128 << QRect(0, 2, 2, 2);
    QTest::newRow("middle") << 15 * 16 + 8 << 240 << QRect(128, 30, 8, 2);
    QTest::newRow("last byte") << kLastIndex << 255 << QRect(240, 62, 16, 2);
}

void TestPicture::bits() {
    QFETCH(int, index);
    QFETCH(int, value);
    QFETCH(QRect, black);
    QByteArray bytes(kFrameBytes, '\0');
    bytes[index] = static_cast<char>(value);
    page_->toFront();
    page_->show(bytes);
    const QImage image = shown();
    QCOMPARE(image.size(), QSize(256, 66));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixel(x, y), black.contains(x, y) ? qRgb(0, 0, 0) : qRgb(0, 255, 0));
    }
}

void TestPicture::lastLineIsGreen() {
    page_->toFront();
    page_->receive(frameOf(QByteArray(600, '\xFF')));
    page_->tick();
    const QImage image = shown();
    for (int x = 0; x < image.width(); ++x) {
        QCOMPARE(image.pixel(x, 63), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(x, 64), qRgb(0, 255, 0));
        QCOMPARE(image.pixel(x, 65), qRgb(0, 255, 0));
    }
}

void TestPicture::everyByte() {
    page_->toFront();
    page_->show(pictureBytes(0));
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(0)));
}

void TestPicture::framesReplaceEachOther() {
    page_->toFront();
    for (int number = 1; number <= 5; ++number) {
        page_->show(pictureBytes(number));
        QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(number)));
    }
}

void TestPicture::partOfAFrame() {
    page_->toFront();
    page_->show(pictureBytes(1));
    page_->receive("sync" + pictureBytes(2).first(200));
    page_->tick();
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(2).first(200) + pictureBytes(1).sliced(200)));
}

void TestPicture::clickDoesNothing() {
    page_->toFront();
    page_->show(pictureBytes(1));
    const QString status = page_->bench.status();
    hand::click(page_->picture());
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(1)));
    QCOMPARE(page_->bench.status(), status);
    QCOMPARE(page_->bench.wire.lines(), QStringList());
}

void TestPicture::capturesBehindOtherPages() {
    page_->bench.clickTab("Active Antenna");
    page_->show(pictureBytes(1));
    QCOMPARE(page_->bench.wire.waiting(), std::size_t{0});
    page_->toFront();
    QCOMPARE(shown(), ScreenPage::drawn(pictureBytes(1)));
}

// The same picture as a Beltpack draws it for its own display.
void TestPicture::simulatedMenu() {
    sim::Beltpack beltpack(kKirk);
    beltpack.displayStream().start(0, 1000);
    const QByteArray sent = QByteArray::fromStdString(beltpack.take(0));
    page_->toFront();
    page_->receive(sent);
    page_->tick();
    QCOMPARE(shown(), ScreenPage::drawn(sent.sliced(4)));
    QVERIFY(sent.sliced(4).count('\0') < kFrameBytes / 2);  // there is something to see
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPicture, QApplication)
#include "test_picture.moc"
