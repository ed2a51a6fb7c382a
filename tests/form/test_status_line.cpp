#include <QPaintEvent>
#include <cmath>

#include "form/status_line.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

QPalette darkPalette() {
    return QPalette(QColor(240, 240, 240), QColor(50, 50, 50), QColor(80, 80, 80), QColor(20, 20, 20),
                    QColor(35, 35, 35), QColor(240, 240, 240), QColor(36, 36, 36));
}

/// Of the Web Content Accessibility Guidelines.
double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const double darker = std::min(luminance(one), luminance(other));
    const double lighter = std::max(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

/// What of a widget has been painted.
class PaintWatch : public QObject {
public:
    QRegion painted;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

/// A status line 600 pixels wide in a window.
class Line : public QWidget {
public:
    Line() {
        resize(600, line.height());
        line.resize(size());
    }
    QImage picture() { return grab().toImage(); }

    StatusLine line{this};
};

}  // namespace

/// The status line as it is seen: mark, ground, strip.
class TestStatusLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QApplication::setPalette(QPalette()); }
    void marks_data();
    void marks();
    void marksAreDrawn();
    void newTextPaintsTheMarkToo();
    void isReadable_data();
    void isReadable();
    void textFits();
    void groundInTheDark();
    void followsThePalette();
    void strip();
    void stripInAReadAndAWrite();
    void stripComesDown_data();
    void stripComesDown();
};

void TestStatusLine::marks_data() {
    QTest::addColumn<Colour>("colour");
    QTest::addColumn<Mark>("mark");
    const auto rows = [](Mark mark, Colour colour, std::initializer_list<const char*> texts) {
        for (const char* text : texts)
            QTest::newRow(text) << colour << mark;
    };
    rows(Mark::none, kBlack,
         {"", "Beltpack Calibration Cancelled.", "Active Antenna calibration cancelled.",
          "Active Antenna FM Deviation calibration Cancelled."});
    rows(Mark::working, kBlack,
         {"Reading settings from Beltpack...", "Writing settings to Beltpack...", "Reading FM Deviation...",
          "Detecting RF module type...", "Setting TBR6 mode...", "Sending PSN to Beltpack..."});
    rows(Mark::done, kSuccessGreen,
         {"Settings read from Beltpack successfully.", "Settings written to Beltpack successfully!"});
    rows(Mark::done, kBlack,
         {"Settings read from Active Antenna", "Active Antenna is in TBR6 Mode",
          "Betpack settings saved to file successfully.", "Beltpack settings read from file successfully.",
          "Beltpack Calibrated successfully.", "Active Antenna calibrated successfully.",
          "Beltpack's RSSI Threshold updated successfully.", "Beltpack's System Id updated succesfully."});
    rows(Mark::failed, kRed,
         {"Option Page Change Mode     unavailable!",
          "Too many operations are waiting for the unit; this one was not started."});
    rows(Mark::failed, kBlack,
         {"Error communicating with Beltpack.", "Error communicating with Active Antenna.",
          "Error while writing file.", "Error while reading Beltpack settings from file.",
          "Invalid file specified.", "Error occured during Beltpack Calibration.",
          "Beltpack's PSN could not be updated.", "Beltpack's RF Carrier mask could not be updated."});
}

void TestStatusLine::marks() {
    QFETCH(Colour, colour);
    QFETCH(Mark, mark);
    StatusLine line;
    line.tell(QTest::currentDataTag(), colour);
    QCOMPARE(line.mark(), mark);
    QCOMPARE(line.text(), QTest::currentDataTag());
}

void TestStatusLine::marksAreDrawn() {
    Line window;
    StatusLine& line = window.line;
    QList<QImage> seen;
    for (const char* text : {"Calibration Cancelled.", "Reading...", "Read.", "Error."}) {
        line.tell(text, kBlack);
        const QImage mark = window.picture().copy(2, 2, line.contentsRect().left() - 2, line.height() - 4);
        QVERIFY2(!seen.contains(mark), text);
        seen << mark;
    }
}

void TestStatusLine::newTextPaintsTheMarkToo() {
    PaintWatch watch;
    Line window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    window.line.installEventFilter(&watch);
    window.line.tell("Read.", kBlack);
    QTRY_COMPARE(watch.painted.boundingRect(), window.line.rect());
}

void TestStatusLine::isReadable_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<Colour>("colour");
    for (const bool dark : {false, true}) {
        for (const Colour colour : {kBlack, kRed, kSuccessGreen})
            QTest::addRow("%s, %06x", dark ? "dark" : "light", colour) << dark << colour;
    }
}

