#include <QListWidget>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include "tests/support/image_view.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QStringList kRevisions{"RV 4417", "MX 318825", "MX 318825XT"};
const QStringList kRegulations{"STANDARD - EUROPE", "FCC - USA", "JDECT - JAPAN"};

constexpr int kNotch = 120;

}  // namespace

/// The two lists that show one item at a time, by hand.
class TestOneItemList : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void showsOneWholeItem_data() { lists(); }
    void showsOneWholeItem();
    void wheel_data() { lists(); }
    void wheel();
    void fineWheel();
    void keys_data() { lists(); }
    void keys();
    void arrowsOfTheScrollBar_data() { lists(); }
    void arrowsOfTheScrollBar();
    void clickOnTheItem_data() { lists(); }
    void clickOnTheItem();
    void firstLetter();
    void dragOverTheItems_data() { lists(); }
    void dragOverTheItems();
    void largerWindow_data() { lists(); }
    void largerWindow();
    void emptyBeforeARead_data() { lists(); }
    void emptyBeforeARead();
    void emptyChangesNothing();
    void pastTheEndTwice();
    void pageOfTheScrollBar_data() { lists(); }
    void pageOfTheScrollBar();
    void itemsAreWide_data() { lists(); }
    void itemsAreWide();
    void hiddenPageKeepsTheItem();

private:
    void lists();
    void fetchList();
    /// The one item that is seen whole, or what is wrong.
    QString seen();
    void press(Qt::Key key);
    /// Where a step past the last item leads: the revisions begin anew, the regulations stay.
    int behindTheEnd() const { return items_ == kRevisions ? 0 : 2; }

    std::unique_ptr<Bench> bench_;
    QListWidget* list_ = nullptr;
    QStringList items_;
};

void TestOneItemList::init() {
    renew(bench_);
}

void TestOneItemList::lists() {
    QTest::addColumn<QString>("list");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("revisions") << "BPHWRevision" << kRevisions;
    QTest::newRow("regulations") << "BPRegulations" << kRegulations;
}

/// The row's list, filled and on its first item.
void TestOneItemList::fetchList() {
    QFETCH(QString, list);
    QFETCH(QStringList, items);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    QVERIFY(unit.setValue(0x10, "00"));
    QVERIFY(unit.setValue(0x15, "00"));
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    list_ = &bench_->control<QListWidget>(list);
    items_ = items;
    QCOMPARE(seen(), items_[0]);
}

QString TestOneItemList::seen() {
    QStringList whole;
    QStringList partly;
    const QRect view = list_->viewport()->rect();
    for (int i = 0; i < list_->count(); ++i) {
        const QRect place = list_->visualItemRect(list_->item(i));
        if (view.contains(place))
            whole << list_->item(i)->text();
        else if (view.intersects(place))
            partly << list_->item(i)->text();
    }
    if (whole.size() != 1 || !partly.isEmpty())
        return QStringLiteral("whole: %1; partly: %2").arg(whole.join(", "), partly.join(", "));
    const QListWidgetItem* item = list_->itemAt(view.center());
    return item && item->text() == whole.first() ? whole.first() : QStringLiteral("not in the middle");
}

void TestOneItemList::press(Qt::Key key) {
    list_->setFocus();
    QTest::keyClick(bench_->window().windowHandle(), key);
}

void TestOneItemList::showsOneWholeItem() {
    QFETCH(QString, list);
    fetchList();
    const int number = list == "BPRegulations" ? 0x10 : 0x15;
    for (int i = 2; i >= 0; --i) {
        QVERIFY(bench_->beltpack().setValue(number, "0" + std::to_string(i)));
        bench_->click("CommandRdSettingsBp");
        QCOMPARE(seen(), items_[i]);
    }
}

