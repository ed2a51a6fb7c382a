#include <QTest>

#include "beltpack/production_values.h"
#include "beltpack/settings_file.h"
#include "beltpack/transfer_log.h"
#include "identity/pli_update.h"
#include "identity/psn_update.h"
#include "link/plain_field.h"
#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

/// A Beltpack, and what is told of reads and writes: "read, done, PSN 12345, as found"; behind it
/// differences.
struct LogBench : WriteBench {
    LogBench() {
        image.keepLog(&log);
        log.onEnd([this](const TransferEntry& entry) { take(entry); },
                  [this] { return "COM" + std::to_string(number); });
        connectRm5();
    }
    void take(const TransferEntry& entry) {
        const QString held = entry.file.empty() ? "" : entry.isRead ? ", as found" : ", as left";
        const QString differences = entry.differences.empty() ? "" : ": " + fromUtf8(entry.differences);
        ports << fromUtf8(entry.port);
        told << fromUtf8(entry.operation + ", " + entry.outcome + ", PSN " + entry.psn) + held + differences;
        files << shown(entry.file);
    }
    /// Reads the unit; what was told of that is forgotten.
    void readFirst() {
        read.CommandRdSettingsBp_Click();
        told.clear();
        files.clear();
        ports.clear();
    }
    void chooseAnotherPort() {
        port.close();
        port.open(++number);
    }
    /// Something that happens while the program waits for the reply to `line`, which comes late.
    void during(const std::string& line, std::function<void()> deed) {
        port.onLine([this, line, deed](const std::string& sent) {
            if (sent != line || hasHappened)
                return;
            hasHappened = true;
            port.answer(line, "");
            loop.at(loop.ticks() + 500, deed);
        });
    }

    TransferLog log{link};
    QStringList told, files, ports;
    int number = 1;
    bool hasHappened = false;
    PlainField psnField, pliField;
    PsnUpdate psn{link, image, psnField};
    PliUpdate pliUpdate{link, image, pliField};
    ProductionValues production{link, image, write};
};

/// The settings file of the bench's unit.
QString fileOf(const QMap<int, QString>& changes = {}) {
    SettingsImage unit;
    for (int i = 0; i < SettingsImage::kParameters; ++i)
        unit[i].value = changes.contains(i) ? changes[i].toStdString()
                                            : BeltpackBench::kParameters.at(std::size_t(i)).digits;
    return shown(settingsText(unit));
}

}  // namespace

/// What is told of reads and writes for the record of them.
class TestTransferLog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wholeRead();
    void readAsTheUnitSentIt();
    void missingParameter();
    void failedRead_data();
    void failedRead();
    void readInsideARead();
    void writeDone();
    void writeEnds_data();
    void writeEnds();
    void nothingReadBefore();
    void otherUnitMeanwhile();
    void productionValues();
    void updates_data();
    void updates();
    void updateOfAnUnknownUnit();
    void interruptedByTheEnd();
    void reread();
    void rereadThatFails();
};

void TestTransferLog::wholeRead() {
    LogBench bench;
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.told, QStringList("read, done, PSN 12345, as found"));
    QCOMPARE(bench.files, QStringList(fileOf()));
    WriteBench without;
    without.connectRm5();
    without.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.journal.entries(), without.journal.entries());
    QCOMPARE(bench.loop.ticks(), without.loop.ticks());
}

// The editing controls put the alarm into its range, and the operator is quick to change the gain.
void TestTransferLog::readAsTheUnitSentIt() {
    LogBench bench;
    bench.setDigits(SettingsImage::kLowBatteryAlarm, "FF");
    bench.port.onLine([&](const std::string& line) {
        if (line == "# 0115")
            bench.image[SettingsImage::kMicGain].value = "77";
    });
    bench.read.CommandRdSettingsBp_Click();
    QVERIFY(shown(bench.image[SettingsImage::kMicGain].value.str()).startsWith("77"));
    QCOMPARE(bench.files, QStringList(fileOf({{SettingsImage::kLowBatteryAlarm, "FF"}})));
}

void TestTransferLog::missingParameter() {
    LogBench bench;
    bench.silenceParameter(12);
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.told, QStringList("read, done, PSN 12345, as found"));
    QCOMPARE(bench.files, QStringList(fileOf({{12, "N/A"}})));
}

void TestTransferLog::failedRead_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("unplugged");
    QTest::addColumn<QString>("told");
    const auto row = [](const char* name, const char* line, const char* reply, bool unplugged,
                        const char* told) { QTest::newRow(name) << line << reply << unplugged << told; };
    row("no PSN", "# 0101", "", false, "read, failed, PSN ");
    row("no calibration", "# 013D", "", false, "read, failed, PSN 12345");
    row("pulled", "# 0105", "", true, "read, port lost, PSN 12345");
    row("an echo", "# 0105", "# 0105xx\r\n", false, "read, odd reply, PSN 12345");
    row("half a reply", "# 0105", "# 028", false, "read, odd reply, PSN 12345");
    row("another parameter's reply", "# 0105", "# 028600\r\n", false, "read, odd reply, PSN 12345");
    row("a PSN that is none", "# 0101", "# 06810044303zzz\r\n", false, "read, odd reply, PSN ");
}

