#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/registry.h"

namespace quorvex {

/// The tour through the window must not rot between two looks at its pictures.
class TestTour : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesThrough_data();
    void goesThrough();

private:
    QImage first_;  ///< picture of the first row
};

void TestTour::goesThrough_data() {
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("dark");
    QTest::addColumn<double>("larger");  // at least, than the first row's window
    QTest::newRow("as it is") << QStringList() << false << 1.0;
    QTest::newRow("as others see it")
        << QStringList({"--scale", "1.5", "--dark", "--font", "14"}) << true << 1.5 * 1.2;
}

void TestTour::goesThrough() {
    QFETCH(QStringList, options);
    QFETCH(bool, dark);
    QFETCH(double, larger);
    constexpr int kLimitMs = 110'000;
    const QTemporaryDir pictures;
    QProcess tour;
    tour.setProcessChannelMode(QProcess::MergedChannels);
    tour.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tour", options << pictures.path());
    QVERIFY2(tour.waitForFinished(kLimitMs), qPrintable(tour.errorString()));
    const QByteArray said = tour.readAll();
    QVERIFY2(tour.exitStatus() == QProcess::NormalExit && tour.exitCode() == 0, said.constData());

    const QImage picture(pictures.filePath("01-main-window.png"));
    if (first_.isNull())
        first_ = picture;
    QVERIFY2(picture.width() >= larger * first_.width(), qPrintable(QString::number(picture.width())));
    QCOMPARE(picture.pixelColor(1, picture.height() / 2).lightness() < 128, dark);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTour, QCoreApplication)
#include "test_tour.moc"
