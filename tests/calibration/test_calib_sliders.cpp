#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionSlider>

#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// The middle of a slider's handle, where a hand takes it.
QPoint handleOf(const QSlider& slider) {
    QStyleOptionSlider option;
    option.initFrom(&slider);
    option.subControls = QStyle::SC_All;
    option.orientation = Qt::Horizontal;
    option.minimum = slider.minimum();
    option.maximum = slider.maximum();
    option.sliderPosition = slider.sliderPosition();
    option.sliderValue = slider.value();
    option.tickPosition = slider.tickPosition();
    option.tickInterval = slider.tickInterval();
    return slider.style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider)
        .center();
}

void drag(QSlider& slider, int pixels) {
    QWindow* window = slider.window()->windowHandle();
    const QPoint from = slider.mapTo(slider.window(), handleOf(slider));
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    for (int moved = 0; moved != pixels; moved += pixels > 0 ? 1 : -1)
        QTest::mouseMove(window, from + QPoint(moved, 0));
    QTest::mouseMove(window, from + QPoint(pixels, 0));
    QTest::mouseRelease(window, Qt::LeftButton, {}, from + QPoint(pixels, 0));
}

/// What the sliders of a Kirk Beltpack start from.
void fill(CalibBench& at, const char* mid, const char* transmit, const char* receive) {
    at.bench.control<QLineEdit>("TextFreqAccr").setText(mid);
    at.bench.control<QLineEdit>("TextFreqAccrTx").setText(transmit);
    at.bench.control<QLineEdit>("TextFreqAccrRx").setText(receive);
}

QString twoDigits(int value) {
    return QString("%1").arg(value, 2, 16, QLatin1Char('0')).toUpper();
}

}  // namespace

/// The sliders under a hand: whatever moves one is sent, at once and once.
class TestCalibSliders : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void steps_data();
    void steps();
    void dragged_data();
    void dragged();
    void ends_data();
    void ends();
    void midMovesAllThree();
    void midJumps();
    void dragForgetsTheSum_data();
    void dragForgetsTheSum();
    void fillingSendsNothing_data();
    void fillingSendsNothing();
    void beyondTheRange();
};

void TestCalibSliders::steps_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("slider");
    QTest::addColumn<QString>("head");  // of the line, before the value
    QTest::addColumn<QString>("tail");  // after it
    QTest::addColumn<QString>("label");
    const auto row = [](const char* target, bool kirk, const char* slider, const char* head, const char* tail,
                        const char* label) {
        QTest::addRow("%s, %s", slider, target) << target << kirk << slider << head << tail << label;
    };
    row("Beltpack", false, "SliderFmDev", "! 0207", "", "LabelFmDevValue");
    row("A", false, "SliderFmDev", "! 0306", "28", "LabelFmDevValue");
    row("B", false, "SliderFmDev", "! 030628", "", "LabelFmDevValue");
    row("Beltpack", true, "SliderTx", "# 027a", "", "LabelTxValue");
    row("A", true, "SliderTx", "# 0249", "", "LabelTxValue");
    row("B", true, "SliderTx", "# 024a", "", "LabelTxValue");
    row("Beltpack", true, "SliderRx", "# 0279", "", "LabelRxValue");
    row("A", true, "SliderRx", "# 0247", "", "LabelRxValue");
    row("B", true, "SliderRx", "# 0248", "", "LabelRxValue");
}