// Large bold text counts as readable from a contrast of 3 : 1 on, other text from 4.5 : 1 on.
void TestStatusLine::isReadable() {
    QFETCH(bool, dark);
    QFETCH(Colour, colour);
    if (dark)
        QApplication::setPalette(darkPalette());
    Line window;
    StatusLine& line = window.line;
    line.tell("Settings read", colour);
    QVERIFY(line.font().bold());
    QVERIFY(line.font().pointSizeF() >= 14);
    const QImage picture = window.picture();
    const QColor ground = picture.pixelColor(line.contentsRect().left() - 2, 5);
    QVERIFY2(contrast(ground, line.palette().color(QPalette::WindowText)) >= 3, qPrintable(ground.name()));
    QCOMPARE(ground, line.palette().color(QPalette::Window));
    // The text is really there, in its colour.
    const QRgb text = line.palette().color(QPalette::WindowText).rgb();
    const QImage written = picture.copy(line.contentsRect()).convertToFormat(QImage::Format_RGB32);
    int pixels = 0;
    for (int y = 0; y < written.height(); ++y) {
        for (int x = 0; x < written.width(); ++x)
            pixels += written.pixel(x, y) == text ? 1 : 0;
    }
    QVERIFY(pixels > 50);
}

void TestStatusLine::textFits() {
    Line window;
    StatusLine& line = window.line;
    const int height = line.height();
    for (const char* text : {"Beltpack's RSSI Threshold could not be updated.",
                             "Too many operations are waiting for the unit; this one was not started."}) {
        line.tell(text, kRed);
        QVERIFY2(line.fontMetrics().horizontalAdvance(line.text()) <= line.contentsRect().width(), text);
        QCOMPARE(line.height(), height);
    }
    line.tell("Read.", kBlack);
    QVERIFY(line.font().pointSizeF() >= 14);
}

void TestStatusLine::groundInTheDark() {
    QApplication::setPalette(darkPalette());
    Line window;
    StatusLine& line = window.line;
    const auto isLightAt = [&](int x) { return window.picture().pixelColor(x, 5).lightness() > 128; };
    QVERIFY(!isLightAt(10));
    line.tell("Read.", kBlack);
    QVERIFY(isLightAt(10));
    QVERIFY(!isLightAt(500));
}

void TestStatusLine::followsThePalette() {
    Line window;
    StatusLine& line = window.line;
    line.tell("Read.", kSuccessGreen);
    const QColor light = line.palette().color(QPalette::Window);
    QApplication::setPalette(darkPalette());
    QCoreApplication::processEvents();
    QVERIFY(line.palette().color(QPalette::Window).lightness() < light.lightness());
    QCOMPARE(line.palette().color(QPalette::WindowText), QColor(0, 150, 0));
}

void TestStatusLine::strip() {
    Line window;
    StatusLine& line = window.line;
    const QColor colour = QApplication::palette().color(QPalette::Highlight);
    const auto end = [&] {  // how far the strip goes along the lower edge
        const QImage picture = window.picture();
        int x = 0;
        while (x < picture.width() && picture.pixelColor(x, picture.height() - 2) == colour)
            ++x;
        return x;
    };
    QCOMPARE(end(), 0);
    line.showProgress(7, 21);
    QCOMPARE(end(), 200);
    QCOMPARE(line.accessibleDescription(), "7 of 21");
    line.showProgress(21, 21);
    QCOMPARE(end(), 600);
    line.showProgress(0, 0);
    QCOMPARE(end(), 0);
    QCOMPARE(line.accessibleDescription(), "");
}

void TestStatusLine::stripInAReadAndAWrite() {
    Bench bench;
    bench.startWith(kRm5);
    const auto& line = dynamic_cast<StatusLine&>(bench.control("LblStatus"));
    for (const auto& [button, exchange, count] : {std::tuple{"CommandRdSettingsBp", "# 0108", "7 of 21"},
                                                  std::tuple{"CommandWrite", "# 0103", "2 of 21"}}) {
        QString seen;
        Mark mark = Mark::none;
        bench.duringExchange(exchange, [&] {
            seen = line.accessibleDescription();
            mark = line.mark();
        });
        bench.click(button);
        QCOMPARE(seen, count);
        QCOMPARE(mark, Mark::working);
        QCOMPARE(line.progress(), 0.0);
        QCOMPARE(line.accessibleDescription(), "");
        QCOMPARE(line.mark(), Mark::done);
    }
}

void TestStatusLine::stripComesDown_data() {
    QTest::addColumn<QString>("end");
    for (const char* end : {"silent unit", "pulled cable", "closed port", "second read inside"})
        QTest::newRow(end) << end;
}

void TestStatusLine::stripComesDown() {
    QFETCH(QString, end);
    Bench bench;
    bench.startWith(kRm5);
    const auto& line = dynamic_cast<StatusLine&>(bench.control("LblStatus"));
    double before = 0;
    bench.duringExchange("# 0104", [&] {
        before = line.progress();
        if (end == "silent unit")
            bench.wire.plugIn(nullptr);
        else if (end == "pulled cable")
            bench.wire.pullCable();
        else if (end == "closed port")
            bench.wire.close();
        else
            bench.click("CommandRdSettingsBp");
    });
    double atTheBox = -1;
    bench.person.beforeOk([&](QMessageBox&) { atTheBox = line.progress(); });
    bench.click("CommandRdSettingsBp");
    QVERIFY(before > 0);
    QCOMPARE(line.progress(), 0.0);
    if (end != "second read inside")
        QCOMPARE(atTheBox, 0.0);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestStatusLine, QApplication)
#include "test_status_line.moc"
