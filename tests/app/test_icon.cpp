#include <QFile>
#include <QImage>
#include <QImageReader>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The program's icon: in every window, and in all sizes that are installed.
class TestIcon : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void inTheWindow_data();
    void inTheWindow();
    void inDialogs_data();
    void inDialogs();
    void inTheAboutBox();
    void toInstall_data();
    void toInstall();
    void forWindows();
};

void TestIcon::inTheWindow_data() {
    QTest::addColumn<int>("size");
    for (const int size : {16, 24, 32, 48, 64})
        QTest::addRow("%d", size) << size;
}

// A picture of its own for each size, none of them scaled.
void TestIcon::inTheWindow() {
    QFETCH(int, size);
    Bench bench;
    bench.start();
    const QIcon icon = bench.window().windowIcon();
    QVERIFY(icon.availableSizes().contains(QSize(size, size)));
    const QImage picture = icon.pixmap(QSize(size, size), 1).toImage();
    QCOMPARE(picture.size(), QSize(size, size));
    QCOMPARE(picture.pixelColor(size / 2, size - 2), QColor(0x1d, 0x3b, 0x53));
    const QString file = QStringLiteral(QUORVEX_ICONS "/%1x%1/apps/quorvex-config.png").arg(size);
    QCOMPARE(picture, QImage(file).convertToFormat(picture.format()));
}

void TestIcon::inDialogs_data() {
    QTest::addColumn<QString>("opens");
    for (const char* item : {"mnuComPort", "mnuRfModule"})
        QTest::newRow(item) << item;
}

void TestIcon::inDialogs() {
    QFETCH(QString, opens);
    Bench bench;
    bench.startWith(kRm5);
    QIcon icon;
    bench.person.plan([&](QDialog& dialog) {
        icon = dialog.windowIcon();
        dialog.reject();
    });
    bench.clickMenu(opens);
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.cacheKey(), bench.window().windowIcon().cacheKey());
}

void TestIcon::inTheAboutBox() {
    Bench bench;
    bench.startWith(kRm5);
    QIcon icon;
    bench.person.beforeOk([&](QMessageBox& box) {
        icon = box.windowIcon();
        QCOMPARE(box.icon(), QMessageBox::Information);  // in the box itself, as ever
    });
    bench.clickMenu("mnuAbout");
    QVERIFY(!icon.isNull());
    QCOMPARE(icon.cacheKey(), bench.window().windowIcon().cacheKey());
}

void TestIcon::toInstall_data() {
    QTest::addColumn<int>("size");
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        QTest::addRow("%d", size) << size;
}

void TestIcon::toInstall() {
    QFETCH(int, size);
    const QImage picture(QStringLiteral(QUORVEX_ICONS "/%1x%1/apps/quorvex-config.png").arg(size));
    QCOMPARE(picture.size(), QSize(size, size));
    QVERIFY(picture.pixelColor(0, 0).alpha() < 255);  // round corners
    QVERIFY(QFile::exists(QStringLiteral(QUORVEX_ICONS "/scalable/apps/quorvex-config.svg")));
}

// One file with the same pictures in all sizes.
void TestIcon::forWindows() {
    QImageReader all(QUORVEX_ICONS "/../quorvex-config.ico");
    QStringList sizes;
    do {
        const QImage picture = all.read();
        QVERIFY2(!picture.isNull(), qPrintable(all.errorString()));
        sizes << QString::number(picture.width());
        const QString file = QStringLiteral(QUORVEX_ICONS "/%1x%1/apps/quorvex-config.png").arg(sizes.last());
        QCOMPARE(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                 QImage(file).convertToFormat(QImage::Format_ARGB32_Premultiplied));
    } while (all.jumpToNextImage());
    QCOMPARE(sizes, QStringList({"16", "22", "24", "32", "48", "64", "128", "256"}));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestIcon, QApplication)
#include "test_icon.moc"
