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

// It outlasts one that ends.
void TestPatience::nothingWasSent() {
    constexpr milliseconds kLimit{100};
    tool::Heard silent;
    tool::Heard heard;
    const tool::Patience patience(silent, kLimit, [] { QFAIL("nothing to give up"); });
    const tool::Patience other(heard, 2 * kLimit, [] {});
    heard.sent("# 0101");
    QTRY_VERIFY(other.hasEnded());
    QVERIFY(!patience.hasEnded());
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
    const tool::Patience other(heard, milliseconds(200), [] {});
    QTRY_VERIFY(other.hasEnded());
    QCOMPARE(ends, 1);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestPatience, QCoreApplication)
#include "test_patience.moc"
