#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QWindow>

#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

/// The fields of the System ID, typed into with real keys.
class TestSystemIdWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void splitsAtTheTenthRelease();
    void cursorStaysWhereItIs();
    void selectionStays();
    void eleventhCharacter();
    void pasteSplitsWithItsKey();
    void mouseAloneSplitsNothing();
    void lengths_data();
    void lengths();
    void editedDigit();
    void composes_data();
    void composes();
    void composesWithTheLastDigit();
    void incompleteComponentsChangeNothing();
    void endsAreKept();

private:
    QLineEdit& field(const char* name) { return bench_->control<QLineEdit>(name); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Replaces what a field holds, key by key.
    void type(const char* name, const QString& text);
    QStringList components() {
        return {bench_->text("TextEic"), bench_->text("TextFpn"), bench_->text("TextFps")};
    }

    std::unique_ptr<Bench> bench_;
};

void TestSystemIdWindow::init() {
    renew(bench_);
    bench_->startWith(kRm5);
}

void TestSystemIdWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(bench_->window().windowHandle(), key, modifiers);
}

void TestSystemIdWindow::type(const char* name, const QString& text) {
    hand::click(field(name));
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    for (const QChar c : text)
        QTest::keyClick(bench_->window().windowHandle(), c.toLatin1());
}

void TestSystemIdWindow::splitsAtTheTenthRelease() {
    QWindow* window = bench_->window().windowHandle();
    const QString parkB = "3123456A27";
    hand::click(field("TextParkB"));
    for (int i = 0; i < parkB.size(); ++i) {
        QTest::keyPress(window, parkB[i].toLatin1());
        QCOMPARE(bench_->text("TextParkB"), parkB.left(i + 1));
        QCOMPARE(components(), QStringList({"", "", ""}));
        QTest::keyRelease(window, parkB[i].toLatin1());
        if (i + 1 < parkB.size())
            QCOMPARE(components(), QStringList({"", "", ""}));
    }
    QCOMPARE(components(), QStringList({"1234", "*5*6", "A"}));
    QCOMPARE(bench_->text("TextParkB"), parkB);
}

// The split writes the same PARK B back; whoever types must not notice that.
void TestSystemIdWindow::cursorStaysWhereItIs() {
    type("TextParkB", "3123456A27");
    QCOMPARE(field("TextParkB").cursorPosition(), 10);
    for (const int position : {9, 8, 7}) {
        press(Qt::Key_Left);
        QCOMPARE(field("TextParkB").cursorPosition(), position);
    }
    press(Qt::Key_Delete);
    QTest::keyClick(bench_->window().windowHandle(), 'B');
    QCOMPARE(bench_->text("TextParkB"), "3123456B27");
    QCOMPARE(field("TextParkB").cursorPosition(), 8);
}

void TestSystemIdWindow::selectionStays() {
    type("TextParkB", "3123456A27");
    press(Qt::Key_Home);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(field("TextParkB").selectedText(), "31");
}

// An eleventh character is kept in the field, and nothing follows from it.
void TestSystemIdWindow::eleventhCharacter() {
    type("TextParkB", "3123456A279");
    QCOMPARE(bench_->text("TextParkB"), "3123456A279");
    QCOMPARE(components(), QStringList({"1234", "*5*6", "A"}));
}

void TestSystemIdWindow::pasteSplitsWithItsKey() {
    QApplication::clipboard()->setText("100ECE1000");
    hand::click(field("TextParkB"));
    press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(components(), QStringList({"00EC", "*E*1", "0"}));
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
}

// Only a released key splits it.
void TestSystemIdWindow::mouseAloneSplitsNothing() {
    field("TextParkB").setText("100ECE1000");
    hand::click(field("TextParkB"));
    QCOMPARE(components(), QStringList({"", "", ""}));
    press(Qt::Key_Left);
    QCOMPARE(components(), QStringList({"00EC", "*E*1", "0"}));
}

