#include <QTest>

#include "tests/support/beltpack_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {
const QString kRead = "status green: Settings read from Beltpack successfully.";
const QString kNotRead = "status black: Error communicating with Beltpack.";
}  // namespace

/// The button stays live while a read waits. A second read runs inside the wait of the first, and both end.
class TestReadNested : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void secondReadInsideTheFirst_data();
    void secondReadInsideTheFirst();
    void failedReadInsideAnother();
    void replyAboutTheModuleDropped();
    void readInsideTheVersionRequest();
    void failedReadInsideALateWait_data();
    void failedReadInsideALateWait();
    void readWhileTheFailureBoxIsOpen();
    void portChangedInsideARead();
    void moduleTypeChangedInsideARead();
};

void TestReadNested::secondReadInsideTheFirst_data() {
    QTest::addColumn<QString>("waitingFor");
    QTest::addColumn<QStringList>("ends");
    QTest::newRow("module detection") << "# 0139" << QStringList{kRead, kRead};
    QTest::newRow("PSN") << "# 0101" << QStringList{kRead, kNotRead};
    QTest::newRow("parameter") << "# 0105" << QStringList{kRead, kRead};
    QTest::newRow("calibration") << "# 013D" << QStringList{kRead, kNotRead};
}

void TestReadNested::secondReadInsideTheFirst() {
    QFETCH(QString, waitingFor);
    QFETCH(QStringList, ends);
    BeltpackBench bench;
    bench.connectKirk();
    // Silent once: the first read waits there, the second gets its answer.
    const QHash<QString, std::string> replies{{"# 0139", "# 02B9A3\r\n"},
                                              {"# 0101", "# 06810044303039\r\n"},
                                              {"# 0105", "# 028500\r\n"},
                                              {"# 013D", "# 02BD21\r\n"}};
    bench.port.answer(waitingFor.toStdString(), {Reply{}, Reply{replies.value(waitingFor)}});
    bench.loop.at(500, [&] { bench.read.CommandRdSettingsBp_Click(); });
    bench.read.CommandRdSettingsBp_Click();
    QStringList ended;
    for (const QString& entry : bench.journal.entries()) {
        if (entry == kRead || entry == kNotRead)
            ended.append(entry);
    }
    QCOMPARE(ended, ends);
    QVERIFY(!bench.console.isHourglassUp());
    // What is left of the inner read's last line end starts the limit of the outer wait anew.
    QCOMPARE(bench.loop.ticks(), 2500);
    // What the second read found stands.
    QCOMPARE(shown(bench.image[4].value.str()), "00        ");
    QCOMPARE(shown(bench.image[4].available.str()), "1 ");
    QCOMPARE(shown(bench.image[20].value.str()), "02        ");
}

void TestReadNested::failedReadInsideAnother() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.silence("# 0102");
    bench.port.answer("# 0101", {Reply{"# 06810044303039\r\n"}, Reply{}});
    bench.loop.at(1000, [&] { bench.read.CommandRdSettingsBp_Click(); });
    bench.read.CommandRdSettingsBp_Click();
    // The second read blanked what the first had, which is no whole read any more.
    QCOMPARE(bench.journal.entriesOf("box").size(), 2);
    QCOMPARE(bench.journal.entriesOf("status green"), QStringList());
    QCOMPARE(bench.journal.entriesOf(kNotRead).size(), 2);
    QVERIFY(!bench.console.isHourglassUp());
    QCOMPARE(shown(bench.image[0].value.str()), "          ");
    QCOMPARE(bench.beltpackId.text(), std::string());
}

// Silence means a Kirk only where nobody else has sent anything meanwhile.
void TestReadNested::replyAboutTheModuleDropped() {
    BeltpackBench bench;
    bench.connectRm5();
    bench.silence("# 0139");
    bench.loop.at(500, [&] { Operation(bench.link).exchange("# 0102", 8); });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entriesOf("module type"), QStringList());
    QCOMPARE(bench.journal.entries().last(), kSuccess);
}

void TestReadNested::readInsideTheVersionRequest() {
    BeltpackBench bench;
    bench.connectRm5();
    bool nested = false;
    bench.neighbours.onRequestDectVersion = [&] {
        if (!std::exchange(nested, true))
            bench.read.CommandRdSettingsBp_Click();
    };
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entriesOf("status green").size(), 2);
    QCOMPARE(bench.port.sent().size(), 48U);
    QVERIFY(!bench.console.isHourglassUp());
}

void TestReadNested::failedReadInsideALateWait_data() {
    QTest::addColumn<QString>("waitingFor");
    QTest::newRow("FM deviation") << "# 013D";
    QTest::newRow("frequency accuracy") << "# 013C";
}

// It has blanked the image: there is nothing to save or to write.
void TestReadNested::failedReadInsideALateWait() {
    QFETCH(QString, waitingFor);
    BeltpackBench bench;
    bench.connectRm5();
    bench.port.onLine([&, nested = false](const std::string& line) mutable {
        if (shown(line) != waitingFor || std::exchange(nested, true))
            return;
        bench.silenceParameter(0);
        bench.read.CommandRdSettingsBp_Click();
    });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entriesOf("status black: Error"), QStringList({kNotRead, kNotRead}));
    QCOMPARE(bench.journal.entriesOf("settings buttons"), QStringList());
    QVERIFY(!bench.image.isFilled());
}

void TestReadNested::readWhileTheFailureBoxIsOpen() {
    BeltpackBench bench;
    bench.console.whileBoxIsShown([&] {
        bench.connectRm5();
        bench.read.CommandRdSettingsBp_Click();
    });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entries().last(), kRead);
    QVERIFY(!bench.console.isHourglassUp());
    QCOMPARE(shown(bench.image[0].value.str()), "0044303039");
}

void TestReadNested::portChangedInsideARead() {
    // Another unit on another port from here on: nothing of the read reaches it.
    BeltpackBench bench;
    bench.connectRm5();
    bench.silence("# 0102");
    bench.loop.at(1000, [&] {
        bench.port.close();
        bench.port.open(2);
        bench.setDigits(20, "01");
    });
    bench.read.CommandRdSettingsBp_Click();
    QVERIFY(!bench.journal.entries().contains(kRead));
    QVERIFY(bench.journal.entries().contains(kNotRead));
    QCOMPARE(bench.port.sentLines().last(), "# 0102");
    QCOMPARE(bench.loop.ticks(), 1000);
    QVERIFY(!bench.console.isHourglassUp());
    QCOMPARE(shown(bench.image[0].value.str()), "0044303039");
    for (int i = 1; i <= 20; ++i) {
        QCOMPARE(shown(bench.image[i].value.str()), "N/A       ");
        QCOMPARE(shown(bench.image[i].available.str()), "0 ");
    }
}

void TestReadNested::moduleTypeChangedInsideARead() {
    // The type picked in the menu counts from then on, for a read that is under way too.
    BeltpackBench bench;
    bench.connectKirk();
    bench.silence("# 0115");
    bench.loop.at(1000, [&] { bench.module.hold(0); });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(shown(bench.freqAccuracy.text()), "5");
    QCOMPARE(bench.port.sent().size(), 24U);
    QCOMPARE(bench.journal.entries().last(), kRead);
}

QUORVEX_TEST(TestReadNested, quorvex::NoApplication)
#include "test_read_nested.moc"
