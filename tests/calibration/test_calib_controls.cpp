#include <QGroupBox>
#include <QPushButton>

#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// A place as the dialog's drawing gives it: in twentieths of a point, 15 to a pixel.
QRect pixels(const QList<int>& twips) {
    QList<int> rounded;
    for (const int value : twips)
        rounded << qRound(value / 15.0);
    return {rounded[0], rounded[1], rounded[2], rounded[3]};
}

constexpr int kDefaultPoints = 9;

void setFontSize(int points) {
    QFont face = QApplication::font();
    face.setPointSize(points);
    QApplication::setFont(face);
}

/// The palette of all windows, until the end of the test.
class PaletteForATest {
public:
    explicit PaletteForATest(const QPalette& palette) : before_(QApplication::palette()) {
        QApplication::setPalette(palette);
    }
    ~PaletteForATest() { QApplication::setPalette(before_); }
    PaletteForATest(const PaletteForATest&) = delete;
    PaletteForATest& operator=(const PaletteForATest&) = delete;

private:
    QPalette before_;
};

QString titleOf(const QWidget& control) {
    const auto* box = qobject_cast<const QGroupBox*>(&control);
    return box ? box->title() : control.property("text").toString();
}

}  // namespace

/// The dialog's controls: what they are called, where they stand, what they say.
class TestCalibControls : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { setFontSize(kDefaultPoints); }
    void places_data();
    void places();
    void labels_data();
    void labels();
    void sliders_data();
    void sliders();
    void captions();
    void scale();
    void ticks_data();
    void ticks();
    void slidersStandApart();
    void meter_data();
    void meter();
    void titleFits_data();
    void titleFits();
    void dcSliderOnlyShows();
    void framesByModule_data();
    void framesByModule();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void thresholdFrame_data();
    void thresholdFrame();
};

void TestCalibControls::places_data() {
    QTest::addColumn<QString>("container");
    QTest::addColumn<QList<int>>("twips");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("hover");
    const auto row = [](const char* name, const char* container, const QList<int>& twips, const char* caption,
                        const char* hover) { QTest::newRow(name) << container << twips << caption << hover; };
    row("Frame1", "FormCalib", {120, 240, 4575, 855}, "FM Deviation", "");
    row("SliderFmDev", "Frame1", {120, 360, 3855, 375}, "", "");
    row("FrameRm5", "FormCalib", {120, 1320, 4575, 855}, "Frequency Accuracy", "");
    row("SliderFreqAccr", "FrameRm5", {120, 360, 3855, 375}, "", "");
    row("FrameKirk", "FormCalib", {120, 1320, 4575, 1935}, "Frequency Accuracy / DC Balance", "");
    row("SliderTx", "FrameKirk", {120, 480, 1455, 375}, "", "");
    row("SliderMid", "FrameKirk", {1560, 480, 1455, 375}, "", "");
    row("SliderRx", "FrameKirk", {3000, 480, 1455, 375}, "", "");
    row("SliderDCBalance", "FrameKirk", {240, 1080, 4095, 375}, "", "");
    row("LabelRssi", "FrameKirk", {120, 1560, 1935, 255}, "RSSI:", "");
    row("LabelDcBal", "FrameKirk", {3120, 1560, 1335, 255}, "DC Bal:", "");
    row("FrameRssiThreshold", "FormCalib", {120, 3480, 2895, 855}, "RSSI -80.5dBm Threshold - Decimal", "");
    row("TextRssiThr", "FrameRssiThreshold", {120, 360, 1335, 375}, "", "Set to 255 for non-USA Beltpacks");
    row("CmdSetRssiThr", "FrameRssiThreshold", {1680, 360, 975, 375}, "&Update", "Send RF Carriers To BP");
    row("CommandOK", "FormCalib", {3240, 3480, 1455, 375}, "&OK", "");
    row("CommandCancel", "FormCalib", {3240, 3960, 1455, 375}, "&Cancel", "");
}

