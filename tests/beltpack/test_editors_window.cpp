#include <QCheckBox>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kNotch = 120;
const QStringList kOptions{"optionMICBal", "optionMICUnBal", "optionMICElectret"};

/// The place of a scroll bar's arrow.
QPoint arrowOf(const QScrollBar& bar, QStyle::SubControl part) {
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = bar.orientation();
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.sliderPosition = bar.sliderPosition();
    option.sliderValue = bar.value();
    option.singleStep = bar.singleStep();
    option.pageStep = bar.pageStep();
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, part, &bar).center();
}

}  // namespace

/// The controls that edit single parameters, and what they leave in the image.
class TestEditorsWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void wheelStores_data() { lists(); }
    void wheelStores();
    void severalNotchesAtOnce_data() { lists(); }
    void severalNotchesAtOnce();
    void keysStore_data() { lists(); }
    void keysStore();
    void stepsPastTheLast_data() { lists(); }
    void stepsPastTheLast();
    void readSelects_data() { lists(); }
    void readSelects();
    void arrowsStore_data() { lists(); }
    void arrowsStore();
    void readStoresNothing_data();
    void readStoresNothing();
    void windowStoresNothing();
    void endOfTheListStoresNothing_data() { lists(); }
    void endOfTheListStoresNothing();
    void microphone_data();
    void microphone();
    void microphoneByKeys();
    void microphoneOneOnly();
    void batteryAlarm_data();
    void batteryAlarm();
    void batteryAlarmBySpace();
    void editsAreWritten();
    void noneSendsAnything();

private:
    static void lists();
    void read();
    void fetchList();
    QString stored() { return imageOf(*bench_)[number_]; }

    std::unique_ptr<Bench> bench_;
    QListWidget* list_ = nullptr;
    QString number_;
};

void TestEditorsWindow::lists() {
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("number");
    QTest::newRow("revisions") << "BPHWRevision" << 0x15;
    QTest::newRow("regulations") << "BPRegulations" << 0x10;
}

void TestEditorsWindow::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    bench_->wire.forgetLines();
}

/// The row's list on its first item.
void TestEditorsWindow::fetchList() {
    QFETCH(QString, list);
    QFETCH(int, number);
    QVERIFY(bench_->startWith(kRm5).setValue(number, "00"));
    read();
    list_ = &bench_->control<QListWidget>(list);
    number_ = QString::number(number, 16).toUpper();
}

void TestEditorsWindow::wheelStores() {
    fetchList();
    QCOMPARE(stored(), "00        ");
    for (const auto& [by, value] :
         std::initializer_list<std::pair<int, const char*>>{{-kNotch, "01        "},
                                                            {-kNotch, "02        "},
                                                            {kNotch, "01        "},
                                                            {kNotch, "00        "}}) {
        hand::turnWheel(*list_->viewport(), by);
        QCOMPARE(stored(), value);
    }
}

// A quick turn comes as one event of several notches: each counts, the one past the last item too.
void TestEditorsWindow::severalNotchesAtOnce() {
    fetchList();
    hand::turnWheel(*list_->viewport(), -2 * kNotch);
    QCOMPARE(stored(), "02        ");
    hand::turnWheel(*list_->viewport(), 5 * kNotch);
    QCOMPARE(stored(), "00        ");
    hand::turnWheel(*list_->viewport(), -3 * kNotch);
    QCOMPARE(stored(), "02        ");
    const bool wraps = list_->objectName() == "BPHWRevision";
    QCOMPARE(list_->verticalScrollBar()->value(), wraps ? 0 : 2);
}

void TestEditorsWindow::keysStore() {
    fetchList();
    for (const auto& [key, value] :
         std::initializer_list<std::pair<Qt::Key, const char*>>{{Qt::Key_Down, "01        "},
                                                                {Qt::Key_Down, "02        "},
                                                                {Qt::Key_Up, "01        "},
                                                                {Qt::Key_Home, "00        "},
                                                                {Qt::Key_End, "02        "},
                                                                {Qt::Key_PageUp, "01        "},
                                                                {Qt::Key_PageDown, "02        "}}) {
        list_->setFocus();
        keys::press(key);
        QCOMPARE(stored(), value);
    }
}

void TestEditorsWindow::arrowsStore() {
    fetchList();
    QScrollBar& bar = *list_->verticalScrollBar();
    const QPoint down = arrowOf(bar, QStyle::SC_ScrollBarAddLine);
    const QPoint up = arrowOf(bar, QStyle::SC_ScrollBarSubLine);
    for (const auto& [place, value] : std::initializer_list<std::pair<QPoint, const char*>>{
             {down, "01        "}, {down, "02        "}, {up, "01        "}}) {
        hand::clickAt(bar, place);
        QCOMPARE(stored(), value);
    }
}

