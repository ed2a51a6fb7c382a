#include "tool/patience.h"

#include <QTest>

#include "tests/support/registry.h"

namespace quorvex {

using std::chrono::milliseconds;

/// When a unit that keeps sending something else is given up.
class TestPatience : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingWasSent();
    void countsFromTheLastLine();
    void endsOnce();
};

void TestPatience::nothingWasSent() {
    tool::Heard heard;
    int ends = 0;
    const tool::Patience patience(heard, milliseconds(20), [&ends] { ++ends; });
    QElapsedTimer since;
    since.start();
    QTRY_VERIFY(since.hasExpired(200));
    QVERIFY(!patience.hasEnded());
    QCOMPARE(ends, 0);
}

void TestPatience::countsFromTheLastLine() {
    constexpr int kLimitMs = 400;
    tool::Heard heard;
    const tool::Patience patience(heard, milliseconds(kLimitMs), [] {});
    QElapsedTimer since;
    QTimer sends;
    int sent = 0;
    connect(&sends, &QTimer::timeout, &sends, [&] {
        heard.sent("# 0101");
        heard.clear();  // as between two operations
        since.start();
        if (++sent == 5)
            sends.stop();
    });
    sends.start(kLimitMs / 4);
    QTRY_VERIFY(patience.hasEnded());
    QCOMPARE(sent, 5);
    QVERIFY2(since.elapsed() >= kLimitMs, qPrintable(QString::number(since.elapsed())));
}

// What comes is no answer, however much of it.
void TestPatience::endsOnce() {
    tool::Heard heard;
    int ends = 0;
    const tool::Patience patience(heard, milliseconds(100), [&ends] { ++ends; });
    heard.sent("# 0108");
    QTimer comes;
    connect(&comes, &QTimer::timeout, &comes, [&heard] { heard.gotLine("# 028600"); });
    comes.start(5);
    QTRY_VERIFY(patience.hasEnded());
    heard.sent("# 0108");
    QElapsedTimer since;
    since.start();
    QTRY_VERIFY(since.hasExpired(300));
    QCOMPARE(ends, 1);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPatience, QCoreApplication)
#include "test_patience.moc"
