#include "link/link_listener.h"

#include <QTest>

#include "tests/link/link_fixture.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

class NotingListener : public LinkListener {
public:
    explicit NotingListener(Journal& journal) : journal_(journal) {}
    void sent(std::string_view line) override { journal_.note("sent " + std::string(line)); }
    void gotLine(std::string_view reply) override { journal_.note("line " + std::string(reply)); }
    void gotCharacters(std::string_view reply) override { journal_.note("characters " + std::string(reply)); }
    void gaveUp(std::string_view part) override { journal_.note("gave up: " + std::string(part)); }

private:
    Journal& journal_;
};

}  // namespace

/// What a listener hears of an operation.
class TestLinkListener : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void exchange();
    void silence();
    void brokenOff();
    void antennaLines();
    void closedPort();
    void noRoom();
    void nobodyListens();

private:
    QStringList heard() { return notes_.take(); }

    Journal notes_;
    std::unique_ptr<NotingListener> listener_;
    std::unique_ptr<LinkFixture> bench_;
};

void TestLinkListener::init() {
    notes_.take();
    bench_ = std::make_unique<LinkFixture>();
    listener_ = std::make_unique<NotingListener>(notes_);
    bench_->link.listen(listener_.get());
}

void TestLinkListener::exchange() {
    bench_->port.answer("# 0105", "xx# 028500\r\n");
    Operation(bench_->link).exchange("# 0105", 8);
    QCOMPARE(heard(), QStringList({"sent # 0105", "characters # 028500"}));
}

void TestLinkListener::silence() {
    Operation(bench_->link).exchange("# 0105", 8);
    QCOMPARE(heard(), QStringList({"sent # 0105", "gave up: "}));
}

void TestLinkListener::brokenOff() {
    bench_->port.answer("# 0105", "xx# 028");
    Operation(bench_->link).exchange("# 0105", 8);
    QCOMPARE(heard(), QStringList({"sent # 0105", "gave up: # 028"}));
    bench_->port.answer("! 0108", "!DECT");
    Operation operation(bench_->link);
    operation.serialSendString("! 0108");
    operation.serialGetResponse(limit::kLine, kCarriageReturn);
    QCOMPARE(heard(), QStringList({"sent ! 0108", "gave up: !DECT"}));
}

void TestLinkListener::antennaLines() {
    bench_->port.answer("# 0101", "! 0211\r\n# 028121\r\n");
    Operation operation(bench_->link);
    operation.serialSendString("# 0101");
    operation.GetActiveAntennaResponse("# 0281");
    QCOMPARE(heard(), QStringList({"sent # 0101", "line ! 0211", "line # 028121"}));
}

// What was not sent is not heard as sent.
void TestLinkListener::closedPort() {
    bench_->port.unplug();
    Operation(bench_->link).exchange("# 0105", 8);
    QCOMPARE(heard(), QStringList("gave up: "));
}

void TestLinkListener::noRoom() {
    bench_->port.leaveRoom(3);
    Operation(bench_->link).serialSendString("# 0105");
    QCOMPARE(heard(), QStringList());
}

void TestLinkListener::nobodyListens() {
    bench_->link.listen(nullptr);
    bench_->port.answer("# 0105", "# 028500\r\n");
    QCOMPARE(shown(Operation(bench_->link).exchange("# 0105", 8)), QString("# 028500"));
    QCOMPARE(heard(), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestLinkListener, quorvex::NoApplication)
#include "test_link_listener.moc"