// The revisions begin anew behind the last one, the regulations stay; neither stores anything then.
void TestEditorsWindow::stepsPastTheLast() {
    fetchList();
    list_->setFocus();
    keys::press(Qt::Key_End);
    keys::press(Qt::Key_Down);
    QCOMPARE(stored(), "02        ");
    QCOMPARE(list_->verticalScrollBar()->value(), number_ == "15" ? 0 : 2);
    list_->setFocus();
    keys::press(Qt::Key_Down);
    QCOMPARE(stored(), number_ == "15" ? "01        " : "02        ");
}

// A read selects the item that is seen.
void TestEditorsWindow::readSelects() {
    fetchList();
    QCOMPARE(list_->currentRow(), 0);
    QVERIFY(bench_->beltpack().setValue(number_.toInt(nullptr, 16), "02"));
    read();
    QCOMPARE(list_->currentRow(), 2);
}

// A read positions the lists, and what the unit holds stays in the image as it is.
void TestEditorsWindow::readStoresNothing_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("digits");
    QTest::addColumn<QString>("held");
    QTest::newRow("revision beyond the list") << 0x15 << "07"
                                              << "07        ";
    QTest::newRow("revision in hexadecimal") << 0x15 << "1F"
                                             << "1F        ";
    QTest::newRow("no revision") << 0x15 << ""
                                 << "N/A       ";
    QTest::newRow("no regulation") << 0x10 << ""
                                   << "N/A       ";
    QTest::newRow("regulation in hexadecimal") << 0x10 << "1A"
                                               << "1A        ";
    // The one correction that a read makes.
    QTest::newRow("regulation beyond the list") << 0x10 << "05"
                                                << "00        ";
}

void TestEditorsWindow::readStoresNothing() {
    QFETCH(int, number);
    QFETCH(QString, digits);
    QFETCH(QString, held);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    QVERIFY(unit.setValue(0x15, "02"));
    QVERIFY(unit.setValue(0x10, "02"));
    read();
    if (digits.isEmpty())
        unit.setAvailable(number, false);
    else
        QVERIFY(unit.setValue(number, digits.toStdString()));
    read();
    auto image = imageOf(*bench_);
    QCOMPARE(image[number == 0x15 ? "15" : "10"], held);
    QCOMPARE(image[number == 0x15 ? "10" : "15"], "02        ");
}

void TestEditorsWindow::windowStoresNothing() {
    QVERIFY(bench_->startWith(kRm5).setValue(0x15, "07"));
    bench_->beltpack().setAvailable(0x10, false);
    read();
    bench_->window().resize(1024, 768);
    bench_->clickTab("R-Screen");
    bench_->clickTab("BeltPack");
    hand::click(*bench_->control<QListWidget>("BPHWRevision").viewport());
    bench_->window().resize(900, 700);
    bench_->window().hide();
    bench_->window().show();
    auto image = imageOf(*bench_);
    QCOMPARE(image["15"], "07        ");
    QCOMPARE(image["10"], "N/A       ");
}

void TestEditorsWindow::endOfTheListStoresNothing() {
    fetchList();
    QFETCH(int, number);
    if (number == 0x10) {
        bench_->beltpack().setAvailable(number, false);
    } else {
        QVERIFY(bench_->beltpack().setValue(number, "07"));
    }
    read();
    const QString held = stored();
    hand::turnWheel(*list_->viewport(), kNotch);  // up, at the first item already
    list_->setFocus();
    keys::press(Qt::Key_Up);
    QCOMPARE(stored(), held);
    QVERIFY(held == "07        " || held == "N/A       ");
}

void TestEditorsWindow::microphone_data() {
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("value");
    QTest::newRow("balanced") << 0 << "00        ";
    QTest::newRow("unbalanced") << 1 << "01        ";
    QTest::newRow("electret") << 2 << "02        ";
}

void TestEditorsWindow::microphone() {
    QFETCH(int, option);
    QFETCH(QString, value);
    QVERIFY(bench_->startWith(kRm5).setValue(0x07, option == 0 ? "02" : "00"));
    read();
    bench_->click(kOptions[option]);
    QCOMPARE(imageOf(*bench_)["07"], value);
    for (int i = 0; i < kOptions.size(); ++i)
        QCOMPARE(bench_->control<QRadioButton>(kOptions[i]).isChecked(), i == option);
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
}

