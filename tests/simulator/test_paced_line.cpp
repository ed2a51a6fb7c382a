#include <QTest>
#include <memory>

#include "simulator/beltpack.h"
#include "simulator/paced_line.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

namespace {

constexpr int kBaud = 1000;  // a byte takes 10 ms
constexpr std::int64_t kByteNs = 10'000'000;
constexpr std::int64_t kNsPerMs = 1'000'000;

}  // namespace

class TestPacedLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void replyBeginsAfterTheCommand();
    void replyBytesFollowEachOther();
    void slowSenderSetsThePace();
    void waitsForTheWholeLine();
    void realSpeed();
    void lateReply();
    void streamIsPaced();
    void streamAndReplyInOrder();
    void withoutPace();

private:
    QByteArray takeAt(std::int64_t nowNs) { return QByteArray::fromStdString(line_->take(nowNs)); }

    std::unique_ptr<Beltpack> beltpack_;
    std::unique_ptr<PacedLine> line_;
};

void TestPacedLine::init() {
    beltpack_ = std::make_unique<Beltpack>(RfModule::kKirk);
    line_ = std::make_unique<PacedLine>(*beltpack_, kBaud);
    QVERIFY(!line_->nextEventNs());
}

void TestPacedLine::replyBeginsAfterTheCommand() {
    line_->receive("# 0102\r\n", 0);
    const std::int64_t received = 8 * kByteNs;
    QCOMPARE(takeAt(received + kByteNs - 1), "");
    QCOMPARE(takeAt(received + kByteNs), "#");
}

void TestPacedLine::replyBytesFollowEachOther() {
    line_->receive("# 0102\r\n", 0);
    QByteArray reply;
    int wakeUps = 0;
    while (const auto nextNs = line_->nextEventNs()) {
        const QByteArray bytes = takeAt(*nextNs);
        QVERIFY(bytes.size() <= 1);
        if (!bytes.isEmpty())
            QCOMPARE(*nextNs, (8 + reply.size() + 1) * kByteNs);
        reply += bytes;
        QVERIFY(++wakeUps < 100);
    }
    QCOMPARE(reply, "# 02821F\r\n");
}

void TestPacedLine::slowSenderSetsThePace() {
    std::int64_t nowNs = 0;
    for (const char c : std::string("# 0102\r\n")) {
        nowNs += 3 * kByteNs;
        line_->receive(std::string(1, c), nowNs);
    }
    QCOMPARE(takeAt(nowNs + 2 * kByteNs - 1), "");
    QCOMPARE(takeAt(nowNs + 2 * kByteNs), "#");
}

void TestPacedLine::waitsForTheWholeLine() {
    line_->receive("# 0102", 0);
    QCOMPARE(takeAt(kNsPerMs * 60'000), "");
    QVERIFY(!line_->nextEventNs());
}

void TestPacedLine::realSpeed() {
    PacedLine line(*beltpack_, 19200);
    line.receive("# 0101\r\n", 0);
    const std::int64_t wholeNs = (8 + 18) * 10'000'000'000 / 19200;
    QCOMPARE(line.take(wholeNs - 520'000).size(), 17U);
    QCOMPARE(line.take(wholeNs).size(), 1U);
}

void TestPacedLine::lateReply() {
    beltpack_->addFault(parseFault("late:500"));
    line_->receive("# 0102\r\n", 0);
    const std::int64_t firstByte = 8 * kByteNs + 500 * kNsPerMs + kByteNs;
    QCOMPARE(takeAt(firstByte - 1), "");
    QCOMPARE(takeAt(firstByte), "#");
}

void TestPacedLine::streamIsPaced() {
    beltpack_->calibrationStream().setIntervalMs(1000);
    line_->receive("! 0309E803\r\n", 0);
    const std::int64_t entered = 12 * kByteNs;
    QCOMPARE(takeAt(entered + 1000 * kNsPerMs + kByteNs - 1), "");
    QCOMPARE(takeAt(entered + 1000 * kNsPerMs + 2 * kByteNs), "! ");
    QCOMPARE(takeAt(entered + 1000 * kNsPerMs + 14 * kByteNs).size(), 12);
}

void TestPacedLine::streamAndReplyInOrder() {
    beltpack_->calibrationStream().setIntervalMs(1000);
    line_->receive("! 0309E803\r\n", 0);
    const std::int64_t recordNs = 12 * kByteNs + 1000 * kNsPerMs;
    // The command is complete just after the record has begun.
    line_->receive("# 0102\r\n", recordNs - 8 * kByteNs + kNsPerMs);
    QCOMPARE(takeAt(recordNs + kByteNs), "!");
    const QByteArray bytes = "!" + takeAt(recordNs + 40 * kByteNs);
    QVERIFY(bytes.startsWith("! 0407"));
    QVERIFY(bytes.endsWith("\r\n# 02821F\r\n"));
    QCOMPARE(bytes.size(), 14 + 10);
}

void TestPacedLine::withoutPace() {
    PacedLine line(*beltpack_, 0);
    line.receive("# 0102\r\n# 0104\r\n", 5);
    QCOMPARE(QByteArray::fromStdString(line.take(5)), "# 02821F\r\n# 028430\r\n");
    QVERIFY(!line.nextEventNs());
}

QUORVEX_TEST(TestPacedLine, quorvex::NoApplication)
#include "test_paced_line.moc"