void TestCalibControls::places() {
    QFETCH(QString, container);
    QFETCH(QList<int>, twips);
    QFETCH(QString, caption);
    QFETCH(QString, hover);
    CalibBench at("Beltpack", kRm5);  // nothing streams, so everything is as it was made
    at.calibrate([&](QDialog& dialog) {
        const auto& control = part(dialog, QTest::currentDataTag());
        QCOMPARE(control.parentWidget()->objectName(), container);
        QCOMPARE(control.geometry(), pixels(twips));
        QCOMPARE(titleOf(control), caption);
        QCOMPARE(control.toolTip(), hover);
        cancel(dialog);
    });
}

void TestCalibControls::labels_data() {
    QTest::addColumn<QString>("container");
    QTest::addColumn<QList<int>>("twips");  // left, top
    QTest::addColumn<QString>("caption");
    const auto row = [](const char* name, const char* container, const QList<int>& twips,
                        const char* caption) { QTest::newRow(name) << container << twips << caption; };
    row("LabelFmDevValue", "Frame1", {4080, 400}, "33");
    row("LabelFreqAccrValue", "FrameRm5", {4080, 400}, "4");
    row("Label1", "FrameKirk", {480, 300}, "Transmit:");
    row("LabelTxValue", "FrameKirk", {1200, 300}, "2");
    row("Label2", "FrameKirk", {1920, 300}, "Mid:");
    row("LabelMidValue", "FrameKirk", {2280, 300}, "4");
    row("Label3", "FrameKirk", {3360, 300}, "Receive:");
    row("LabelRxValue", "FrameKirk", {4080, 300}, "6");
    row("Label6", "FrameKirk", {2235, 1560}, "0");
}

void TestCalibControls::labels() {
    QFETCH(QString, container);
    QFETCH(QList<int>, twips);
    QFETCH(QString, caption);
    CalibBench at("Beltpack", kKirk);
    at.bench.control<QLineEdit>("TextFMDev").setText("33");
    at.bench.control<QLineEdit>("TextFreqAccr").setText("4");
    at.bench.control<QLineEdit>("TextFreqAccrTx").setText("2");
    at.bench.control<QLineEdit>("TextFreqAccrRx").setText("6");
    at.calibrate([&](QDialog& dialog) {
        const auto& label = part<QLabel>(dialog, QTest::currentDataTag());
        QCOMPARE(label.parentWidget()->objectName(), container);
        QCOMPARE(label.pos(), pixels({twips[0], twips[1], 0, 0}).topLeft());
        QCOMPARE(label.text(), caption);
        if (label.objectName() == "LabelFmDevValue" || label.objectName() == "LabelFreqAccrValue")
            QCOMPARE(label.width(), 375 / 15);
        cancel(dialog);
    });
}

void TestCalibControls::sliders_data() {
    QTest::addColumn<int>("lowest");
    QTest::addColumn<int>("highest");
    QTest::newRow("SliderFmDev") << 0 << 63;
    QTest::newRow("SliderFreqAccr") << -7 << 7;
    QTest::newRow("SliderTx") << 0 << 7;
    QTest::newRow("SliderMid") << 0 << 7;
    QTest::newRow("SliderRx") << 0 << 7;
    QTest::newRow("SliderDCBalance") << 0 << 200;
}

void TestCalibControls::sliders() {
    QFETCH(int, lowest);
    QFETCH(int, highest);
    CalibBench at("Beltpack", kRm5);
    at.calibrate([&](QDialog& dialog) {
        const auto& slider = part<QSlider>(dialog, QTest::currentDataTag());
        QCOMPARE(slider.minimum(), lowest);
        QCOMPARE(slider.maximum(), highest);
        QCOMPARE(slider.orientation(), Qt::Horizontal);
        cancel(dialog);
    });
}

