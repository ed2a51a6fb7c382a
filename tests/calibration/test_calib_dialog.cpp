#include <QRegularExpression>
#include <QSignalSpy>
#include <cstdlib>

#include "tests/calibration/calib_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kNoUnit = failureEntry("Could not communicate with device!");
const QStringList kKirkReadBack{"! 03090000", "# 013D", "# 013c", "# 0139", "# 013a", "# 0138"};

}  // namespace

/// The dialog in use: its buttons and keys, what a Kirk streams, closing.
class TestCalibDialog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cancelled_data();
    void cancelled();
    void confirmed_data();
    void confirmed();
    void okWithoutUnit();
    void liveReadings();
    void noConnection();
    void silentKirk_data();
    void silentKirk();
    void closingEndsTheRead_data();
    void closingEndsTheRead();
    void thresholdField_data();
    void thresholdField();
    void enterUpdatesOnce_data();
    void enterUpdatesOnce();
    void enterElsewherePressesNothing();
    void thresholdRefused();
    void thresholdOutOfRange();
    void faultInTheDialog();
    void overflowBeforeAnything();
    void cablePulled();
};

void TestCalibDialog::cancelled_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("way");
    for (const char* target : {"Beltpack", "A", "B"}) {
        for (const char* way : {"button", "Enter", "Esc", "close box", "Alt+C"}) {
            QTest::addRow("RM5, %s, %s", target, way) << target << false << way;
            QTest::addRow("Kirk, %s, %s", target, way) << target << true << way;
        }
    }
}

void TestCalibDialog::cancelled() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    QFETCH(QString, way);
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        if (way == "Esc") {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        } else if (way == "Enter") {
            part(dialog, "CommandCancel").setFocus();
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
        } else if (way == "close box") {
            QVERIFY(!dialog.close());  // the timer closes it, not the click
        } else if (way == "Alt+C") {
            QTest::keyClick(dialog.windowHandle(), Qt::Key_C, Qt::AltModifier);
        } else {
            cancel(dialog);
        }
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened(target)));
    QCOMPARE(at.bench.status(), target == "Beltpack" ? "black: Beltpack Calibration Cancelled."
                                : target == "A"
                                    ? "black: Active Antenna calibration cancelled."
                                    : "black: Active Antenna FM Deviation calibration Cancelled.");
    // The values are read back all the same.
    const QString first = target == "Beltpack" ? "# 013D" : target == "A" ? "# 0101" : "# 0102";
    QCOMPARE(at.bench.wire.lines().value(kirk ? 1 : 0), first);
    QVERIFY(!at.bench.text(target == "Beltpack" ? "TextFMDev" : "TextFmDev" + target).isEmpty());
    QVERIFY(!at.unit().inCalibrationMode());
}

void TestCalibDialog::confirmed_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("fm");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char* target, bool kirk, const char* fm, const QStringList& lines) {
        QTest::addRow("%s, %s", kirk ? "Kirk" : "RM5", target) << target << kirk << fm << lines;
    };
    row("Beltpack", false, "TextFMDev", {"# 0102", "# 027d21", "# 027c0C", "# 013D", "# 013c"});
    row("Beltpack", true, "TextFMDev", QStringList{"# 0102", "# 027d21", "# 027c03"} + kKirkReadBack);
    row("A", false, "TextFmDevA", {"# 0102", "# 024121", "# 02450C", "# 0101", "# 0105"});
    row("A", true, "TextFmDevA",
        {"# 0102", "# 024121", "# 024503", "! 03080000", "# 0101", "# 0105", "# 0107", "# 0109"});
    row("B", false, "TextFmDevB", {"# 0102", "# 024221", "# 02460C", "# 0102", "# 0106"});
    row("B", true, "TextFmDevB",
        {"# 0102", "# 024221", "# 024603", "! 03080000", "# 0102", "# 0106", "# 0108", "# 010a"});
}

