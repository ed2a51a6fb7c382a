#include <QStringList>
#include <QTest>
#include <future>
#include <mutex>

#include "link/late_work.h"
#include "tests/support/registry.h"

using namespace quorvex;

/// Work on a thread of its own, that may hang.
class TestLateWork : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void inOrder();
    void elsewhere();
    void hangs();
    void nothingToDo();
};

void TestLateWork::inOrder() {
    QStringList done;
    LateWork work;
    for (const char* name : {"one", "two", "three"})
        work.add([&done, name] { done << name; });
    QVERIFY(work.finish(std::chrono::minutes(1)));
    QCOMPARE(done, QStringList({"one", "two", "three"}));
    work.add([&done] { done << "four"; });
    QVERIFY(work.finish(std::chrono::minutes(1)));
    QCOMPARE(done.last(), "four");
}

void TestLateWork::elsewhere() {
    std::thread::id where;
    LateWork work;
    work.add([&where] { where = std::this_thread::get_id(); });
    QVERIFY(work.finish(std::chrono::minutes(1)));
    QVERIFY(where != std::thread::id());
    QVERIFY(where != std::this_thread::get_id());
}

// Nobody waits: neither who adds more, nor the end.
void TestLateWork::hangs() {
    const auto hasBegun = std::make_shared<std::promise<void>>();
    const auto goOn = std::make_shared<std::promise<void>>();
    const auto hasEnded = std::make_shared<std::promise<void>>();
    const auto isLaterDone = std::make_shared<std::atomic<bool>>(false);
    {
        LateWork work;
        work.add([hasBegun, goOn, hasEnded] {
            hasBegun->set_value();
            goOn->get_future().wait();
            hasEnded->set_value();
        });
        work.add([isLaterDone] { *isLaterDone = true; });
        hasBegun->get_future().wait();
        QVERIFY(!work.finish(std::chrono::milliseconds(1)));
    }
    goOn->set_value();
    hasEnded->get_future().wait();
    QVERIFY(!*isLaterDone);
}

void TestLateWork::nothingToDo() {
    LateWork work;
    QVERIFY(work.finish(std::chrono::milliseconds(0)));
}

QUORVEX_TEST(TestLateWork, quorvex::NoApplication)
#include "test_late_work.moc"