void TestSystemIdWindow::lengths_data() {
    QTest::addColumn<QString>("parkB");
    QTest::addColumn<QStringList>("expected");
    const QStringList none{"", "", ""};
    QTest::newRow("9 characters") << "100ECE100" << none;
    QTest::newRow("10 characters") << "9AAAAAAA55" << QStringList({"AAAA", "*A*A", "A"});
    QTest::newRow("not hexadecimal") << "1WXYZ.-/00" << QStringList({"WXYZ", "*.*-", "/"});
}

void TestSystemIdWindow::lengths() {
    QFETCH(QString, parkB);
    QFETCH(QStringList, expected);
    type("TextParkB", parkB);
    QCOMPARE(components(), expected);
    QCOMPARE(bench_->text("TextParkB"), parkB);
}

void TestSystemIdWindow::editedDigit() {
    type("TextParkB", "3123456A27");
    press(Qt::Key_Home);
    press(Qt::Key_Delete);
    QCOMPARE(components(), QStringList({"1234", "*5*6", "A"}));
    QTest::keyClick(bench_->window().windowHandle(), 'F');
    QCOMPARE(bench_->text("TextParkB"), "F123456A27");
    QCOMPARE(components(), QStringList({"1234", "*5*6", "A"}));
}

void TestSystemIdWindow::composes_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QStringList>("components");
    QTest::addColumn<QString>("after");
    QTest::newRow("empty") << "" << QStringList({"00EC", "*E*1", "0"}) << "100ECE1000";
    QTest::newRow("ends kept") << "3FFFFFFF27" << QStringList({"1234", "*5*6", "A"}) << "3123456A27";
    QTest::newRow("9 characters before") << "3FFFFFFF2" << QStringList({"1234", "*5*6", "A"}) << "1123456A00";
    QTest::newRow("11 characters before")
        << "3FFFFFFF278" << QStringList({"1234", "*5*6", "A"}) << "1123456A00";
    QTest::newRow("2nd and 4th of the FPN") << "" << QStringList({"0000", "ABCD", "0"}) << "10000BD000";
    QTest::newRow("not hexadecimal") << "" << QStringList({"GHIJ", "XYXZ", "-"}) << "1GHIJYZ-00";
}

void TestSystemIdWindow::composes() {
    QFETCH(QString, before);
    QFETCH(QStringList, components);
    QFETCH(QString, after);
    // Of ten characters its keys would fill the components at once.
    field("TextParkB").setText(before);
    type("TextEic", components[0]);
    type("TextFpn", components[1]);
    QCOMPARE(bench_->text("TextParkB"), before);
    type("TextFps", components[2]);
    QCOMPARE(bench_->text("TextParkB"), after);
}

void TestSystemIdWindow::composesWithTheLastDigit() {
    type("TextFpn", "*E*1");
    type("TextFps", "0");
    type("TextEic", "00E");
    QCOMPARE(bench_->text("TextParkB"), "");
    QTest::keyPress(bench_->window().windowHandle(), 'C');
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
    QTest::keyRelease(bench_->window().windowHandle(), 'C');
    QCOMPARE(bench_->text("TextParkB"), "100ECE1000");
}

void TestSystemIdWindow::incompleteComponentsChangeNothing() {
    type("TextParkB", "3123456A27");
    type("TextFps", "");
    QCOMPARE(bench_->text("TextParkB"), "3123456A27");
    type("TextFps", "BC");
    QCOMPARE(bench_->text("TextParkB"), "3123456B27");  // with the B; the C makes it incomplete again
    type("TextEic", "123");
    QCOMPARE(bench_->text("TextParkB"), "3123456B27");
}

// A read shows the unit's own digits between the ends of the PARK B that stood there.
void TestSystemIdWindow::endsAreKept() {
    type("TextParkB", "9AAAAAAA55");
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->text("TextParkB"), "900ECE1055");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSystemIdWindow, QApplication)
#include "test_system_id_window.moc"