void TestCalibDialog::confirmed() {
    QFETCH(QString, target);
    QFETCH(bool, kirk);
    QFETCH(QString, fm);
    QFETCH(QStringList, lines);
    CalibBench at(target, kirk ? kKirk : kRm5);
    at.bench.control<QLineEdit>(fm).setText("33");
    at.bench.control<QLineEdit>(target == "Beltpack" ? "TextFreqAccr" : "TextFreqAdj" + target).setText("3");
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        hand::click(part(dialog, "CommandOK"));
        QCOMPARE(Bench::isHourglassUp(), false);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened(target)));
    QCOMPARE(at.bench.wire.lines(), lines);
    QCOMPARE(at.bench.text(fm), "33");
    QCOMPARE(at.bench.status(), target == "Beltpack" ? "black: Beltpack Calibrated successfully."
                                : target == "A"
                                    ? "black: Active Antenna calibrated successfully."
                                    : "black: Active Antenna FM Deviation calibrated successfully.");
}

void TestCalibDialog::okWithoutUnit() {
    CalibBench at("Beltpack", kRm5);
    at.unit().addFault({sim::FaultKind::kNoReply, 0x02, 0, true});
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        hand::click(part(dialog, "CommandOK"));
        QCOMPARE(at.bench.journal.take(), QStringList({dialogOpened("Beltpack"), kNoUnit}));
        QCOMPARE(at.bench.wire.lines(), QStringList("# 0102"));
        QVERIFY(dialog.isVisible());
        QVERIFY(!Bench::isHourglassUp());
        hand::click(part(dialog, "CommandOK"));  // this time the unit answers
    });
    QCOMPARE(at.bench.journal.take(), QStringList());
    QCOMPARE(at.bench.status(), "black: Beltpack Calibrated successfully.");
}

void TestCalibDialog::liveReadings() {
    CalibBench at("Beltpack", kKirk);
    at.bench.control<QLineEdit>("TextFreqAccr").setText("4");
    at.calibrate([&](QDialog& dialog) {
        const auto& rssi = part<QLabel>(dialog, "LabelRssi");
        const auto& balance = part<QLabel>(dialog, "LabelDcBal");
        const auto& scale = part<QSlider>(dialog, "SliderDCBalance");
        const QRegularExpression reading("^DC Bal: (-?[0-9]+)$");
        const auto shown = [&] { return reading.match(balance.text()).captured(1); };
        QTRY_VERIFY(QRegularExpression("^RSSI: [0-9]{2,3}$").match(rssi.text()).hasMatch());
        QTRY_VERIFY(!shown().isEmpty());
        QCOMPARE(scale.value(), shown().toInt() + 100);
        // It is alive: another Mid value moves it, and it never stands still for long.
        at.unit().setValue(0x3C, "04");
        QTRY_VERIFY(std::abs(shown().toInt()) < 30);
        const int before = shown().toInt();
        hand::turnWheel(part<QSlider>(dialog, "SliderMid"), 120);
        QTRY_VERIFY(shown().toInt() > before + 15);
        QCOMPARE(scale.value(), shown().toInt() + 100);
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened("Beltpack")));
}

void TestCalibDialog::noConnection() {
    CalibBench at("A", kKirk);
    at.unit().calibrationStream().signal().setCarrierPresent(false);
    at.calibrate([&](QDialog& dialog) {
        QTRY_COMPARE(part<QLabel>(dialog, "LabelDcBal").text(), "DC Bal: No Conn");
        QCOMPARE(part<QSlider>(dialog, "SliderDCBalance").value(), 100);
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened("A")));
}

void TestCalibDialog::silentKirk_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("fm");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("status");
    QTest::newRow("Beltpack") << "Beltpack"
                              << "TextFMDev" << QStringList({"# 0138", "! 0309E803", "! 03090000"})
                              << "Error occured during Beltpack Calibration.";
    const QStringList antenna{"! 0308E803", "# 010B", "! 03080000"};
    QTest::newRow("A") << "A"
                       << "TextFmDevA" << antenna << "Error occured during Active Antenna calibration.";
    QTest::newRow("B") << "B"
                       << "TextFmDevB" << antenna
                       << "Error occured during Active Antenna FM Deviation calibration.";
}

