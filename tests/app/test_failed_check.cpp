#include <QDialog>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

#include "form/message_box.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr const char* kFailing = "QUORVEX_FAIL_INSIDE";  ///< set in the process that is to fail
constexpr const char* kMessage = "failed inside a dialog";
constexpr int kLimitMs = 20'000;

/// As the calibration dialog while its timer stands.
class StubbornDialog : public QDialog {
public:
    using QDialog::QDialog;
    void reject() override {}
};

void failSoon() {
    QTimer::singleShot(0, qApp, [] { QVERIFY2(false, kMessage); });
}

void failInACalibration() {
    Bench bench;
    bench.startWith(kRm5);
    bench.person.plan([](QDialog& dialog) {
        dialog.findChild<QTimer*>("Timer1")->stop();
        QVERIFY2(false, kMessage);
    });
    bench.click("CommandCalibBp");
}

void failInABox() {
    failSoon();
    showMessageBox("nobody presses its OK", Icon::critical);
}

void failInADialogOverAnother() {
    StubbornDialog below;
    QTimer::singleShot(0, &below, [&below] {
        StubbornDialog above(&below);
        failSoon();
        above.exec();
    });
    below.exec();
}

void failTwice() {
    failInABox();
    failInADialogOverAnother();
}

}  // namespace

/// A check that fails while a dialog is open ends its test all the same, at once and with its message.
class TestFailedCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void endsItsTest_data();
    void endsItsTest();
};

void TestFailedCheck::endsItsTest_data() {
    QTest::addColumn<void (*)()>("fail");
    QTest::newRow("calibration") << &failInACalibration;
    QTest::newRow("box") << &failInABox;
    QTest::newRow("dialog over another") << &failInADialogOverAnother;
    QTest::newRow("one behind the other") << &failTwice;
}

// Each row fails in a process of its own, which this one looks at.
void TestFailedCheck::endsItsTest() {
    using Fail = void (*)();
    QFETCH(Fail, fail);
    if (qEnvironmentVariableIsSet(kFailing)) {
        fail();
        return;
    }
    QProcess failing;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kFailing, "1");
    failing.setProcessEnvironment(environment);
    failing.setProcessChannelMode(QProcess::MergedChannels);
    failing.start(QApplication::applicationFilePath(),
                  {"TestFailedCheck", QString("endsItsTest:") + QTest::currentDataTag()});
    const bool ended = failing.waitForFinished(kLimitMs);
    if (!ended)
        failing.kill();
    failing.waitForFinished();
    const QByteArray told = failing.readAll();
    QVERIFY2(ended, told.constData());
    QCOMPARE(failing.exitStatus(), QProcess::NormalExit);
    QVERIFY2(failing.exitCode() != 0, told.constData());
    QVERIFY2(told.contains(kMessage), told.constData());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestFailedCheck, QApplication)
#include "test_failed_check.moc"