void TestOneItemList::wheel() {
    fetchList();
    hand::turnWheel(*list_->viewport(), -2 * kNotch);
    QCOMPARE(seen(), items_[2]);
    for (const int i : {1, 0, 0}) {  // it stays at its beginning
        hand::turnWheel(*list_->viewport(), kNotch);
        QCOMPARE(seen(), items_[i]);
    }
    for (const int i : {1, 2, behindTheEnd()}) {
        hand::turnWheel(*list_->viewport(), -kNotch);
        QCOMPARE(seen(), items_[i]);
    }
}

// A touch pad tells a notch in pieces.
void TestOneItemList::fineWheel() {
    bench_->startWith(kRm5);
    QVERIFY(bench_->beltpack().setValue(0x15, "00"));
    bench_->click("CommandRdSettingsBp");
    list_ = &bench_->control<QListWidget>("BPHWRevision");
    for (int piece = 0; piece < 3; ++piece)
        hand::turnWheel(*list_->viewport(), -kNotch / 4);
    QCOMPARE(seen(), kRevisions[0]);
    hand::turnWheel(*list_->viewport(), -kNotch / 4);
    QCOMPARE(seen(), kRevisions[1]);
}

void TestOneItemList::keys() {
    fetchList();
    const QList<std::pair<Qt::Key, int>> steps{{Qt::Key_Down, 1},
                                               {Qt::Key_Down, 2},
                                               {Qt::Key_Up, 1},
                                               {Qt::Key_Up, 0},
                                               {Qt::Key_Up, 0},
                                               {Qt::Key_End, 2},
                                               {Qt::Key_End, 2},
                                               {Qt::Key_Home, 0},
                                               {Qt::Key_PageDown, 1},
                                               {Qt::Key_Down, 2},
                                               {Qt::Key_PageUp, 1},
                                               {Qt::Key_PageDown, 2},
                                               {Qt::Key_Down, behindTheEnd()},
                                               {Qt::Key_End, 2},
                                               {Qt::Key_PageDown, behindTheEnd()}};
    for (const auto& [key, index] : steps) {
        press(key);
        QCOMPARE(seen(), items_[index]);
    }
}

void TestOneItemList::arrowsOfTheScrollBar() {
    fetchList();
    QScrollBar* bar = list_->verticalScrollBar();
    QVERIFY(bar->isVisible());
    QStyleOptionSlider option;
    option.initFrom(bar);
    option.orientation = bar->orientation();
    option.minimum = bar->minimum();
    option.maximum = bar->maximum();
    option.sliderPosition = bar->sliderPosition();
    option.sliderValue = bar->value();
    option.singleStep = bar->singleStep();
    option.pageStep = bar->pageStep();
    const auto middleOf = [&](QStyle::SubControl part) {
        return bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, bar).center();
    };
    const QPoint down = middleOf(QStyle::SC_ScrollBarAddLine);
    const QPoint up = middleOf(QStyle::SC_ScrollBarSubLine);
    QVERIFY(down.y() > up.y());
    for (const int i : {1, 2}) {
        hand::clickAt(*bar, down);
        QCOMPARE(seen(), items_[i]);
    }
    for (const int i : {1, 0, 0}) {
        hand::clickAt(*bar, up);
        QCOMPARE(seen(), items_[i]);
    }
    for (const int i : {1, 2, behindTheEnd()}) {
        hand::clickAt(*bar, down);
        QCOMPARE(seen(), items_[i]);
    }
}

void TestOneItemList::clickOnTheItem() {
    fetchList();
    press(Qt::Key_Down);
    hand::click(*list_->viewport());
    QCOMPARE(seen(), items_[1]);
    // Nor does a click into the list let the keys go on from somewhere else.
    press(Qt::Key_Down);
    QCOMPARE(seen(), items_[2]);
}

void TestOneItemList::firstLetter() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    list_ = &bench_->control<QListWidget>("BPRegulations");
    press(Qt::Key_J);
    QCOMPARE(seen(), kRegulations[2]);
    press(Qt::Key_Up);
    QCOMPARE(seen(), kRegulations[1]);
}