void TestCalibControls::captions() {
    for (const char* target : {"Beltpack", "A", "B"}) {
        CalibBench at(target, kRm5);
        at.bench.person.plan([](QDialog& dialog) {
            const auto& timer = part<QTimer>(dialog, "Timer1");
            QCOMPARE(timer.interval(), 400);
            QVERIFY(timer.isActive());
            QVERIFY(!timer.isSingleShot());
            QFont bold = QApplication::font();
            bold.setBold(true);
            constexpr int kButtons = 100;  // a window manager's, beside the title
            QVERIFY(dialog.width() >= QFontMetrics(bold).horizontalAdvance(dialog.windowTitle()) + kButtons);
            cancel(dialog);
            QTRY_VERIFY(!dialog.isVisible());
        });
        at.press();
        QCOMPARE(at.bench.journal.take().first(), dialogOpened(target));
    }
}

void TestCalibControls::scale() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& slider = part<QSlider>(dialog, "SliderDCBalance");
        QCOMPARE(slider.tickInterval(), 10);
        const QImage middle = slider.grab().toImage();
        slider.setValue(150);
        QVERIFY(slider.grab().toImage() != middle);
        const QImage seen = dialog.grab().toImage();
        const QWidget& frame = part(dialog, "FrameKirk");
        const auto colourAt = [&](int twipsX, int twipsY) {
            const QPoint place = frame.mapTo(&dialog, QPoint(twipsX / 15, twipsY / 15));
            return QColor(seen.pixel(place)).name();
        };
        for (const int x : {375, 1050, 1770})
            QCOMPARE(colourAt(x, 1035), "#c00000");
        for (const int x : {1830, 2250, 2730})
            QCOMPARE(colourAt(x, 1040), "#00c000");
        for (const int x : {2790, 3500, 4170})
            QCOMPARE(colourAt(x, 1035), "#c00000");
        for (const int x : {330, 4230})
            QVERIFY(colourAt(x, 1035) != "#c00000");
        for (const char* line : {"Line1", "Line2", "Line3"})
            QCOMPARE(part(dialog, line).height(), 2);
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibControls::ticks_data() {
    QTest::addColumn<QString>("slider");
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("dark");
    for (const bool dark : {false, true}) {
        const char* palette = dark ? "dark" : "light";
        QTest::addRow("SliderFmDev, %s", palette) << "SliderFmDev" << 8 << dark;
        QTest::addRow("SliderTx, %s", palette) << "SliderTx" << 8 << dark;
        QTest::addRow("SliderDCBalance, %s", palette) << "SliderDCBalance" << 21 << dark;
    }
}

// Along the row of the ticks, and how much they differ from what is between them.
void TestCalibControls::ticks() {
    QFETCH(QString, slider);
    QFETCH(int, count);
    QFETCH(bool, dark);
    constexpr int kLeastContrast = 60;  // of 255
    const PaletteForATest palette(dark ? QPalette(QColor(50, 50, 50)) : QApplication::palette());
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        const auto& control = part<QSlider>(dialog, slider);
        const QWidget& frame = *control.parentWidget();
        const QImage seen = part(dialog, frame.objectName()).grab(control.geometry()).toImage();
        const auto ticksInRow = [&](int y) {
            int found = 0;
            bool isTick = false;
            for (int x = 0; x < seen.width(); ++x) {
                const bool was = isTick;
                isTick = qAbs(qGray(seen.pixel(x, y)) - qGray(seen.pixel(0, y))) >= kLeastContrast;
                found += isTick && !was ? 1 : 0;
            }
            return found;
        };
        int found = 0;
        for (int y = seen.height() * 2 / 3; y < seen.height() && found == 0; ++y)
            found = ticksInRow(y) == count ? count : 0;
        QCOMPARE(found, count);
        cancel(dialog);
    });
}

