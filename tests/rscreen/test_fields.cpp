#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>

#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
const QString kShownOutOfRange = failureEntry("The auto-increment number must be from 0 to 255.");
}

/// The fields of the page under real keys.
class TestFields : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void names_data();
    void names();
    void countsOn();
    void counterAsTyped_data();
    void counterAsTyped();
    void counterPastTheEnd();
    void savesPastTheEnd();
    void settingsAreKept();
    void framesDoNotDisturbTyping();

private:
    QStringList saved() const { return QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<ScreenPage> page_;
};

void TestFields::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    page_ = std::make_unique<ScreenPage>();
    page_->toFront();
    page_->type("screenDump", folder_->path() + '/');
}

void TestFields::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
}

void TestFields::names_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("numbered");
    QTest::addColumn<QString>("file");
    QTest::newRow("as it opens") << "Grab1" << false << "Grab1.bmp";
    QTest::newRow("numbered") << "Grab1" << true << "Grab10.bmp";
    QTest::newRow("empty and numbered") << "" << true << "0.bmp";
    QTest::newRow("empty") << "" << false << ".bmp";
    QTest::newRow("blanks and points") << "a b.c" << false << "a b.c.bmp";
    QTest::newRow("Latin letters with marks")
        << QString::fromUtf8("Menü") << false << QString::fromUtf8("Menü.bmp");
    QTest::newRow("other letters") << QString::fromUtf8("Меню漢") << true << QString::fromUtf8("Меню漢0.bmp");
}

void TestFields::names() {
    QFETCH(QString, name);
    QFETCH(bool, numbered);
    QFETCH(QString, file);
    page_->type("ScreenDumpFName", name);
    if (numbered)
        page_->bench.click("AutoIncrementOption");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(saved(), QStringList(file));
    QCOMPARE(page_->bench.text("autoIncValText"), numbered ? "1" : "0");
}

void TestFields::countsOn() {
    page_->bench.click("AutoIncrementOption");
    page_->type("autoIncValText", "9");
    page_->bench.click("CommandScreenDump");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(page_->bench.text("autoIncValText"), "11");
    page_->bench.click("AutoIncrementOption");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(page_->bench.text("autoIncValText"), "11");
    QCOMPARE(saved(), QStringList({"Grab1.bmp", "Grab110.bmp", "Grab19.bmp"}));
}

void TestFields::counterAsTyped_data() {
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("left");    // in the field
    QTest::addColumn<QString>("number");  // of the next file
    QTest::addColumn<int>("boxes");
    QTest::newRow("255") << "255"
                         << "255"
                         << "255" << 0;
    QTest::newRow("256") << "256"
                         << "25"
                         << "25" << 1;
    QTest::newRow("300") << "300"
                         << "30"
                         << "30" << 1;
    QTest::newRow("-1") << "-1"
                        << "0"
                        << "0" << 1;
    QTest::newRow("nothing") << ""
                             << ""
                             << "0" << 0;
    QTest::newRow("text") << "abc"
                          << "abc"
                          << "0" << 0;
    QTest::newRow("zeros before") << "012"
                                  << "012"
                                  << "12" << 0;
}

void TestFields::counterAsTyped() {
    QFETCH(QString, keys);
    QFETCH(QString, left);
    QFETCH(QString, number);
    QFETCH(int, boxes);
    page_->type("autoIncValText", keys);
    QCOMPARE(page_->bench.journal.take(), QStringList(boxes, kShownOutOfRange));
    QCOMPARE(page_->bench.text("autoIncValText"), left);
    page_->bench.click("AutoIncrementOption");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(saved(), QStringList("Grab1" + number + ".bmp"));
    QCOMPARE(page_->bench.journal.take(), QStringList(number == "255" ? 1 : 0, kShownOutOfRange));  // no 256
}

// Pasted at once, over a number that was right.
void TestFields::counterPastTheEnd() {
    page_->type("autoIncValText", "200");
    page_->bench.control<QLineEdit>("autoIncValText").setText("2000");
    QCOMPARE(page_->bench.journal.take(), QStringList(kShownOutOfRange));
    QCOMPARE(page_->bench.text("autoIncValText"), "200");
}

void TestFields::savesPastTheEnd() {
    page_->bench.click("AutoIncrementOption");
    page_->type("autoIncValText", "254");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_->bench.click("CommandScreenDump");
    QCOMPARE(page_->bench.journal.take(), QStringList(kShownOutOfRange));
    QCOMPARE(page_->bench.text("autoIncValText"), "255");
    QCOMPARE(saved(), QStringList({"Grab1254.bmp", "Grab1255.bmp"}));
}

// The counter lives as long as the window, and no longer.
void TestFields::settingsAreKept() {
    page_->bench.click("AutoIncrementOption");
    page_->bench.click("CommandScreenDump");
    page_->bench.clickTab("BeltPack");
    page_->toFront();
    QCOMPARE(page_->bench.text("autoIncValText"), "1");
    page_ = std::make_unique<ScreenPage>();
    QCOMPARE(page_->bench.text("autoIncValText"), "0");
    QCOMPARE(page_->bench.text("ScreenDumpFName"), "Grab1");
    QCOMPARE(page_->bench.text("screenDump"), "");
}

void TestFields::framesDoNotDisturbTyping() {
    QWidget& field = page_->bench.control("ScreenDumpFName");
    page_->type("ScreenDumpFName", "");
    const QString text = "display";
    for (int i = 0; i < text.size(); ++i) {
        QTest::keyClicks(&field, text.mid(i, 1));
        page_->show(pictureBytes(i));
    }
    QCOMPARE(page_->bench.text("ScreenDumpFName"), text);
    QVERIFY(field.hasFocus());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestFields, QApplication)
#include "test_fields.moc"
