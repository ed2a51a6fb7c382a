#include <QTest>

#include "tests/rscreen/screen_bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
const QString kOutOfRange = "box critical: The auto-increment number must be from 0 to 255. []";
}

/// The names under which pictures are saved, and the number that counts in them.
class TestSaving : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
    void counts();
    void counterIsRead_data();
    void counterIsRead();
    void counterIsRefused_data();
    void counterIsRefused();
    void typedKeyByKey();
    void countsPastTheEnd();
    void unnumberedAtTheEnd();
    void failedSave_data();
    void failedSave();
    void succeedsAfterAFailure();
};

void TestSaving::names_data() {
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("checked");
    QTest::addColumn<QByteArray>("counter");
    QTest::addColumn<QString>("path");
    QTest::newRow("numbered") << "C:\\caps\\"
                              << "Grab1" << 1 << QByteArray("7") << "C:\\caps\\Grab17.bmp";
    QTest::newRow("greyed counts as checked") << "/"
                                              << "a" << 2 << QByteArray("7") << "/a7.bmp";
    QTest::newRow("not numbered") << "C:\\caps\\"
                                  << "Grab1" << 0 << QByteArray("7") << "C:\\caps\\Grab1.bmp";
    QTest::newRow("root without separator") << "/caps"
                                            << "Grab1" << 1 << QByteArray("0") << "/capsGrab10.bmp";
    QTest::newRow("no root") << ""
                             << "Grab1" << 1 << QByteArray("12") << "Grab112.bmp";
    QTest::newRow("no name") << "/caps/"
                             << "" << 1 << QByteArray("255") << "/caps/255.bmp";
    QTest::newRow("nothing at all") << ""
                                    << "" << 0 << QByteArray("0") << ".bmp";
    QTest::newRow("ending already there") << "/"
                                          << "a.bmp" << 0 << QByteArray("0") << "/a.bmp.bmp";
    QTest::newRow("blanks stay") << "/my caps/"
                                 << " a " << 1 << QByteArray("3") << "/my caps/ a 3.bmp";
    QTest::newRow("number without zeros") << "/"
                                          << "a" << 1 << QByteArray("007") << "/a7.bmp";
    QTest::newRow("other letters") << "/B\u00FCro/"
                                   << "\u0416\u6F22" << 1 << QByteArray("1")
                                   << "/B\u00FCro/\u0416\u6F221.bmp";
}

void TestSaving::names() {
    QFETCH(QString, root);
    QFETCH(QString, name);
    QFETCH(int, checked);
    QFETCH(QByteArray, counter);
    QFETCH(QString, path);
    ScreenBench at;
    at.rootDir.type(root.toStdString());
    at.fileName.type(name.toStdString());
    at.autoIncrement.setValue(checked);
    at.typeCounter(counter);
    at.journal.take();
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.entriesOf("save "), QStringList("save " + path));
}

void TestSaving::counts() {
    ScreenBench at;
    at.fileName.type("a");
    at.autoIncrement.setValue(1);
    at.journal.take();
    for (int i = 0; i < 3; ++i)
        at.screen.CommandScreenDump_Click();
    at.autoIncrement.setValue(0);
    at.screen.CommandScreenDump_Click();
    at.autoIncrement.setValue(1);
    at.typeCounter("99");
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.take(),
             QStringList({"save a0.bmp", "autoIncValText = 1", "save a1.bmp", "autoIncValText = 2",
                          "save a2.bmp", "autoIncValText = 3", "AutoIncrementOption = 0", "save a.bmp",
                          "AutoIncrementOption = 1", "save a99.bmp", "autoIncValText = 100"}));
}

void TestSaving::counterIsRead_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::newRow("0") << QByteArray("0") << "0.bmp";
    QTest::newRow("254") << QByteArray("254") << "254.bmp";
    QTest::newRow("255") << QByteArray("255") << "255.bmp";
    QTest::newRow("zeros before") << QByteArray("000255") << "255.bmp";
    QTest::newRow("blanks around") << QByteArray(" 12 ") << "12.bmp";
    QTest::newRow("nothing") << QByteArray() << "0.bmp";
    QTest::newRow("no number") << QByteArray("abc") << "0.bmp";
    QTest::newRow("number, then text") << QByteArray("12abc") << "12.bmp";
    QTest::newRow("sign alone") << QByteArray("-") << "0.bmp";
}