void TestCalibDialog::silentKirk() {
    QFETCH(QString, target);
    QFETCH(QString, fm);
    QFETCH(QStringList, lines);
    QFETCH(QString, status);
    CalibBench at(target, kKirk);
    at.bench.control<QLineEdit>(fm).setText("7");
    at.unit().addFault({sim::FaultKind::kStreamStops, std::nullopt, 0, false});
    at.bench.wire.forgetLines();
    at.calibrate([](QDialog&) {});
    QCOMPARE(at.bench.journal.take(), QStringList({dialogOpened(target), kNoUnit}));
    QCOMPARE(at.bench.wire.lines(), lines);
    QCOMPARE(at.bench.status(), "black: " + status);
    QCOMPARE(at.bench.text(fm), "7");
}

void TestCalibDialog::closingEndsTheRead_data() {
    QTest::addColumn<QString>("how");
    for (const char* how : {"CommandCancel", "CommandOK", "Esc", "window button"})
        QTest::newRow(how) << how;
}

void TestCalibDialog::closingEndsTheRead() {
    QFETCH(QString, how);
    CalibBench at("Beltpack", kKirk);
    at.unit().calibrationStream().setIntervalMs(8000);
    std::int64_t closingAt = 0;
    at.calibrate([&](QDialog& dialog) {
        at.bench.loop.inNextWait([&] {
            closingAt = at.bench.clock.nowMs;
            if (how == "Esc")
                QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
            else if (how == "window button")
                dialog.windowHandle()->close();
            else
                hand::click(part(dialog, how));
        });
        QTRY_VERIFY(!dialog.isVisible());
        // No record has come, and none was waited for.
        QCOMPARE(part<QLabel>(dialog, "LabelRssi").text(), "RSSI:");
        QVERIFY(at.bench.clock.nowMs - closingAt < 1000);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened("Beltpack")));
    QCOMPARE(at.bench.status(), how == "CommandOK" ? "black: Beltpack Calibrated successfully."
                                                   : "black: Beltpack Calibration Cancelled.");
}

void TestCalibDialog::thresholdField_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::newRow("digits") << "0123456789"
                            << "0123456789";
    QTest::newRow("letters") << "a1bZ2xyz"
                             << "12";
    QTest::newRow("sign and point") << "-7.5"
                                    << "-7.5";
    QTest::newRow("blank and others below 9") << "1 2/*+,#"
                                              << "1 2/*+,#";
    QTest::newRow("just above 9") << ":;<=>?@5"
                                  << "5";
    QTest::newRow("more than ten") << "12345678901"
                                   << "1234567890";
}

void TestCalibDialog::thresholdField() {
    QFETCH(QString, typed);
    QFETCH(QString, text);
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        auto& field = part<QLineEdit>(dialog, "TextRssiThr");
        field.clear();
        field.setFocus();
        QTest::keyClicks(&field, typed);
        QCOMPARE(field.text(), text);
        QTest::keyClick(&field, Qt::Key_Backspace);
        QCOMPARE(field.text(), text.chopped(1));
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened("Beltpack")));
}

void TestCalibDialog::enterUpdatesOnce_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("how");
    for (const char* target : {"Beltpack", "A", "B"}) {
        for (const char* how : {"Enter", "keypad Enter", "button"})
            QTest::addRow("%s, %s", target, how) << target << how;
    }
}

void TestCalibDialog::enterUpdatesOnce() {
    QFETCH(QString, target);
    QFETCH(QString, how);
    CalibBench at(target, kKirk);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        auto& field = part<QLineEdit>(dialog, "TextRssiThr");
        field.clear();
        field.setFocus();
        QTest::keyClicks(&field, "255");
        at.bench.wire.forgetLines();
        if (how == "button")
            hand::click(part(dialog, "CmdSetRssiThr"));
        else
            QTest::keyClick(dialog.windowHandle(), how == "Enter" ? Qt::Key_Return : Qt::Key_Enter);
        QCOMPARE(at.bench.wire.lines(), target == "Beltpack" ? QStringList({"# 0278FF", "# 0138"})
                                                             : QStringList({"# 024BFF", "# 010B"}));
        QCOMPARE(at.bench.status(), "black: Beltpack's RSSI Threshold updated successfully.");
        QVERIFY(dialog.isVisible());
        QCOMPARE(field.text(), "255");
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened(target)));
}

