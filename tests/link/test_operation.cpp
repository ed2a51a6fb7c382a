#include <QTest>
#include <deque>
#include <optional>
#include <stdexcept>

#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

constexpr int kMost = 32;
constexpr const char* kEnter = "! 0309E803";
constexpr const char* kLeave = "! 03090000";
const QString kRefused =
    "status red: Too many operations are waiting for the unit; this one was not started.";

/// What an operation makes of a unit that answers at once.
QString asked(Operation& operation) {
    return shown(operation.exchange("# 0102", 8));
}

}  // namespace

/// One operation: how long it lasts, what it sends when it is over, and what it leaves behind.
class TestOperation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void overOnceThePortIsGone_data();
    void overOnceThePortIsGone();
    void overInItsWait_data() { overOnceThePortIsGone_data(); }
    void overInItsWait();
    void closedFromTheStart();
    void notWantedAnyMore();
    void notWantedInItsWait();
    void latest();
    void hourglass();
    void progress();
    void modeIsLeft_data();
    void modeIsLeft();
    void modesAreLeftTheNewestFirst();
    void modeOfAUnitThatIsGone();
    void portInUse();
    void refused();
    void refusedWithoutRoomForAll();
    void refusedLeavesNoTrace();

private:
    void change(const QString& way);

    std::optional<LinkFixture> at_;
};

void TestOperation::init() {
    at_.emplace();
    at_->port.answer("# 0102", "# 02821F\r\n");
}

void TestOperation::change(const QString& way) {
    if (way == "lost")
        at_->port.unplug();
    else
        at_->port.close();
    if (way == "opened again")
        at_->port.open(1);
    else if (way == "another one")
        at_->port.open(2);
}

void TestOperation::overOnceThePortIsGone_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"closed", "lost", "opened again", "another one"})
        QTest::newRow(way) << way;
}

void TestOperation::overOnceThePortIsGone() {
    QFETCH(QString, way);
    Operation operation(at_->link);
    QVERIFY(!operation.isOver());
    QCOMPARE(asked(operation), "# 02821F");
    change(way);
    at_->port.receive("# 02821F\r\n");
    QVERIFY(operation.isOver());
    QVERIFY(operation.isWanted());
    operation.serialSendString("# 0103");
    QCOMPARE(shown(operation.serialGetResponseChars(limit::kReply, 8)), "Error");
    QCOMPARE(shown(operation.serialGetResponse(limit::kLine, kCarriageReturn)), "Error");
    QCOMPARE(shown(operation.GetActiveAntennaResponse("# 0282")), "Error");
    QCOMPARE(at_->port.sentLines(), QStringList("# 0102"));
    QCOMPARE(at_->port.readCount(), 8);
    QCOMPARE(at_->loop.ticks(), 0);
}

void TestOperation::overInItsWait() {
    QFETCH(QString, way);
    at_->loop.at(700, [&] {
        change(way);
        at_->port.receive("# 0283100ECE1000\r\n");
    });
    Operation operation(at_->link);
    QCOMPARE(shown(operation.exchange("# 0103", 16)), "Error");
    QCOMPARE(at_->loop.ticks(), 700);
    QCOMPARE(at_->port.readCount(), 0);
    QCOMPARE(operation.isOver(), true);
    // The next one is of the port that is there now.
    Operation next(at_->link);
    QCOMPARE(asked(next), at_->port.isOpen() ? "# 02821F" : "Error");
}

void TestOperation::closedFromTheStart() {
    at_->port.close();
    Operation operation(at_->link);
    QVERIFY(!operation.isOver());
    QCOMPARE(asked(operation), "Error");
    QCOMPARE(at_->loop.ticks(), 0);
    at_->port.open(1);
    QVERIFY(operation.isOver());
    QCOMPARE(asked(operation), "Error");
    QCOMPARE(at_->port.sentLines(), QStringList());
}

void TestOperation::notWantedAnyMore() {
    bool isWanted = true;
    Operation operation(at_->link, [&] { return isWanted; });
    QVERIFY(operation.isWanted());
    QVERIFY(!operation.isOver());
    isWanted = false;
    QVERIFY(!operation.isWanted());
    QVERIFY(operation.isOver());
    QCOMPARE(asked(operation), "Error");
    QCOMPARE(at_->port.sentLines(), QStringList());
}

// What has come by then is left to whoever reads next.
void TestOperation::notWantedInItsWait() {
    bool isWanted = true;
    at_->port.receiveAt(300, "# 02");
    at_->loop.at(300, [&] { isWanted = false; });
    Operation operation(at_->link, [&] { return isWanted; });
    QCOMPARE(shown(operation.exchange("# 0103", 8)), "Error");
    QCOMPARE(at_->loop.ticks(), 300);
    QCOMPARE(shown(at_->port.unread()), "# 02");
}

void TestOperation::latest() {
    Operation first(at_->link);
    QVERIFY(first.isLatest());
    {
        const Operation second(at_->link);
        QVERIFY(second.isLatest());
        QVERIFY(!first.isLatest());
    }
    QVERIFY(!first.isLatest());  // the other one has been there
}