void TestSaving::counterIsRead() {
    QFETCH(QByteArray, text);
    QFETCH(QString, path);
    ScreenBench at;
    at.autoIncrement.setValue(1);
    at.typeCounter("77");
    at.journal.take();
    at.typeCounter(text);
    QCOMPARE(at.journal.take(), QStringList());  // the field is left as it was typed
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.entriesOf("save "), QStringList("save " + path));
}

void TestSaving::counterIsRefused_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("256") << QByteArray("256");
    QTest::newRow("-1") << QByteArray("-1");
    QTest::newRow("1000") << QByteArray("1000");
    QTest::newRow("65536") << QByteArray("65536");
    QTest::newRow("65791, 255 in its low byte") << QByteArray("65791");
    QTest::newRow("beyond 32 bits") << QByteArray("4294967296");
    QTest::newRow("beyond everything") << QByteArray(400, '9');
}

void TestSaving::counterIsRefused() {
    QFETCH(QByteArray, text);
    ScreenBench at;
    at.autoIncrement.setValue(1);
    at.typeCounter("77");
    at.journal.take();
    at.typeCounter(text);
    // The field is right again before the box opens.
    QCOMPARE(at.journal.take(), QStringList({"autoIncValText = 77", kOutOfRange}));
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.take(), QStringList({"save 77.bmp", "autoIncValText = 78"}));
}

void TestSaving::typedKeyByKey() {
    ScreenBench at;
    at.typeCounter("2");
    at.typeCounter("25");
    QCOMPARE(at.journal.take(), QStringList());
    at.typeCounter("256");
    QCOMPARE(at.journal.take(), QStringList({"autoIncValText = 25", kOutOfRange}));
    at.typeCounter("255");
    at.autoIncrement.setValue(1);
    at.journal.take();
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.entriesOf("save "), QStringList("save 255.bmp"));
}

// The picture is saved before it is counted, and the count is refused.
void TestSaving::countsPastTheEnd() {
    ScreenBench at;
    at.autoIncrement.setValue(1);
    at.typeCounter("254");
    at.journal.take();
    at.screen.CommandScreenDump_Click();
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.take(),
             QStringList({"save 254.bmp", "autoIncValText = 255", "save 255.bmp", kOutOfRange}));
    QCOMPARE(shown(at.counter.text()), "255");
    // Never 256, never from 0 again.
    at.screen.CommandScreenDump_Click();
    for (const QString& entry : at.journal.take())
        QVERIFY2(entry == kOutOfRange || entry == "save 255.bmp", qPrintable(entry));
    QCOMPARE(shown(at.counter.text()), "255");
}

void TestSaving::unnumberedAtTheEnd() {
    ScreenBench at;
    at.typeCounter("255");
    at.fileName.type("a");
    at.screen.CommandScreenDump_Click();
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.take(), QStringList({"save a.bmp", "save a.bmp"}));
}

void TestSaving::failedSave_data() {
    QTest::addColumn<int>("checked");
    QTest::addColumn<QByteArray>("counter");
    QTest::newRow("numbered") << 1 << QByteArray("7");
    QTest::newRow("at the last number") << 1 << QByteArray("255");
    QTest::newRow("not numbered") << 0 << QByteArray("7");
}

void TestSaving::failedSave() {
    QFETCH(int, checked);
    QFETCH(QByteArray, counter);
    ScreenBench at;
    at.autoIncrement.setValue(checked);
    at.typeCounter(counter);
    at.receive(frame(1));
    at.tick();
    at.window.problem = "The disk is full";
    at.journal.take();
    at.screen.CommandScreenDump_Click();
    const QStringList happened = at.journal.take();
    QCOMPARE(happened.size(), 2);  // the save and one box; the counter is not even written anew
    QVERIFY2(happened[1].startsWith("box critical: ") && happened[1].contains("The disk is full"),
             qPrintable(happened[1]));
    QCOMPARE(shown(at.counter.text()), QString::fromLatin1(counter));
    at.tick();
    QCOMPARE(at.shownFrame(), pictureBytes(1));
}

void TestSaving::succeedsAfterAFailure() {
    ScreenBench at;
    at.autoIncrement.setValue(1);
    at.window.problem = "The disk is full";
    at.screen.CommandScreenDump_Click();
    at.window.problem.clear();
    at.journal.take();
    at.screen.CommandScreenDump_Click();
    QCOMPARE(at.journal.take(), QStringList({"save 0.bmp", "autoIncValText = 1"}));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSaving, quorvex::NoApplication)
#include "test_saving.moc"
