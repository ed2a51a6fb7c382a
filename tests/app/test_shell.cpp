#include <QLabel>
#include <QScopeGuard>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <chrono>
#include <cmath>

#include "form/guard.h"
#include "link/runtime_fault.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kSuccess = "green: Settings read from Beltpack successfully.";

/// How many lines a message box really shows its text on.
int linesShown(const QMessageBox& box) {
    const auto* text = box.findChild<QLabel*>("qt_msgbox_label");
    return qRound(double(text->sizeHint().height()) / text->fontMetrics().lineSpacing());
}

QPalette darkPalette() {
    QPalette dark(QColor(45, 45, 45), QColor(30, 30, 30));
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Text, Qt::white);
    return dark;
}

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

}  // namespace

/// The window around the pages: menus, ends of the program, its last resort, the status line.
class TestShell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void cleanup();
    void about();
    void aboutHasItsLines_data();
    void aboutHasItsLines();
    void failureBoxHasItsLines();
    void exitAtRest_data();
    void exitAtRest();
    void exitDuringAnExchange_data();
    void exitDuringAnExchange();
    void exitWithoutAPort();
    void closeAtRest();
    void closeDuringAnExchange();
    void closeWithoutAPort();
    void keysDoNothing_data();
    void keysDoNothing();
    void uncaughtFault_data();
    void uncaughtFault();
    void faultTakesTheHourglassDown();
    void statusColours_data();
    void statusColours();
    void versionRequest_data();
    void versionRequest();
    void boxesStandOverTheWindow();

private:
    std::unique_ptr<Bench> bench_;
};

void TestShell::cleanup() {
    QCOMPARE(bench_->person.plansLeft(), std::size_t{0});
    bench_.reset();
}

void TestShell::about() {
    bench_->startWith(kRm5);
    bench_->clickMenu("mnuAbout");
    const QStringList happened = bench_->journal.take();
    QCOMPARE(happened.size(), 1);
    const QString head =
        boxEntry("information", "About Quorvex Config",
                 QString::fromUtf8("Quorvex® Configuration Utility v" QUORVEX_VERSION "\r\r"));
    QVERIFY2(happened.first().startsWith(head), qPrintable(happened.first()));
    const QString notice = happened.first().mid(head.size());
    QVERIFY(notice.endsWith('\r'));
    QVERIFY(notice.size() > 1);
    QCOMPARE(notice.count('\r'), 1);
    QCOMPARE(notice.count('\n'), 0);
    QVERIFY(bench_->wire.lines().isEmpty());
}

void TestShell::aboutHasItsLines_data() {
    QTest::addColumn<QString>("style");
    QTest::newRow("Fusion") << "Fusion";
    QTest::newRow("Windows") << "Windows";
}

// Version, an empty line, the notice: as a person sees them, under whatever style.
void TestShell::aboutHasItsLines() {
    QFETCH(QString, style);
    const auto back =
        qScopeGuard([before = QApplication::style()->name()] { QApplication::setStyle(before); });
    QApplication::setStyle(style);
    bench_->startWith(kRm5);
    int lines = 0;
    bench_->person.beforeOk([&](QMessageBox& box) { lines = linesShown(box); });
    bench_->clickMenu("mnuAbout");
    QCOMPARE(lines, 4);  // with the one that the last line end begins
}

void TestShell::failureBoxHasItsLines() {
    bench_->start();
    int lines = 0;
    bench_->person.beforeOk([&](QMessageBox& box) { lines = linesShown(box); });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(lines, 3);
}

void TestShell::exitAtRest_data() {
    QTest::addColumn<QString>("page");
    for (const char* page : {"BeltPack", "Active Antenna", "R-Screen"})
        QTest::newRow(page) << page;
}

void TestShell::exitAtRest() {
    QFETCH(QString, page);
    bench_->startWith(kRm5);
    bench_->clickTab(page);
    bench_->clickMenu("mnuExit");
    // Not closed by the window: the windows are not unloaded.
    QCOMPARE(bench_->journal.take(), QStringList({"close", "end 0"}));
    QVERIFY(bench_->window().isVisible());
}

