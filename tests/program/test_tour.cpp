#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/registry.h"

namespace quorvex {

/// The tour through the window must not rot between two looks at its pictures.
class TestTour : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesThrough();
};

void TestTour::goesThrough() {
    constexpr int kLimitMs = 110'000;
    const QTemporaryDir pictures;
    QProcess tour;
    tour.setProcessChannelMode(QProcess::MergedChannels);
    tour.start(qEnvironmentVariable("QUORVEX_BIN") + "/quorvex-tour", {pictures.path()});
    QVERIFY2(tour.waitForFinished(kLimitMs), qPrintable(tour.errorString()));
    const QByteArray said = tour.readAll();
    QVERIFY2(tour.exitStatus() == QProcess::NormalExit && tour.exitCode() == 0, said.constData());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTour, QCoreApplication)
#include "test_tour.moc"