void TestCalibSliders::steps() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    QFETCH(QString, slider);
    QFETCH(QString, head);
    QFETCH(QString, tail);
    QFETCH(QString, label);
    CalibBench at(target, kirk ? kKirk : kRm5);
    // The other module's FM deviation is 40, all other values are 3.
    for (const char* name :
         {"TextFMDev", "TextFmDevA", "TextFmDevB", "TextFreqAccr", "TextFreqAccrTx", "TextFreqAccrRx",
          "TextFreqAdjTxA", "TextFreqAdjRxA", "TextFreqAdjTxB", "TextFreqAdjRxB"})
        at.bench.control<QLineEdit>(name).setText("3");
    if (target != "Beltpack")
        at.bench.control<QLineEdit>(target == "A" ? "TextFmDevB" : "TextFmDevA").setText("40");
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();  // reading takes nothing away
        auto& moved = part<QSlider>(dialog, slider);
        const auto sends = [&](const char* how, int value, const std::function<void()>& deed) {
            at.bench.wire.forgetLines();
            deed();
            QVERIFY2(at.bench.wire.lines() == QStringList(head + twoDigits(value) + tail),
                     qPrintable(how + QString(": ") + at.bench.wire.lines().join("; ")));
            QCOMPARE(part<QLabel>(dialog, label).text(), QString::number(value));
        };
        sends("wheel up", 4, [&] { hand::turnWheel(moved, 120); });
        sends("wheel down", 3, [&] { hand::turnWheel(moved, -120); });
        sends("click right of the handle", 4,
              [&] { hand::clickAt(moved, QPoint(moved.width() - 10, handleOf(moved).y())); });
        sends("click left of the handle", 3, [&] { hand::clickAt(moved, QPoint(5, handleOf(moved).y())); });
        moved.setFocus();
        sends("Right", 4, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Right); });
        sends("Up", 5, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Up); });
        sends("Left", 4, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Left); });
        sends("Down", 3, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Down); });
        sends("Home", 0, [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_Home); });
        sends("End", moved.maximum(), [&] { QTest::keyClick(dialog.windowHandle(), Qt::Key_End); });
        // At its end it does not move, and nothing is sent.
        at.bench.wire.forgetLines();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Right);
        hand::turnWheel(moved, 120);
        QCOMPARE(at.bench.wire.lines(), QStringList());
        sends("code", 1, [&] { moved.setValue(1); });
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibSliders::dragged_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("slider");
    QTest::addColumn<QString>("head");
    QTest::newRow("SliderFmDev") << false << "SliderFmDev"
                                 << "! 0207";
    QTest::newRow("SliderTx") << true << "SliderTx"
                              << "# 027a";
    QTest::newRow("SliderRx") << true << "SliderRx"
                              << "# 0279";
}

void TestCalibSliders::dragged() {
    QFETCH(bool, kirk);
    QFETCH(QString, slider);
    QFETCH(QString, head);
    CalibBench at("Beltpack", kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& moved = part<QSlider>(dialog, slider);
        QList<int> values;
        QObject::connect(&moved, &QSlider::valueChanged, &dialog, [&](int value) { values << value; });
        at.bench.wire.forgetLines();
        drag(moved, 40);
        QVERIFY(values.size() > 1);
        QCOMPARE(values.last(), moved.value());
        QStringList lines;
        for (const int value : std::as_const(values))
            lines << head + twoDigits(value);
        QCOMPARE(at.bench.wire.lines(), lines);
        QVERIFY(moved.value() > 1);
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibSliders::ends_data() {
    QTest::addColumn<QString>("offset");
    QTest::addColumn<QStringList>("lines");  // one step up, two down, for an RM5
    QTest::newRow("0") << "0" << QStringList{"# 027c0E", "# 027c07", "# 027c06"};
    QTest::newRow("-6") << "-6" << QStringList{"# 027c02", "# 027c01", "# 027c00"};
    QTest::newRow("6") << "6" << QStringList{"# 027c08", "# 027c09", "# 027c0A"};
}

void TestCalibSliders::ends() {
    QFETCH(QString, offset);
    QFETCH(QStringList, lines);
    CalibBench at("Beltpack", kRm5);
    at.bench.control<QLineEdit>("TextFreqAccr").setText(offset);
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        part<QSlider>(dialog, "SliderFreqAccr").setFocus();
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Left})
            QTest::keyClick(dialog.windowHandle(), key);
        QCOMPARE(at.bench.wire.lines(), lines);
        // The label shows the offset, the line its code.
        QCOMPARE(part<QLabel>(dialog, "LabelFreqAccrValue").text(), QString::number(offset.toInt() - 1));
        cancel(dialog);
    });
}

void TestCalibSliders::midMovesAllThree() {
    CalibBench at("Beltpack", kKirk);
    fill(at, "4", "2", "6");
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& mid = part<QSlider>(dialog, "SliderMid");
        at.bench.wire.forgetLines();
        mid.setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Right);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Right);
        hand::turnWheel(mid, -120);
        hand::turnWheel(mid, -120);
        // The receive slider holds at most 7, but comes back by what was really added.
        QCOMPARE(at.bench.wire.lines(),
                 QStringList({"# 027907", "# 027a03", "# 027c05", "# 027a04", "# 027c06", "# 027a03",
                              "# 027c05", "# 027906", "# 027a02", "# 027c04"}));
        QCOMPARE(part<QSlider>(dialog, "SliderRx").value(), 6);
        QCOMPARE(part<QLabel>(dialog, "LabelTxValue").text(), "2");
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
    // What was sent stays sent.
    QCOMPARE(QString::fromStdString(at.unit().value(0x3C)), "04");
}

