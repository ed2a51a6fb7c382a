#include <QCheckBox>
#include <QTemporaryDir>

#include "tests/rscreen/bitmap_file.h"
#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The picture on displays of several densities, one process each: QT_SCALE_FACTOR counts at the start only.
class TestCrisp : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { page_ = std::make_unique<ScreenPage>(); }
    void cleanup();
    void pureColours_data();
    void pureColours();
    void pureColoursInTheWindow_data() { pureColours_data(); }
    void pureColoursInTheWindow();
    void savedInItsOwnSize();

private:
    static void demandCrisp(const QImage& image, const QByteArray& bits);

    std::unique_ptr<ScreenPage> page_;
};

void TestCrisp::initTestCase() {
    const double wanted = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble();
    ScreenPage page;
    QCOMPARE(page.bench.window().devicePixelRatioF(), wanted);
}

void TestCrisp::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
}

void TestCrisp::pureColours_data() {
    QTest::addColumn<QByteArray>("bits");
    QByteArray board;
    for (int line = 0; line < 32; ++line)
        board += QByteArray(16, line % 2 == 0 ? '\xAA' : '\x55');
    QTest::newRow("chequerboard") << board;
    QTest::newRow("every byte") << pictureBytes(0);
    QTest::newRow("black") << QByteArray(kFrameBytes, '\xFF');
}

/// Nothing between black and green, and every pixel of the display in its place: in the middle of the square
/// that it takes, the colour is its own.
void TestCrisp::demandCrisp(const QImage& image, const QByteArray& bits) {
    const QImage expected = ScreenPage::drawn(bits);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb colour = image.pixel(x, y) | 0xFF000000U;
            QVERIFY2(colour == qRgb(0, 0, 0) || colour == qRgb(0, 255, 0),
                     qPrintable(QStringLiteral("%1,%2: %3").arg(x).arg(y).arg(colour, 8, 16)));
        }
    }
    const double factor = image.width() / 128.0;
    for (int line = 0; line < 33; ++line) {
        for (int column = 0; column < 128; ++column) {
            const QPoint middle(static_cast<int>((column + 0.5) * factor),
                                static_cast<int>((line + 0.5) * factor));
            QVERIFY2((image.pixel(middle) | 0xFF000000U) == expected.pixel(2 * column, 2 * line),
                     qPrintable(QStringLiteral("column %1, line %2").arg(column).arg(line)));
        }
    }
}

void TestCrisp::pureColours() {
    QFETCH(QByteArray, bits);
    page_->toFront();
    page_->show(bits);
    const QImage image = page_->picture().grab().toImage();
    QCOMPARE(QSizeF(image.size()), QSizeF(256, 66) * page_->bench.window().devicePixelRatioF());
    demandCrisp(image, bits);
}

// At its place in the window, which need not be at a whole pixel of the display.
void TestCrisp::pureColoursInTheWindow() {
    QFETCH(QByteArray, bits);
    page_->toFront();
    page_->show(bits);
    FrmMain& window = page_->bench.window();
    const QImage whole = window.grab().toImage();
    const double factor = window.devicePixelRatioF();
    const QPointF place = QPointF(page_->picture().mapTo(&window, QPoint(0, 0))) * factor;
    const QRect area(place.toPoint(), (QSizeF(256, 66) * factor).toSize());
    demandCrisp(whole.copy(area), bits);
}

void TestCrisp::savedInItsOwnSize() {
    const QTemporaryDir folder;
    page_->toFront();
    page_->show(pictureBytes(5));
    page_->type("screenDump", folder.path() + '/');
    page_->bench.click("CommandScreenDump");
    const BitmapFile file = BitmapFile::read(folder.filePath("Grab1.bmp"));
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.image, ScreenPage::drawn(pictureBytes(5)));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCrisp, QApplication)
#include "test_crisp.moc"
