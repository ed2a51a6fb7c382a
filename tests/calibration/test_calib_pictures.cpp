#include <QDir>
#include <QImage>

#include "calibration/readings_plot.h"
#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// What the plot has taken in so far.
const Readings& readingsIn(const QDialog& dialog) {
    for (QObject* child : dialog.children()) {
        if (const auto* plot = dynamic_cast<ReadingsPlot*>(child))
            return plot->readings();
    }
    qFatal("no plot");
}

/// Lets records come in until the plot holds `count`, and no more.
void waitForReadings(QDialog& dialog, std::size_t count) {
    auto& timer = part<QTimer>(dialog, "Timer1");
    const auto stop = QObject::connect(&timer, &QTimer::timeout, &dialog, [&] {
        if (readingsIn(dialog).size() >= count)
            timer.stop();
    });
    timer.start();
    QTRY_VERIFY(!timer.isActive());
    QObject::disconnect(stop);
    QCOMPARE(readingsIn(dialog).size(), count);
}

/// Moves Mid onto the carrier, a step each twenty seconds.
void tuneMid(QDialog& dialog) {
    auto& mid = part<QSlider>(dialog, "SliderMid");
    QCOMPARE(mid.value(), 2);
    for (const std::size_t readings : {40, 80}) {
        waitForReadings(dialog, readings);
        mid.setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Right);
    }
    waitForReadings(dialog, 121);
    QCOMPARE(mid.value(), 4);
}

QImage pictureOf(QDialog& dialog) {
    QApplication::setCursorFlashTime(0);
    QCoreApplication::processEvents();
    return dialog.grab().toImage();
}

/// A Beltpack that is read, then calibrated until `tuned` has done its part.
QImage pictureOfCalibration(sim::RfModule module, const std::function<void(QDialog&)>& tuned) {
    CalibBench at("Beltpack", module);
    at.unit().setValue(0x3C, module == kKirk ? "02" : "0A");
    at.bench.click("CommandRdSettingsBp");
    QImage picture;
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        tuned(dialog);
        picture = pictureOf(dialog);
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
    return picture;
}

}  // namespace

/// The calibration dialog as the manual shows it: on a clock of its own, so that its pictures change only
/// when the dialog does. With QUORVEX_WRITE_PICTURES they are written into that folder.
class TestCalibPictures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pictures_data();
    void pictures();
};

void TestCalibPictures::pictures_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<bool>("pointed");
    QTest::newRow("calibration-rm5") << false << false;
    QTest::newRow("calibration-kirk") << true << false;
    QTest::newRow("calibration-kirk-pointed") << true << true;
}

void TestCalibPictures::pictures() {
    QFETCH(bool, kirk);
    QFETCH(bool, pointed);
    const auto tuned = [&](QDialog& dialog) {
        if (kirk)
            tuneMid(dialog);
        if (pointed)
            QTest::mouseMove(dialog.windowHandle(),
                             {dialog.width() - dialog.width() / 4, dialog.height() / 2});
    };
    const QImage picture = pictureOfCalibration(kirk ? kKirk : kRm5, tuned);
    QVERIFY(!picture.isNull());
    QCOMPARE(pictureOfCalibration(kirk ? kKirk : kRm5, tuned), picture);
    if (const QString folder = qEnvironmentVariable("QUORVEX_WRITE_PICTURES"); !folder.isEmpty())
        QVERIFY(picture.save(QDir(folder).filePath(QString::fromLatin1(QTest::currentDataTag()) + ".png")));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibPictures, QApplication)
#include "test_calib_pictures.moc"