// What the middle slider added stays added, where another slider is at its end too.
void TestCalibSliders::midJumps() {
    CalibBench at("Beltpack", kKirk);
    fill(at, "4", "2", "6");
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        at.bench.wire.forgetLines();
        part<QSlider>(dialog, "SliderMid").setFocus();
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left, Qt::Key_Left, Qt::Key_Home})
            QTest::keyClick(dialog.windowHandle(), key);
        QCOMPARE(at.bench.wire.lines(),
                 QStringList({"# 027907", "# 027a05", "# 027c07", "# 027a04", "# 027c06", "# 027a03",
                              "# 027c05", "# 027902", "# 027a00", "# 027c00"}));
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibSliders::dragForgetsTheSum_data() {
    QTest::addColumn<QString>("head");
    QTest::newRow("SliderTx") << "# 027a";
    QTest::newRow("SliderRx") << "# 0279";
}

void TestCalibSliders::dragForgetsTheSum() {
    QFETCH(QString, head);
    CalibBench at("Beltpack", kKirk);
    fill(at, "4", "20", "20");
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& mid = part<QSlider>(dialog, "SliderMid");
        auto& moved = part<QSlider>(dialog, QTest::currentDataTag());
        at.bench.wire.forgetLines();
        hand::turnWheel(mid, 120);  // the sums are 21: too far away to move a slider
        QCOMPARE(at.bench.wire.lines(), QStringList("# 027c05"));
        hand::turnWheel(moved, -120);  // by hand to 6: the sum starts there
        moved.setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Left);
        hand::turnWheel(mid, 120);
        QCOMPARE(at.bench.wire.lines(),
                 QStringList({"# 027c05", head + "06", head + "05", head + "06", "# 027c06"}));
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
}

void TestCalibSliders::fillingSendsNothing_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    for (const char* target : {"Beltpack", "A", "B"}) {
        QTest::addRow("RM5, %s", target) << target << false;
        QTest::addRow("Kirk, %s", target) << target << true;
    }
}

void TestCalibSliders::fillingSendsNothing() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    CalibBench at(target, kirk ? kKirk : kRm5);
    for (const char* name : {"TextFMDev", "TextFmDevA", "TextFmDevB", "TextFreqAccr", "TextFreqAccrTx",
                             "TextFreqAccrRx", "TextFreqAdjA", "TextFreqAdjTxA", "TextFreqAdjRxA",
                             "TextFreqAdjB", "TextFreqAdjTxB", "TextFreqAdjRxB"})
        at.bench.control<QLineEdit>(name).setText("5");
    at.bench.wire.forgetLines();
    at.calibrate([&](QDialog& dialog) {
        const QStringList entering = !kirk                  ? QStringList{}
                                     : target == "Beltpack" ? QStringList{"# 0138", "! 0309E803"}
                                                            : QStringList{"! 0308E803", "# 010B"};
        QCOMPARE(at.bench.wire.lines(), entering);
        QCOMPARE(part<QSlider>(dialog, "SliderFmDev").value(), 5);
        QCOMPARE(part<QSlider>(dialog, "SliderMid").value(), 5);
        QCOMPARE(part<QLabel>(dialog, "LabelRxValue").text(), "5");
        cancel(dialog);
    });
}

void TestCalibSliders::beyondTheRange() {
    CalibBench at("Beltpack", kKirk);
    at.bench.control<QLineEdit>("TextFMDev").setText("200");
    at.bench.control<QLineEdit>("TextFreqAccrTx").setText("-3");
    at.calibrate([&](QDialog& dialog) {
        // The slider holds what it can; the label shows what was given.
        QCOMPARE(part<QSlider>(dialog, "SliderFmDev").value(), 63);
        QCOMPARE(part<QLabel>(dialog, "LabelFmDevValue").text(), "200");
        QCOMPARE(part<QSlider>(dialog, "SliderTx").value(), 0);
        QCOMPARE(part<QLabel>(dialog, "LabelTxValue").text(), "-3");
        cancel(dialog);
    });
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibSliders, QApplication)
#include "test_calib_sliders.moc"