void TestCalibControls::slidersStandApart() {
    CalibBench at("Beltpack", kKirk);
    for (const char* field : {"TextFreqAccr", "TextFreqAccrTx", "TextFreqAccrRx"})
        at.bench.control<QLineEdit>(field).setText("3");
    at.calibrate([&](QDialog& dialog) {
        QWidget& frame = part(dialog, "FrameKirk");
        const QImage seen = frame.grab().toImage();
        for (const char* name : {"SliderMid", "SliderRx"}) {
            const QRect right = part(dialog, name).geometry();
            // Nothing is drawn where one slider ends and the next begins, but for the ticks below.
            constexpr int kGapOnEachSide = 5;
            const QRgb ground = seen.pixel(right.left(), right.top());
            for (int x = right.left() - kGapOnEachSide; x <= right.left() + kGapOnEachSide; ++x) {
                for (int y = right.top(); y < right.center().y(); ++y)
                    QCOMPARE(QColor(seen.pixel(x, y)).name(), QColor(ground).name());
            }
        }
        cancel(dialog);
    });
}

void TestCalibControls::meter_data() {
    QTest::addColumn<int>("value");
    QTest::addColumn<QColor>("fill");
    QTest::newRow("good") << 120 << QColor(0, 192, 0);
    QTest::newRow("good, below") << 80 << QColor(0, 192, 0);
    QTest::newRow("the last that is good") << 125 << QColor(0, 192, 0);
    QTest::newRow("too high") << 126 << QColor(192, 0, 0);
    QTest::newRow("far too low") << 2 << QColor(192, 0, 0);
}

// Filled from its zero to its value, and pale beyond.
void TestCalibControls::meter() {
    QFETCH(int, value);
    QFETCH(QColor, fill);
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& slider = part<QSlider>(dialog, "SliderDCBalance");
        slider.setValue(value);
        const QImage seen = slider.grab().toImage();
        const auto colourAt = [&](int scaleValue) {
            constexpr int kZero = 8 + 128;  // pixels, as the lines above it have it
            const double x = kZero + (scaleValue - 100) * 128 / 100.0;
            return QColor(seen.pixel(qRound(x), 8));
        };
        QCOMPARE(colourAt((100 + value) / 2), fill);
        const int otherSide = value > 100 ? -1 : 1;
        const QColor good = colourAt(100 + 15 * otherSide);
        const QColor bad = colourAt(100 + 40 * otherSide);
        QVERIFY(good != fill && good.green() > good.red());
        QVERIFY(bad != fill && bad.red() > bad.green());
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibControls::titleFits_data() {
    framesByModule_data();
}

// With the icon and the buttons that a window manager has beside it.
void TestCalibControls::titleFits() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    constexpr int kIconAndButtons = 140;
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        QFont bold = QApplication::font();
        bold.setBold(true);
        const int title = QFontMetrics(bold).horizontalAdvance(dialog.windowTitle());
        QVERIFY2(title + kIconAndButtons <= dialog.width(), qPrintable(dialog.windowTitle()));
        cancel(dialog);
    });
}

void TestCalibControls::dcSliderOnlyShows() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        auto& timer = part<QTimer>(dialog, "Timer1");
        timer.stop();
        auto& slider = part<QSlider>(dialog, "SliderDCBalance");
        QCOMPARE(slider.value(), 100);
        const QPoint place = slider.mapTo(&dialog, QPoint(20, slider.height() / 2));
        QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, {}, place);
        hand::turnWheel(*dialog.childAt(place), 120);
        QVERIFY(!slider.hasFocus());
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
            QVERIFY(!slider.hasFocus());
        }
        // Nor what is sent to it alone.
        QTest::keyClick(&slider, Qt::Key_Right);
        QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(20, slider.height() / 2));
        QWheelEvent wheel({1, 1}, slider.mapToGlobal(QPointF(1, 1)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&slider, &wheel);
        QCOMPARE(slider.value(), 100);
        timer.start();
        cancel(dialog);
    });
}

void TestCalibControls::framesByModule_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    for (const char* target : {"Beltpack", "A", "B"}) {
        QTest::addRow("RM5, %s", target) << target << false;
        QTest::addRow("Kirk, %s", target) << target << true;
    }
}

