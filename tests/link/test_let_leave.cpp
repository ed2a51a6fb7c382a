#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTest>
#include <array>
#include <thread>

#include "link/device_facts_linux.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {
constexpr int kTakenAfterMs = 80;
constexpr int kGivenUpMs = 1000;
}  // namespace

/// Waiting until a device has taken what it was given. A socket stands in for the device: what its other end
/// has not read yet counts as not gone.
class TestLetLeave : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nothingToWaitFor();
    void untilTaken();
    void takesNothing();
    void otherEndGoes();

private:
    void give() { QCOMPARE(::write(ends_[0], "! 03090000\r\n", 12), ssize_t(12)); }
    qint64 waitedMs() {
        QElapsedTimer timer;
        timer.start();
        letLeave(ends_[0]);
        return timer.elapsed();
    }

    std::array<int, 2> ends_{};
};

void TestLetLeave::init() {
    QCOMPARE(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends_.data()), 0);
}

void TestLetLeave::cleanup() {
    for (const int end : ends_)
        ::close(end);
}

void TestLetLeave::nothingToWaitFor() {
    QVERIFY(waitedMs() < kTakenAfterMs);
}

void TestLetLeave::untilTaken() {
    give();
    std::thread reader([this] {
        QTest::qSleep(kTakenAfterMs);
        std::array<char, 64> bytes{};
        static_cast<void>(::read(ends_[1], bytes.data(), bytes.size()));
    });
    const qint64 waited = waitedMs();
    reader.join();
    QVERIFY2(waited >= kTakenAfterMs && waited < kGivenUpMs, qPrintable(QString::number(waited)));
}

void TestLetLeave::takesNothing() {
    give();
    const qint64 waited = waitedMs();
    QVERIFY2(waited >= kGivenUpMs, qPrintable(QString::number(waited)));
}

void TestLetLeave::otherEndGoes() {
    give();
    ::shutdown(ends_[1], SHUT_RDWR);
    QVERIFY(waitedMs() < kGivenUpMs);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestLetLeave, quorvex::NoApplication)
#include "test_let_leave.moc"