void TestTransferLog::failedRead() {
    QFETCH(QString, line);
    QFETCH(QString, reply);
    QFETCH(bool, unplugged);
    QFETCH(QString, told);
    LogBench bench;
    bench.port.answer(line.toStdString(), reply.toStdString());
    if (unplugged)
        bench.during(line.toStdString(), [&] { bench.port.unplug(); });
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.told, QStringList(told));
}

void TestTransferLog::readInsideARead() {
    LogBench bench;
    bench.port.answer("# 0105", {Reply{}, Reply{"# 028500\r\n"}});
    bench.loop.at(500, [&] { bench.read.CommandRdSettingsBp_Click(); });
    bench.read.CommandRdSettingsBp_Click();
    const QString told = "read, done, PSN 12345, as found";
    QCOMPARE(bench.told, QStringList({told, told}));
    QCOMPARE(bench.files, QStringList({fileOf(), fileOf()}));
}

void TestTransferLog::writeDone() {
    LogBench bench;
    bench.readFirst();
    bench.image[SettingsImage::kHeadsetLimit].value = "2a";
    bench.setDigits(SettingsImage::kHeadsetLimit, "2A");
    bench.setDigits(SettingsImage::kMicGain, "07");
    bench.image[SettingsImage::kMicGain].value = "07";
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.told, QStringList("write, done, PSN 12345, as left: "
                                     "Headset Limit: 30 -> 2A; Headset Mic Gain: 02 -> 07"));
    QCOMPARE(bench.files,
             QStringList(fileOf({{SettingsImage::kHeadsetLimit, "2A"}, {SettingsImage::kMicGain, "07"}})));
}

void TestTransferLog::writeEnds_data() {
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("meanwhile");
    QTest::addColumn<QStringList>("told");
    const QString unknown = "Headset Limit: 30 -> ? (written 24)";
    QTest::newRow("other value")
        << "# 028428\r\n"
        << "" << QStringList("write, differs, PSN 12345, as left: Headset Limit: 30 -> 28 (written 24)");
    QTest::newRow("odd reply") << "# 028528\r\n"
                               << "" << QStringList("write, odd reply, PSN 12345: " + unknown);
    QTest::newRow("silence") << ""
                             << "" << QStringList("write, failed, PSN 12345: " + unknown);
    QTest::newRow("pulled") << ""
                            << "unplug" << QStringList("write, port lost, PSN 12345: " + unknown);
    // The read finds what the write has left, so both know it.
    QTest::newRow("another read") << ""
                                  << "read"
                                  << QStringList(
                                         {"read, done, PSN 12345, as found",
                                          "write, interrupted, PSN 12345, as left: Headset Limit: 30 -> 24"});
}

void TestTransferLog::writeEnds() {
    QFETCH(QString, reply);
    QFETCH(QString, meanwhile);
    QFETCH(QStringList, told);
    LogBench bench;
    bench.readFirst();
    bench.image[SettingsImage::kHeadsetLimit].value = "24";
    bench.port.answer("# 0104", reply.toStdString());
    if (meanwhile == "unplug")
        bench.during("# 0104", [&] { bench.port.unplug(); });
    if (meanwhile == "read")
        bench.during("# 0104", [&] {
            bench.setDigits(SettingsImage::kHeadsetLimit, "24");
            bench.read.CommandRdSettingsBp_Click();
        });
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.told, told);
}

// Through another opening of the port there may be another unit: what is read of it is all that is known.
void TestTransferLog::nothingReadBefore() {
    LogBench bench;
    bench.readFirst();
    bench.chooseAnotherPort();
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.told.size(), 1);
    const QString first = "write, done, PSN 12345, as left: Beltpack PSN/ID: ? -> 0044303039; ";
    QCOMPARE(bench.told[0].left(first.size()), first);
    QCOMPARE(bench.told[0].count("? -> "), 21);
    QCOMPARE(bench.files, QStringList(fileOf()));
    bench.chooseAnotherPort();
    bench.image[12].available = "0";  // as the former unit was, if not this one
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.files.last(), "");
}