void TestCalibControls::framesByModule() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        QCOMPARE(part(dialog, "FrameKirk").isVisible(), kirk);
        QCOMPARE(part(dialog, "FrameRssiThreshold").isVisible(), kirk);
        // Of two frames at one place only one may be reached.
        const QWidget* met = dialog.childAt(pixels({300, 1900, 0, 0}).topLeft());
        while (met && !qobject_cast<const QGroupBox*>(met))
            met = met->parentWidget();
        QVERIFY(met);
        QCOMPARE(met->objectName(), QString(kirk ? "FrameKirk" : "FrameRm5"));
        // By the keyboard neither.
        const QWidget& other = part(dialog, kirk ? "FrameRm5" : "FrameKirk");
        QVERIFY(!other.isVisible());
        QStringList reached;
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
            reached << dialog.focusWidget()->objectName();
            QVERIFY2(!other.isAncestorOf(dialog.focusWidget()), qPrintable(reached.last()));
        }
        QVERIFY(reached.contains(kirk ? "SliderMid" : "SliderFreqAccr"));
        cancel(dialog);
    });
}

void TestCalibControls::nothingIsClipped_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    for (const int points : {9, 11, 14, 18}) {
        for (const char* target : {"Beltpack", "A", "B"}) {
            QTest::addRow("RM5, %s, %d", target, points) << points << target << false;
            QTest::addRow("Kirk, %s, %d", target, points) << points << target << true;
        }
    }
}

void TestCalibControls::nothingIsClipped() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    QFETCH(int, points);
    setFontSize(points);
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        QVERIFY(dialog.font().pointSizeF() > 0.85 * points);
        for (QWidget* control : dialog.findChildren<QWidget*>()) {
            if (!control->isVisible() || control->objectName().startsWith("qt_"))
                continue;
            QVERIFY2(control->parentWidget()->rect().contains(control->geometry()),
                     qPrintable(control->objectName()));
        }
        for (const auto& [name, text] :
             {std::pair{"Label1", "Transmit:"}, std::pair{"Label2", "Mid:"}, std::pair{"Label3", "Receive:"},
              std::pair{"LabelRssi", "RSSI: 255"}, std::pair{"LabelDcBal", "DC Bal: No Conn"},
              std::pair{"LabelDcBal", "DC Bal: -100"}, std::pair{"LabelFmDevValue", "63"},
              std::pair{"LabelFreqAccrValue", "-7"}, std::pair{"LabelTxValue", "255"}}) {
            const auto& label = part<QLabel>(dialog, name);
            const QSize needs = label.fontMetrics().size(Qt::TextSingleLine, text);
            QVERIFY2(needs.width() <= label.width() && needs.height() <= label.height(), text);
        }
        for (const auto* box : dialog.findChildren<QGroupBox*>())
            QVERIFY2(box->fontMetrics().horizontalAdvance(box->title()) <= box->width() - 8,
                     qPrintable(box->title()));
        for (const auto* button : dialog.findChildren<QPushButton*>())
            QVERIFY2(button->fontMetrics().horizontalAdvance(button->text()) < button->width(),
                     qPrintable(button->text()));
        cancel(dialog);
    });
}

void TestCalibControls::thresholdFrame_data() {
    QTest::addColumn<QString>("target");
    for (const char* target : {"Beltpack", "A", "B"})
        QTest::newRow(target) << target;
}

void TestCalibControls::thresholdFrame() {
    // A Kirk that does not tell its threshold: the frame stays hidden, the dialog opens all the same.
    QFETCH(QString, target);
    CalibBench at(target, kKirk);
    at.unit().addFault({sim::FaultKind::kNoReply, target == "Beltpack" ? 0x38 : 0x0B, 0, true});
    at.calibrate([&](QDialog& dialog) {
        QVERIFY(!part(dialog, "FrameRssiThreshold").isVisible());
        QVERIFY(part(dialog, "FrameKirk").isVisible());
        QVERIFY(at.unit().inCalibrationMode());
        cancel(dialog);
    });
    QVERIFY(!at.unit().inCalibrationMode());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibControls, QApplication)
#include "test_calib_controls.moc"