void TestEditorsWindow::microphoneByKeys() {
    QVERIFY(bench_->startWith(kRm5).setValue(0x07, "00"));
    read();
    bench_->control("optionMICBal").setFocus();
    keys::press(Qt::Key_Down);
    QVERIFY(bench_->control<QRadioButton>("optionMICUnBal").isChecked());
    QCOMPARE(imageOf(*bench_)["07"], "01        ");
    bench_->control("optionMICElectret").setFocus();
    keys::press(Qt::Key_Space);
    QCOMPARE(imageOf(*bench_)["07"], "02        ");
}

// A type that the unit should not have leaves the options as they were; the click on the one that is on
// already still stores it.
void TestEditorsWindow::microphoneOneOnly() {
    QVERIFY(bench_->startWith(kRm5).setValue(0x07, "01"));
    read();
    QVERIFY(bench_->beltpack().setValue(0x07, "09"));
    read();
    QVERIFY(bench_->control<QRadioButton>("optionMICUnBal").isChecked());
    QCOMPARE(imageOf(*bench_)["07"], "09        ");
    bench_->click("optionMICUnBal");
    QCOMPARE(imageOf(*bench_)["07"], "01        ");
}

void TestEditorsWindow::batteryAlarm_data() {
    QTest::addColumn<QString>("digits");
    QTest::addColumn<int>("shownFirst");
    QTest::addColumn<QStringList>("values");  // after each click
    const QString on = "01        ";
    const QString off = "00        ";
    QTest::newRow("clear") << "00" << int(Qt::Unchecked) << QStringList{on, off, on, off};
    QTest::newRow("checked") << "01" << int(Qt::Checked) << QStringList{off, on, off, on};
    QTest::newRow("greyed") << "02" << int(Qt::PartiallyChecked) << QStringList{on, off, on, off};
}

void TestEditorsWindow::batteryAlarm() {
    QFETCH(QString, digits);
    QFETCH(int, shownFirst);
    QFETCH(QStringList, values);
    QVERIFY(bench_->startWith(kRm5).setValue(0x06, digits.toStdString()));
    read();
    auto& box = bench_->control<QCheckBox>("checkBattAlarm");
    QCOMPARE(static_cast<int>(box.checkState()), shownFirst);
    QCOMPARE(imageOf(*bench_)["06"], digits + "        ");
    for (const QString& value : values) {
        bench_->click("checkBattAlarm");
        QCOMPARE(imageOf(*bench_)["06"], value);
        QCOMPARE(box.checkState(), value.startsWith("01") ? Qt::Checked : Qt::Unchecked);
    }
}

void TestEditorsWindow::batteryAlarmBySpace() {
    QVERIFY(bench_->startWith(kRm5).setValue(0x06, "02"));
    read();
    bench_->control("checkBattAlarm").setFocus();
    keys::press(Qt::Key_Space);
    QCOMPARE(bench_->control<QCheckBox>("checkBattAlarm").checkState(), Qt::Checked);
    QCOMPARE(imageOf(*bench_)["06"], "01        ");
}

void TestEditorsWindow::editsAreWritten() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    for (const int number : {0x06, 0x07, 0x10, 0x15})
        QVERIFY(unit.setValue(number, "00"));
    read();
    bench_->click("optionMICElectret");
    bench_->click("checkBattAlarm");
    hand::turnWheel(*bench_->control<QListWidget>("BPHWRevision").viewport(), -kNotch);
    hand::turnWheel(*bench_->control<QListWidget>("BPRegulations").viewport(), -2 * kNotch);
    bench_->click("CommandWrite");
    QCOMPARE(bench_->status(), "green: Settings written to Beltpack successfully!");
    QCOMPARE(bench_->journal.take(), QStringList());
    for (const char* line : {"# 024702        ", "# 024601        ", "# 025501        ", "# 025002        "})
        QCOMPARE(bench_->wire.lines().count(line), 1);
    QCOMPARE(unit.value(0x06) + unit.value(0x07) + unit.value(0x10) + unit.value(0x15), "01020201");
}

void TestEditorsWindow::noneSendsAnything() {
    bench_->startWith(kRm5);
    read();
    for (const QString& option : kOptions)
        bench_->click(option);
    bench_->click("checkBattAlarm");
    bench_->click("FCCCheckBox");
    for (const char* list : {"BPHWRevision", "BPRegulations"}) {
        hand::turnWheel(*bench_->control<QListWidget>(list).viewport(), -kNotch);
        hand::turnWheel(*bench_->control<QListWidget>(list).viewport(), kNotch);
    }
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestEditorsWindow, QApplication)
#include "test_editors_window.moc"
