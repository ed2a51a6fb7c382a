#include <QAccessible>

#include "calibration/readings_plot.h"
#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// The strip beside the frames; null where there is none. It has no name.
ReadingsPlot* plotIn(const QDialog& dialog) {
    for (QObject* child : dialog.children()) {
        if (auto* plot = dynamic_cast<ReadingsPlot*>(child))
            return plot;
    }
    return nullptr;
}

/// Counts how often a control is painted.
class PaintCount : public QObject {
public:
    explicit PaintCount(QObject& control) { control.installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject* /*control*/, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

QString descriptionOf(QWidget& control) {
    return QAccessible::queryAccessibleInterface(&control)->text(QAccessible::Description);
}

}  // namespace

/// The strip that plots what a Kirk streams.
class TestCalibPlot : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyForAKirk_data();
    void onlyForAKirk();
    void nothingBeforeTheFirst();
    void theFirstIsSeen();
    void followsTheRecords();
    void noConnection();
    void paintedWhenAReadingComes();
    void tellsWhatIsAtThePointer();
    void isOnlyLookedAt();
};

void TestCalibPlot::onlyForAKirk_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    for (const char* target : {"Beltpack", "A", "B"}) {
        QTest::addRow("RM5, %s", target) << target << false;
        QTest::addRow("Kirk, %s", target) << target << true;
    }
}

void TestCalibPlot::onlyForAKirk() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        const ReadingsPlot* plot = plotIn(dialog);
        QCOMPARE(plot != nullptr, kirk);
        if (plot) {
            QVERIFY(plot->isVisible());
            // Beside everything that has its fixed place.
            for (const char* name : {"Frame1", "FrameKirk", "FrameRssiThreshold", "CommandCancel"})
                QVERIFY2(part(dialog, name).geometry().right() < plot->x(), name);
        }
        cancel(dialog);
    });
}

void TestCalibPlot::nothingBeforeTheFirst() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        auto& timer = part<QTimer>(dialog, "Timer1");
        timer.stop();  // nothing is read
        ReadingsPlot& plot = *plotIn(dialog);
        QVERIFY(plot.readings().isEmpty());
        QTest::mouseMove(dialog.windowHandle(), plot.geometry().center());
        QVERIFY(!plot.pointed());
        QCOMPARE(descriptionOf(plot), "");
        QVERIFY(!plot.grab().isNull());
        timer.start();
        cancel(dialog);
    });
}

// Two curves, so two dots.
void TestCalibPlot::theFirstIsSeen() {
    ReadingsPlot plot(nullptr);
    plot.resize(200, 200);
    const auto isCurveSeen = [&](const QRect& part) {
        const QImage image = plot.grab(part).toImage();
        for (int at = 0; at < image.width() * image.height(); ++at) {
            if (image.pixelColor(at % image.width(), at / image.width()) ==
                plot.palette().color(QPalette::Highlight))
                return true;
        }
        return false;
    };
    QVERIFY(!isCurveSeen(plot.rect()));
    plot.add({.tick = 1000, .rssi = 80, .dcBalance = 3});
    QVERIFY(isCurveSeen({0, 0, 200, 100}));
    QVERIFY(isCurveSeen({0, 100, 200, 100}));
}

void TestCalibPlot::followsTheRecords() {
    CalibBench at("A", kKirk);
    at.calibrate([&](QDialog& dialog) {
        ReadingsPlot& plot = *plotIn(dialog);
        QTRY_VERIFY(plot.readings().size() >= 5);
        part<QTimer>(dialog, "Timer1").stop();
        const Reading& latest = plot.readings().latest();
        const QString rssi = QString::number(latest.rssi);
        const QString balance = QString::number(latest.dcBalance.value());
        QCOMPARE(part<QLabel>(dialog, "LabelRssi").text(), "RSSI: " + rssi);
        QCOMPARE(part<QLabel>(dialog, "LabelDcBal").text(), "DC Bal: " + balance);
        QCOMPARE(descriptionOf(plot), "RSSI " + rssi + ", DC balance " + balance);
        // The unit sends one each half a second of the bench's clock.
        for (std::size_t i = 1; i < plot.readings().size(); ++i)
            QCOMPARE(plot.readings()[i].tick - plot.readings()[i - 1].tick, 500);
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibPlot::noConnection() {
    CalibBench at("Beltpack", kKirk);
    at.unit().calibrationStream().signal().setCarrierPresent(false);
    at.calibrate([&](QDialog& dialog) {
        ReadingsPlot& plot = *plotIn(dialog);
        QTRY_VERIFY(!plot.readings().isEmpty());
        QVERIFY(!plot.readings().latest().dcBalance);
        QVERIFY(descriptionOf(plot).endsWith("No Conn"));
        cancel(dialog);
    });
}

void TestCalibPlot::paintedWhenAReadingComes() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        ReadingsPlot& plot = *plotIn(dialog);
        QTRY_VERIFY(!plot.readings().isEmpty());
        PaintCount count(plot);
        const std::size_t before = plot.readings().size();
        QTRY_VERIFY(plot.readings().size() >= before + 10);
        part<QTimer>(dialog, "Timer1").stop();
        const int came = static_cast<int>(plot.readings().size() - before);
        QTRY_VERIFY(count.paints > 0);
        QVERIFY2(count.paints <= came + 1, qPrintable(QString::number(count.paints)));
        QVERIFY(plot.findChildren<QTimer*>().isEmpty());
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibPlot::tellsWhatIsAtThePointer() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        ReadingsPlot& plot = *plotIn(dialog);
        QTRY_VERIFY(plot.readings().size() >= 121);
        part<QTimer>(dialog, "Timer1").stop();
        QCoreApplication::processEvents();
        const QImage before = plot.grab().toImage();
        QVERIFY(!plot.pointed());

        const auto pointAt = [&](QPoint place) {
            QTest::mouseMove(dialog.windowHandle(), plot.mapTo(&dialog, place));
        };
        const auto pointedAgeMs = [&] { return plot.readings().ageMs(*plot.pointed()); };
        const int middle = plot.height() / 2;
        pointAt({plot.width() - 1, middle});
        QCOMPARE(plot.pointed(), &plot.readings().latest());
        pointAt({0, middle});
        QCOMPARE(plot.pointed(), &plot.readings()[0]);
        int ageMs = pointedAgeMs();
        QCOMPARE(ageMs, 60'000);
        for (int x = plot.width() / 4; x < plot.width(); x += plot.width() / 4) {
            pointAt({x, middle});
            QVERIFY(pointedAgeMs() < ageMs);
            ageMs = pointedAgeMs();
        }
        QVERIFY(plot.grab().toImage() != before);
        pointAt({-20, middle});
        QTRY_VERIFY(!plot.pointed());
        QCOMPARE(plot.grab().toImage(), before);
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

// Nobody meets it by name, by Tab or as a control to work with.
void TestCalibPlot::isOnlyLookedAt() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        ReadingsPlot& plot = *plotIn(dialog);
        QCOMPARE(plot.objectName(), "");
        QVERIFY(plot.findChildren<QWidget*>().isEmpty());
        QCOMPARE(plot.focusPolicy(), Qt::NoFocus);
        at.bench.wire.forgetLines();
        hand::click(plot);
        hand::turnWheel(plot, 120);
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
            QVERIFY(!plot.hasFocus());
        }
        QCOMPARE(at.bench.wire.lines(), QStringList());
        QVERIFY(!plot.accessibleName().isEmpty());
        cancel(dialog);
    });
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibPlot, QApplication)
#include "test_calib_plot.moc"