// A write waits while the operator chooses another port and reads the unit there.
void TestTransferLog::otherUnitMeanwhile() {
    LogBench bench;
    bench.readFirst();
    bench.during("# 0101", [&] {
        bench.chooseAnotherPort();
        bench.setDigits(SettingsImage::kPsn, "0044300001");
        bench.read.CommandRdSettingsBp_Click();
    });
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.told, QStringList({"read, done, PSN 1, as found",
                                      "write, interrupted, PSN 12345: Beltpack PSN/ID: 0044303039 -> ? "
                                      "(written 0044303039)"}));
    QCOMPARE(bench.ports, QStringList({"COM2", "COM1"}));
}

void TestTransferLog::productionValues() {
    LogBench bench;
    bench.readFirst();
    bench.production.buttonSetProdSettiings_Click();
    QCOMPARE(bench.told.size(), 1);
    QVERIFY2(bench.told[0].startsWith("production-values, differs, PSN 12345, as left: "
                                      "Headset Limit: 30 -> 30 (written 24); "),
             qPrintable(bench.told[0]));
}

void TestTransferLog::updates_data() {
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("told");
    QTest::newRow("done") << "# 068100443186A1\r\n"
                          << "set Beltpack PSN/ID, done, PSN 100001, as left: Beltpack PSN/ID: "
                             "0044303039 -> 00443186A1";
    QTest::newRow("other number") << "# 06810044303039\r\n"
                                  << "set Beltpack PSN/ID, differs, PSN 12345, as left: Beltpack PSN/ID: "
                                     "0044303039 -> 0044303039 (written 00443186A1)";
    QTest::newRow("silence") << ""
                             << "set Beltpack PSN/ID, failed, PSN 12345: Beltpack PSN/ID: 0044303039 -> ? "
                                "(written 00443186A1)";
    QTest::newRow("odd reply") << "# 0681       186A1\r\n"
                               << "set Beltpack PSN/ID, odd reply, PSN 12345: Beltpack PSN/ID: "
                                  "0044303039 -> ? (written 00443186A1)";
}

void TestTransferLog::updates() {
    QFETCH(QString, reply);
    QFETCH(QString, told);
    LogBench bench;
    bench.readFirst();
    bench.port.answer("# 0101", reply.toStdString());
    bench.psnField.setText("100001");
    bench.psn.CommandSetBpId_Click();
    QCOMPARE(bench.told, QStringList(told));
}

void TestTransferLog::updateOfAnUnknownUnit() {
    LogBench bench;
    bench.pliField.setText("1F");
    bench.pliUpdate.CmdUpdatePli_Click();
    QCOMPARE(bench.told, QStringList("set System Id Length, done, PSN : System Id Length: ? -> 1F"));
}

// What is under way is told as it stands, once.
void TestTransferLog::interruptedByTheEnd() {
    LogBench bench;
    bench.readFirst();
    bench.image[SettingsImage::kHeadsetLimit].value = "24";
    bench.during("# 0104", [&] { bench.log.interrupt(); });
    bench.write.CommandWrite_Click();
    QCOMPARE(bench.told, QStringList("write, interrupted, PSN 12345: Headset Limit: 30 -> ? (written 24)"));
}

void TestTransferLog::reread() {
    LogBench bench;
    bench.readFirst();
    bench.image[SettingsImage::kHeadsetLimit].value = "24";
    bench.silence("# 0104");
    {
        const TransferLog::Reread reread(bench.log);
        bench.write.CommandWrite_Click();
        QCOMPARE(bench.told, QStringList());
        bench.setDigits(SettingsImage::kHeadsetLimit, "28");
        bench.read.CommandRdSettingsBp_Click();
    }
    // The write broke off, but what it has left is known.
    QCOMPARE(bench.told,
             QStringList("write, failed, PSN 12345, as left: Headset Limit: 30 -> 28 (written 24)"));
    QCOMPARE(bench.files, QStringList(fileOf({{SettingsImage::kHeadsetLimit, "28"}})));
    bench.read.CommandRdSettingsBp_Click();
    QCOMPARE(bench.told.size(), 2);
}

void TestTransferLog::rereadThatFails() {
    LogBench bench;
    bench.readFirst();
    bench.image[SettingsImage::kHeadsetLimit].value = "24";
    bench.silence("# 0104");
    const QString write = "write, failed, PSN 12345: Headset Limit: 30 -> ? (written 24)";
    {
        const TransferLog::Reread reread(bench.log);
        bench.write.CommandWrite_Click();
        bench.silence("# 0101");
        bench.read.CommandRdSettingsBp_Click();
        QCOMPARE(bench.told, QStringList({write, "read, failed, PSN "}));
    }
    {
        const TransferLog::Reread reread(bench.log);  // and then no read at all
        bench.pliField.setText("1F");
        bench.pliUpdate.CmdUpdatePli_Click();
    }
    QCOMPARE(bench.told.last(), "set System Id Length, done, PSN : System Id Length: ? -> 1F");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTransferLog, quorvex::NoApplication)
#include "test_transfer_log.moc"