// Pressing, and pulling the pointer down out of the list, must not leave it between two items.
void TestOneItemList::dragOverTheItems() {
    fetchList();
    QWidget* window = list_->window();
    const QPoint middle = list_->viewport()->mapTo(window, list_->viewport()->rect().center());
    QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, middle);
    for (int by = 4; by <= list_->height(); by += 4)
        QTest::mouseMove(window->windowHandle(), middle + QPoint(0, by));
    QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, middle + QPoint(0, list_->height()));
    QVERIFY2(items_.contains(seen()), qPrintable(seen()));
}

void TestOneItemList::largerWindow() {
    fetchList();
    press(Qt::Key_End);
    bench_->window().resize(1024, 768);
    QTRY_COMPARE(bench_->window().width(), 1024);
    QCOMPARE(seen(), items_[2]);
    press(Qt::Key_Up);
    QCOMPARE(seen(), items_[1]);
}

void TestOneItemList::emptyBeforeARead() {
    QFETCH(QString, list);
    bench_->startWith(kRm5);
    list_ = &bench_->control<QListWidget>(list);
    hand::turnWheel(*list_->viewport(), -kNotch);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_J})
        press(key);
    hand::click(*list_->viewport());
    QCOMPARE(list_->count(), 0);
    QCOMPARE(bench_->journal.take(), QStringList());
}

// A load fills the image and leaves the lists empty.
void TestOneItemList::emptyChangesNothing() {
    const QString path = bench_->noPorts.filePath("unit.bpc");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("K4700\r\n" + QByteArray("17\r\n").repeated(21));
    file.close();
    bench_->startWith(kRm5);
    bench_->person.plan([&](QDialog& dialog) {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    });
    bench_->click("CommandRead");
    const auto before = imageOf(*bench_);
    QCOMPARE(before.at("15"), "17        ");
    for (const char* name : {"BPHWRevision", "BPRegulations"}) {
        list_ = &bench_->control<QListWidget>(name);
        QCOMPARE(list_->count(), 0);
        hand::turnWheel(*list_->viewport(), -kNotch);
        hand::turnWheel(*list_->viewport(), kNotch);
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home,
                                  Qt::Key_End, Qt::Key_J})
            press(key);
        for (const auto action : {QAbstractSlider::SliderSingleStepAdd, QAbstractSlider::SliderPageStepAdd})
            list_->verticalScrollBar()->triggerAction(action);
        QCOMPARE(imageOf(*bench_), before);
    }
}

// It stays at its last item, and goes back from there.
void TestOneItemList::pastTheEndTwice() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    list_ = &bench_->control<QListWidget>("BPRegulations");
    press(Qt::Key_End);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_PageDown}) {
        press(key);
        QCOMPARE(seen(), kRegulations[2]);
        QCOMPARE(imageOf(*bench_).at("10"), "02        ");
    }
    press(Qt::Key_Up);
    QCOMPARE(seen(), kRegulations[1]);
    QCOMPARE(imageOf(*bench_).at("10"), "01        ");
}

// A page is what is seen, one item. By the menu of the scroll bar there is a step down at the end, too.
void TestOneItemList::pageOfTheScrollBar() {
    fetchList();
    for (const int i : {1, 2, behindTheEnd()}) {
        list_->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QCOMPARE(seen(), items_[i]);
    }
}

void TestOneItemList::itemsAreWide() {
    fetchList();
    constexpr int kItemMargin = 2;
    for (const QString& item : items_) {
        const int needed = list_->fontMetrics().horizontalAdvance(item) + 2 * kItemMargin;
        QVERIFY2(needed <= list_->viewport()->width(), qPrintable(item));
    }
    QVERIFY(list_->fontMetrics().height() <= list_->viewport()->height());
}

void TestOneItemList::hiddenPageKeepsTheItem() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    list_ = &bench_->control<QListWidget>("BPHWRevision");
    QCOMPARE(seen(), kRevisions[2]);
    bench_->clickTab("R-Screen");
    bench_->clickTab("BeltPack");
    QCOMPARE(seen(), kRevisions[2]);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestOneItemList, QApplication)
#include "test_one_item_list.moc"