void TestShell::exitDuringAnExchange_data() {
    QTest::addColumn<QString>("line");
    for (const char* line : {"# 0139", "# 0101", "# 0115", "# 013C", "! 0108"})
        QTest::newRow(line) << line;
}

void TestShell::exitDuringAnExchange() {
    QFETCH(QString, line);
    bench_->startWith(kRm5);
    QStringList atEnd;
    bench_->duringExchange(line, [&] {
        bench_->clickMenu("mnuExit");
        atEnd = bench_->journal.take() + QStringList(bench_->wire.lines().last());
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(atEnd, QStringList({"close", "end 0", line}));
}

void TestShell::exitWithoutAPort() {
    bench_->wire.refuse(1);
    bench_->person.plan([](QDialog& dialog) { hand::click(*dialog.findChild<QWidget*>("CmdCancel")); });
    bench_->start();
    bench_->journal.take();
    bench_->clickMenu("mnuExit");
    QCOMPARE(bench_->journal.take(), QStringList("end 0"));
}

void TestShell::closeAtRest() {
    bench_->startWith(kRm5);
    bench_->window().windowHandle()->close();
    QCOMPARE(bench_->journal.take(), QStringList({"close", "end 0"}));
}

void TestShell::closeDuringAnExchange() {
    bench_->startWith(kRm5);
    QStringList atEnd;
    bench_->duringExchange("# 0105", [&] {
        bench_->window().windowHandle()->close();
        atEnd = bench_->journal.take() + QStringList(bench_->wire.lines().last());
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(atEnd, QStringList({"close", "end 0", "# 0105"}));
}

// Then the window unloads as any window does, and the program runs out.
void TestShell::closeWithoutAPort() {
    bench_->wire.refuse(1);
    bench_->person.plan([](QDialog& dialog) { hand::click(*dialog.findChild<QWidget*>("CmdCancel")); });
    bench_->start();
    bench_->journal.take();
    constexpr int kStillRunning = 77;
    QTimer limit;
    connect(&limit, &QTimer::timeout, qApp, [] { QApplication::exit(kStillRunning); });
    limit.start(std::chrono::seconds(5));
    QTimer::singleShot(0, &bench_->window(), [this] { bench_->window().windowHandle()->close(); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(bench_->journal.take(), QStringList());
    QVERIFY(!bench_->window().isVisible());
}

void TestShell::keysDoNothing_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Esc") << int(Qt::Key_Escape);
    QTest::newRow("F1") << int(Qt::Key_F1);
    QTest::newRow("Enter") << int(Qt::Key_Return);
}

void TestShell::keysDoNothing() {
    QFETCH(int, key);
    bench_->startWith(kRm5);
    bench_->window().setFocus();
    QTest::keyClick(bench_->window().windowHandle(), static_cast<Qt::Key>(key));
    QCOMPARE(bench_->journal.take(), QStringList());
    QVERIFY(bench_->wire.lines().isEmpty());
    QVERIFY(bench_->window().isVisible());
}

void TestShell::uncaughtFault_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("kind");
    QTest::newRow("mismatch") << 13 << "Type mismatch";
    QTest::newRow("overflow") << 6 << "Overflow";
    QTest::newRow("range") << 9 << "Subscript out of range";
    QTest::newRow("another") << 5 << "Invalid procedure call or argument";
}

void TestShell::uncaughtFault() {
    QFETCH(int, number);
    QFETCH(QString, kind);
    bench_->startWith(kRm5);
    guarded([&] { throw RuntimeFault(number, kind.toStdString()); });
    const QString text = QStringLiteral("Run-time error '%1':\r\n\r\n%2").arg(number).arg(kind);
    QCOMPARE(bench_->journal.take(), QStringList({failureEntry(text), "close", "end 1"}));
}

void TestShell::faultTakesTheHourglassDown() {
    bench_->startWith(kRm5);
    bool upAtBox = true;
    bench_->person.beforeOk([&](QMessageBox&) { upAtBox = Bench::isHourglassUp(); });
    QStringList happened;
    bench_->duringExchange("# 0105", [&] {
        guarded([] { throw RuntimeFault::overflow(); });
        happened = bench_->journal.take();
        bench_->person.beforeOk({});  // the program would have ended
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(happened, QStringList({failureEntry("Run-time error '6':\r\n\r\nOverflow"), "close", "end 1"}));
    QVERIFY(!upAtBox);
}

void TestShell::statusColours_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light palette") << false;
    QTest::newRow("dark palette") << true;
}

void TestShell::statusColours() {
    QFETCH(bool, dark);
    const QPalette before = QApplication::palette();
    if (dark)
        QApplication::setPalette(darkPalette());
    bench_->startWith(kRm5).setAvailable(0x05, false);
    auto& line = bench_->control<QLabel>("LblStatus");
    const auto contrast = [&line] {
        const QColor ground = line.grab().toImage().pixelColor(line.width() - 6, line.height() / 2);
        const double text = luminance(line.palette().color(QPalette::WindowText));
        return (luminance(ground) + 0.05) / (text + 0.05);
    };
    QList<double> contrasts{contrast()};
    bench_->duringExchange("# 0106", [&] {
        QVERIFY(bench_->status().startsWith("red: "));
        contrasts << contrast();
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->status(), kSuccess);
    contrasts << contrast();
    // The desktop may turn dark while the program runs.
    QApplication::setPalette(dark ? before : darkPalette());
    QCoreApplication::processEvents();
    QCOMPARE(bench_->status(), kSuccess);
    contrasts << contrast();
    QApplication::setPalette(before);
    constexpr double kReadable = 3.6;  // pure red on white has 4.0, the green 3.9
    for (const double each : contrasts)
        QVERIFY2(each >= kReadable, qPrintable(QString::number(each)));
    QCOMPARE(contrasts.size(), 4);
}

void TestShell::versionRequest_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("line");
    QTest::newRow("Beltpack") << "BeltPack"
                              << "CommandDectPPVerReq"
                              << "TextDectVerBP"
                              << "! 0108";
    QTest::newRow("Active Antenna") << "Active Antenna"
                                    << "CommandDectVerReq"
                                    << "TextDectVer"
                                    << "! 0107";
}

// No hourglass and no status text: the field itself tells.
void TestShell::versionRequest() {
    QFETCH(QString, page);
    QFETCH(QString, button);
    QFETCH(QString, field);
    QFETCH(QString, line);
    bench_->start();
    bench_->journal.take();
    bench_->clickTab(page);
    bench_->click(button);
    QCOMPARE(bench_->text(field), "Unavailable");
    QCOMPARE(bench_->clock.nowMs, 2000);
    bench_->wire.answer(line, "! 0400\r\n#DECT Version:12.3.4x\r\n");
    bench_->click(button);
    QCOMPARE(bench_->text(field), "12.3.4");
    QCOMPARE(bench_->steps(), QStringList({line + " | pointer | black: ", line + " | pointer | black: "}));
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), "black: ");
}

void TestShell::boxesStandOverTheWindow() {
    bench_->startWith(kRm5);
    const QWidget* under = nullptr;
    bench_->person.beforeOk([&](QMessageBox& box) { under = box.parentWidget(); });
    bench_->clickMenu("mnuAbout");
    QCOMPARE(under, &bench_->window());
    // Over the dialog where one is open: a box behind it could not be answered.
    bench_->wire.refuse(1);
    const QWidget* portDialog = nullptr;
    bench_->person.plan([&](QDialog& dialog) {
        portDialog = &dialog;
        hand::click(*dialog.findChild<QWidget*>("CmdOK"));
        hand::click(*dialog.findChild<QWidget*>("CmdCancel"));
    });
    bench_->clickMenu("mnuComPort");
    QVERIFY(portDialog);
    QCOMPARE(under, portDialog);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestShell, QApplication)
#include "test_shell.moc"