void TestCalibDialog::enterElsewherePressesNothing() {
    CalibBench at("Beltpack", kRm5);
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        for (const char* slider : {"SliderFmDev", "SliderFreqAccr"}) {
            part(dialog, slider).setFocus();
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
        }
        const QSignalSpy ticks(&part<QTimer>(dialog, "Timer1"), &QTimer::timeout);
        QTRY_VERIFY(ticks.size() >= 3);  // a button pressed by mistake would have closed the dialog by now
        QVERIFY(dialog.isVisible());
        QCOMPARE(at.bench.wire.lines(), QStringList());
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList(dialogOpened("Beltpack")));
}

void TestCalibDialog::thresholdRefused() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        at.unit().addFault({sim::FaultKind::kNoReply, 0x38, 0, true});
        auto& field = part<QLineEdit>(dialog, "TextRssiThr");
        field.setText("99");
        at.unit().calibrationStream().stop();
        hand::click(part(dialog, "CmdSetRssiThr"));
        QCOMPARE(at.bench.journal.take(),
                 QStringList(
                     {dialogOpened("Beltpack"), failureEntry("Value could not read back from Beltpack!")}));
        QCOMPARE(at.bench.status(), "black: Beltpack's RSSI Threshold could not be updated.");
        QCOMPARE(field.text(), "99");
        QVERIFY(dialog.isVisible());
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList());
}

void TestCalibDialog::thresholdOutOfRange() {
    CalibBench at("Beltpack", kKirk);
    at.calibrate([&](QDialog& dialog) {
        part<QTimer>(dialog, "Timer1").stop();
        part<QLineEdit>(dialog, "TextRssiThr").setText("32768");
        at.bench.wire.forgetLines();
        hand::click(part(dialog, "CmdSetRssiThr"));
        QCOMPARE(at.bench.journal.take(),
                 QStringList({dialogOpened("Beltpack"),
                              failureEntry("The RSSI threshold must be a number from -32768 to 32767.")}));
        QCOMPARE(at.bench.wire.lines(), QStringList());
        QVERIFY(dialog.isVisible());
        part<QTimer>(dialog, "Timer1").start();
        cancel(dialog);
    });
    QCOMPARE(at.bench.journal.take(), QStringList());
}

void TestCalibDialog::faultInTheDialog() {
    // The sum leaves 16 bits. Before the program ends, the unit is told to leave calibration mode.
    CalibBench at("Beltpack", kKirk);
    at.bench.control<QLineEdit>("TextFreqAccrTx").setText("32767");
    at.calibrate([&](QDialog& dialog) {
        at.bench.wire.forgetLines();
        hand::turnWheel(part<QSlider>(dialog, "SliderMid"), 120);
        QCOMPARE(at.bench.journal.take(),
                 QStringList({dialogOpened("Beltpack"), failureEntry("Run-time error '6':\r\n\r\nOverflow"),
                              "close", "end 1"}));
        QCOMPARE(at.bench.wire.lines(), QStringList("! 03090000"));
        QVERIFY(!part<QTimer>(dialog, "Timer1").isActive());
        dialog.done(QDialog::Rejected);  // the program would have ended
    });
}

void TestCalibDialog::overflowBeforeAnything() {
    CalibBench at("Beltpack", kKirk);
    at.bench.control<QLineEdit>("TextFMDev").setText("40000");
    at.bench.wire.forgetLines();
    at.press();
    QCOMPARE(at.bench.journal.take(),
             QStringList({failureEntry("Run-time error '6':\r\n\r\nOverflow"), "close", "end 1"}));
    QCOMPARE(at.bench.wire.lines(), QStringList());
}

void TestCalibDialog::cablePulled() {
    CalibBench at("B", kKirk);
    at.calibrate([&](QDialog& dialog) {
        QTRY_VERIFY(part<QLabel>(dialog, "LabelRssi").text() != "RSSI:");
        at.bench.wire.pullCable();
    });
    QCOMPARE(at.bench.journal.take(), QStringList({dialogOpened("B"), kNoUnit}));
    QCOMPARE(at.bench.status(), "black: Error occured during Active Antenna FM Deviation calibration.");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCalibDialog, QApplication)
#include "test_calib_dialog.moc"
