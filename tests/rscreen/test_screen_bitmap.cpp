#include "rscreen/screen_bitmap.h"

#include <QImage>
#include <QTest>

#include "rscreen/rscreen_picture.h"
#include "tests/rscreen/frames.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The picture as a file, without a window.
class TestScreenBitmap : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sameAsTheWindow_data();
    void sameAsTheWindow();
};

void TestScreenBitmap::sameAsTheWindow_data() {
    QTest::addColumn<QByteArray>("picture");
    QTest::newRow("ground alone") << QByteArray(kFrameBytes, '\0');
    QTest::newRow("one pixel") << "\x80" + QByteArray(kFrameBytes - 1, '\0');
    QTest::newRow("every byte") << pictureBytes(5);
}

void TestScreenBitmap::sameAsTheWindow() {
    QFETCH(QByteArray, picture);
    ScreenBits bits{};
    std::copy(picture.begin(), picture.end(), bits.begin());
    RScreenPicture window;
    window.show(bits);
    const QByteArray file = QByteArray::fromStdString(bitmapOf(bits));
    QImage image;
    QVERIFY(image.loadFromData(file, "BMP"));
    QCOMPARE(image.size(), QSize(256, 66));
    QCOMPARE(image.convertToFormat(QImage::Format_RGB32),
             window.image().convertToFormat(QImage::Format_RGB32));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestScreenBitmap, QApplication)
#include "test_screen_bitmap.moc"