void TestOperation::hourglass() {
    {
        Operation operation(at_->link);
        QCOMPARE(at_->journal.take(), QStringList());
        operation.hourglass();
        QCOMPARE(at_->journal.take(), QStringList("hourglass up"));
    }
    QCOMPARE(at_->journal.take(), QStringList("hourglass down"));
    const auto fails = [&] {
        Operation operation(at_->link);
        operation.hourglass();
        throw std::runtime_error("fault");
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, fails());
    QVERIFY(!at_->console.isHourglassUp());
    at_->journal.take();
    { const Operation without(at_->link); }
    QCOMPARE(at_->journal.take(), QStringList());
}

void TestOperation::progress() {
    { Operation quiet(at_->link); }
    QCOMPARE(at_->console.progress(), QStringList());
    {
        Operation operation(at_->link);
        operation.progress(0, 3);
        operation.progress(1, 3);
    }
    QCOMPARE(at_->console.progress(), QStringList({"0 of 3", "1 of 3", "0 of 0"}));
}

void TestOperation::modeIsLeft_data() {
    QTest::addColumn<QString>("by");
    for (const char* by : {"its end", "leaving it", "leaving it twice", "a fault", "closing the port"})
        QTest::newRow(by) << by;
}

void TestOperation::modeIsLeft() {
    QFETCH(QString, by);
    const auto run = [&] {
        Operation operation(at_->link);
        operation.enterMode(kEnter, kLeave);
        QCOMPARE(at_->port.sentLines(), QStringList(kEnter));
        if (by.startsWith("leaving"))
            operation.leaveMode();
        if (by.endsWith("twice"))
            operation.leaveMode();
        if (by == "closing the port")
            at_->link.closePort();
        if (by == "a fault")
            throw std::runtime_error("fault");
    };
    try {
        run();
    } catch (const std::runtime_error&) {
        QCOMPARE(by, "a fault");
    }
    QCOMPARE(at_->port.sentLines(), QStringList({kEnter, kLeave}));
    QCOMPARE(at_->port.isOpen(), by != "closing the port");
}

void TestOperation::modesAreLeftTheNewestFirst() {
    Operation outer(at_->link);
    outer.enterMode("! 0308E803", "! 03080000");
    Operation without(at_->link);
    Operation inner(at_->link);
    inner.enterMode(kEnter, kLeave);
    at_->journal.take();
    at_->link.closePort();
    QCOMPARE(at_->journal.take(), QStringList({"> ! 03090000", "> ! 03080000", "close"}));
}

void TestOperation::modeOfAUnitThatIsGone() {
    {
        Operation operation(at_->link);
        operation.enterMode(kEnter, kLeave);
        at_->port.unplug();
        at_->port.open(2);
    }
    QCOMPARE(at_->port.sentLines(), QStringList(kEnter));
    {
        Operation operation(at_->link);
        at_->port.close();
        at_->port.open(1);
        operation.enterMode(kEnter, kLeave);
    }
    QCOMPARE(at_->port.sentLines(), QStringList(kEnter));
}

void TestOperation::portInUse() {
    QVERIFY(!at_->link.isBusy());
    std::optional<Operation> first(at_->link);
    std::optional<Operation> second(at_->link);
    first.reset();  // in whatever order
    QVERIFY(at_->link.isBusy());
    second.reset();
    QVERIFY(!at_->link.isBusy());
}

void TestOperation::refused() {
    std::deque<std::optional<Operation>> operations;
    for (int i = 0; i < kMost; ++i)
        operations.emplace_back(std::in_place, at_->link);
    QCOMPARE(at_->journal.take(), QStringList());
    for (int i = 0; i < 2; ++i) {
        QVERIFY_THROWS_EXCEPTION(OperationRefused, Operation(at_->link));
        QCOMPARE(at_->journal.take(), QStringList(kRefused));
    }
    operations.front().reset();
    QCOMPARE(asked(operations.emplace_back(std::in_place, at_->link).value()), "# 02821F");
    QVERIFY_THROWS_EXCEPTION(OperationRefused, Operation(at_->link));
}

void TestOperation::refusedWithoutRoomForAll() {
    std::deque<Operation> operations;
    for (int i = 0; i < kMost - 2; ++i)
        operations.emplace_back(at_->link);
    QVERIFY_THROWS_EXCEPTION(OperationRefused, Operation(at_->link, {}, 3));
    QCOMPARE(at_->journal.take(), QStringList(kRefused));
    const Operation whole(at_->link, {}, 2);
    const Operation within(at_->link);
    QCOMPARE(at_->journal.take(), QStringList());
}

void TestOperation::refusedLeavesNoTrace() {
    {
        std::deque<Operation> operations;
        for (int i = 0; i < kMost; ++i)
            operations.emplace_back(at_->link);
        at_->journal.take();
        QVERIFY_THROWS_EXCEPTION(OperationRefused, Operation(at_->link));
        QVERIFY(operations.back().isLatest());
        QVERIFY(!operations.back().isOver());
        QCOMPARE(asked(operations.back()), "# 02821F");
        at_->link.closePort();  // asks those that there are
        QCOMPARE(at_->journal.take(), QStringList({kRefused, "> # 0102", "close"}));
    }
    QVERIFY(!at_->link.isBusy());
}

QUORVEX_TEST(TestOperation, quorvex::NoApplication)
#include "test_operation.moc"
