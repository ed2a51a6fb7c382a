#include <QTest>
#include <stdexcept>
#include <vector>

#include "simulator/beltpack.h"
#include "tests/simulator/exchange.h"
#include "tests/support/registry.h"

using namespace quorvex::sim;

using Kind = TranscriptEntry::Kind;

class TestBeltpack : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsWhatItHolds_data();
    void readsWhatItHolds();
    void fiveByteParametersAreLong();
    void tellsItsModule();
    void rm5RefusesKirkRegisters_data();
    void rm5RefusesKirkRegisters();
    void takesWrites_data();
    void takesWrites();
    void refusesWrites_data();
    void refusesWrites();
    void answersWritesIfAskedTo();
    void unavailableParameterIsSilent();
    void version();
    void versionComesAfterOtherLines();
    void liveFmDeviationIsNotStored();
    void calibrationModeOfKirkOnly();
    void passesOverWhatItDoesNotKnow_data();
    void passesOverWhatItDoesNotKnow();
    void lineNeedsBothEnds_data();
    void lineNeedsBothEnds();
    void takesBytesInAnyPortions();
    void recoversFromEndlessNoise();
    void dumpsWhatItHolds();
    void transcriptTellsEverything();
};

void TestBeltpack::readsWhatItHolds_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("digits");
    QTest::addColumn<QByteArray>("reply");
    for (int number = 0x01; number <= 0x15; ++number) {
        const bool isLong = number == 0x01 || number == 0x03 || number == 0x0E;
        const QByteArray digits = isLong ? "0123ABCDEF" : QByteArray::number(number + 0xA0, 16).toUpper();
        const QByteArray nn = QByteArray::number(number, 16).rightJustified(2, '0').toUpper();
        const QByteArray head = (isLong ? "# 06" : "# 02") + QByteArray::number(number + 0x80, 16).toUpper();
        QTest::newRow("parameter " + nn) << "# 01" + nn << number << digits << head + digits + "\r\n";
    }
    QTest::newRow("lower-case letter in a parameter")
        << QByteArray("# 010e") << 0x0E << QByteArray("FEDCBA9876") << QByteArray("# 068EFEDCBA9876\r\n");
    QTest::newRow("RSSI threshold") << QByteArray("# 0138") << 0x38 << QByteArray("FF")
                                    << QByteArray("# 02B8FF\r\n");
    QTest::newRow("receive") << QByteArray("# 0139") << 0x39 << QByteArray("05")
                             << QByteArray("# 02B905\r\n");
    QTest::newRow("transmit, lower case")
        << QByteArray("# 013a") << 0x3A << QByteArray("06") << QByteArray("# 02BA06\r\n");
    QTest::newRow("frequency, lower case")
        << QByteArray("# 013c") << 0x3C << QByteArray("07") << QByteArray("# 02BC07\r\n");
    QTest::newRow("frequency") << QByteArray("# 013C") << 0x3C << QByteArray("01")
                               << QByteArray("# 02BC01\r\n");
    QTest::newRow("FM deviation") << QByteArray("# 013D") << 0x3D << QByteArray("3F")
                                  << QByteArray("# 02BD3F\r\n");
}

void TestBeltpack::readsWhatItHolds() {
    QFETCH(QByteArray, line);
    QFETCH(int, number);
    QFETCH(QByteArray, digits);
    QFETCH(QByteArray, reply);
    Beltpack beltpack(RfModule::kKirk);
    QVERIFY(beltpack.setValue(number, digits.toStdString()));
    QCOMPARE(exchange(beltpack, line), reply);
    QCOMPARE(QByteArray::fromStdString(beltpack.value(number)), digits);
}

void TestBeltpack::fiveByteParametersAreLong() {
    Beltpack beltpack(RfModule::kRm5);
    QVERIFY(!beltpack.setValue(0x01, "0123ABCD"));
    QVERIFY(!beltpack.setValue(0x02, "0123ABCDEF"));
    QVERIFY(!beltpack.setValue(0x02, "1"));
    QVERIFY_EXCEPTION_THROWN(static_cast<void>(beltpack.value(0x16)), std::out_of_range);
}

void TestBeltpack::tellsItsModule() {
    Beltpack rm5(RfModule::kRm5);
    Beltpack kirk(RfModule::kKirk);
    QCOMPARE(exchange(rm5, "# 0139"), "# 01BF\r\n");
    QVERIFY(kirk.setValue(0x39, "BF"));
    QCOMPARE(exchange(kirk, "# 0139"), "# 02B9BF\r\n");
    // What the calibration dialog's communication check looks for.
    QVERIFY(exchange(rm5, "# 0102").startsWith("# 028"));
    QVERIFY(exchange(kirk, "# 0102").startsWith("# 028"));
}

void TestBeltpack::rm5RefusesKirkRegisters_data() {
    QTest::addColumn<QByteArray>("read");
    QTest::addColumn<QByteArray>("write");
    QTest::newRow("RSSI threshold") << QByteArray("# 0138") << QByteArray("# 027805");
    QTest::newRow("receive") << QByteArray("# 0139") << QByteArray("# 027905");
    QTest::newRow("transmit") << QByteArray("# 013a") << QByteArray("# 027a05");
}

void TestBeltpack::rm5RefusesKirkRegisters() {
    QFETCH(QByteArray, read);
    QFETCH(QByteArray, write);
    Beltpack beltpack(RfModule::kRm5);
    QCOMPARE(exchange(beltpack, write), "");
    QCOMPARE(exchange(beltpack, read), "# 01BF\r\n");
}

void TestBeltpack::takesWrites_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("stored");
    QTest::newRow("padded with blanks") << QByteArray("# 0247AB        ") << 0x07 << QByteArray("AB");
    QTest::newRow("without padding") << QByteArray("# 02421E") << 0x02 << QByteArray("1E");
    QTest::newRow("five bytes") << QByteArray("# 06410044300001") << 0x01 << QByteArray("0044300001");
    QTest::newRow("lower-case digits") << QByteArray("# 064eabcdef0123") << 0x0E << QByteArray("ABCDEF0123");
    QTest::newRow("more digits than announced") << QByteArray("# 0242123") << 0x02 << QByteArray("12");
    QTest::newRow("more digits, five bytes")
        << QByteArray("# 064100443100000") << 0x01 << QByteArray("0044310000");
    QTest::newRow("RSSI threshold") << QByteArray("# 0278FE") << 0x38 << QByteArray("FE");
    QTest::newRow("receive") << QByteArray("# 027906") << 0x39 << QByteArray("06");
    QTest::newRow("transmit, lower case") << QByteArray("# 027a07") << 0x3A << QByteArray("07");
    QTest::newRow("frequency, lower case") << QByteArray("# 027c01") << 0x3C << QByteArray("01");
    QTest::newRow("FM deviation, lower case") << QByteArray("# 027d3f") << 0x3D << QByteArray("3F");
    QTest::newRow("production flag") << QByteArray("# 027E01") << 0x3E << QByteArray("01");
}

void TestBeltpack::takesWrites() {
    QFETCH(QByteArray, line);
    QFETCH(int, number);
    QFETCH(QByteArray, stored);
    Beltpack beltpack(RfModule::kKirk);
    QVERIFY(QByteArray::fromStdString(beltpack.value(number)) != stored);
    QCOMPARE(exchange(beltpack, line), "");
    QCOMPARE(QByteArray::fromStdString(beltpack.value(number)), stored);
}

void TestBeltpack::refusesWrites_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("another length") << QByteArray("# 0341AB");
    QTest::newRow("length of nothing") << QByteArray("# 0047AB        ");
    QTest::newRow("one byte for five") << QByteArray("# 0241AB        ");
    QTest::newRow("five bytes for one") << QByteArray("# 06421234567890");
    QTest::newRow("too few digits") << QByteArray("# 0641123456789 ");
    QTest::newRow("no digits") << QByteArray("# 0247          ");
    QTest::newRow("no hexadecimal digits") << QByteArray("# 0247N/A       ");
    QTest::newRow("blank in front") << QByteArray("# 0247 AB");
    QTest::newRow("no such parameter") << QByteArray("# 0256AB");
    QTest::newRow("written without the flag") << QByteArray("# 0207AB");
    QTest::newRow("written with the reply flag") << QByteArray("# 02C7AB");
    QTest::newRow("another family") << QByteArray("! 0247AB");
}

void TestBeltpack::refusesWrites() {
    QFETCH(QByteArray, line);
    Beltpack beltpack(RfModule::kKirk);
    const std::string before = beltpack.dump();
    QCOMPARE(exchange(beltpack, line), "");
    QCOMPARE(QByteArray::fromStdString(beltpack.dump()), QByteArray::fromStdString(before));
}

void TestBeltpack::answersWritesIfAskedTo() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.setAnswersWrites(true);
    QCOMPARE(exchange(beltpack, "# 0247AB        "), "# 01C7\r\n");
    QCOMPARE(exchange(beltpack, "# 027c02"), "# 01FC\r\n");
    QCOMPARE(exchange(beltpack, "# 0247XY        "), "");
}

void TestBeltpack::unavailableParameterIsSilent() {
    Beltpack beltpack(RfModule::kKirk);
    beltpack.setAvailable(0x0D, false);
    QVERIFY(!beltpack.holds(0x0D));
    QCOMPARE(exchange(beltpack, "# 010D"), "");
    QCOMPARE(exchange(beltpack, "# 024D01        "), "");
    beltpack.setAvailable(0x0D, true);
    QCOMPARE(exchange(beltpack, "# 010D"), "# 028D00\r\n");
}

void TestBeltpack::version() {
    Beltpack beltpack(RfModule::kRm5);
    beltpack.setVersion("2.13b");
    const QByteArray reply = exchange(beltpack, "! 0108");
    QVERIFY(reply.endsWith("\r\n"));
    const QByteArray line = reply.chopped(2);
    QVERIFY(line.contains("DECT Version:"));
    // The version begins at the 15th character and one character follows it.
    QCOMPARE(line.mid(14, line.size() - 15), "2.13b");
    QCOMPARE(exchange(beltpack, "! 0107"), "");
}

void TestBeltpack::versionComesAfterOtherLines() {
    Beltpack beltpack(RfModule::kRm5);
    beltpack.setLinesBeforeVersion(3);
    const QList<QByteArray> lines = exchange(beltpack, "! 0108").split('\n');
    QCOMPARE(lines.size(), 5);  // the last one is what follows the last line end
    for (int i = 0; i < 3; ++i) {
        QVERIFY(lines[i].startsWith('!') || lines[i].startsWith('^'));
        QVERIFY(lines[i].endsWith('\r'));
        QVERIFY(!lines[i].contains("DECT Version:"));
    }
    QVERIFY(lines[3].contains("DECT Version:"));
}

void TestBeltpack::liveFmDeviationIsNotStored() {
    Beltpack beltpack(RfModule::kKirk);
    QVERIFY(!beltpack.liveFmDeviation());
    const std::string before = beltpack.dump();
    QCOMPARE(exchange(beltpack, "! 02073F"), "");
    QCOMPARE(beltpack.liveFmDeviation().value_or(-1), 0x3F);
    QCOMPARE(QByteArray::fromStdString(beltpack.dump()), QByteArray::fromStdString(before));
}

void TestBeltpack::calibrationModeOfKirkOnly() {
    Beltpack kirk(RfModule::kKirk);
    QVERIFY(!kirk.inCalibrationMode());
    QCOMPARE(exchange(kirk, "! 0309E803"), "");
    QVERIFY(kirk.inCalibrationMode());
    QCOMPARE(exchange(kirk, "! 03090000"), "");
    QVERIFY(!kirk.inCalibrationMode());
    Beltpack rm5(RfModule::kRm5);
    QCOMPARE(exchange(rm5, "! 0309E803"), "");
    QVERIFY(!rm5.inCalibrationMode());
    QVERIFY(!rm5.nextEventMs());
}

void TestBeltpack::passesOverWhatItDoesNotKnow_data() {
    QTest::addColumn<QByteArray>("line");
    for (const char* line : {"",           "#",          "# 01",         "# 0116",
                             "# 0100",     "# 0201",     "# 010",        "# 01XY",
                             "# ZZ01",     "# 0001",     "#  0101",      "#0101",
                             "#-0102",     " # 0101",    "? 0101",       "^ 0101",
                             "# 01011",    "# 010101",   "# 0181",       "! 0109",
                             "! 0107",     "! 0208",     "! 020",        "! 0207",
                             "! 0307AABB", "! 0207XX",   "! 0309E80300", "! 0309e803",
                             "! 0309FFFF", "! 0308E803", "! 0306AABB",   "! 0E030002100ECE00001503FF000000"})
        QTest::newRow(line) << QByteArray(line);
}

void TestBeltpack::passesOverWhatItDoesNotKnow() {
    QFETCH(QByteArray, line);
    Beltpack beltpack(RfModule::kKirk);
    const std::string before = beltpack.dump();
    std::vector<TranscriptEntry> transcript;
    beltpack.setTranscript([&](const TranscriptEntry& entry) { transcript.push_back(entry); });
    QCOMPARE(exchange(beltpack, line), "");
    QCOMPARE(transcript.size(), 2U);
    QCOMPARE(static_cast<int>(transcript[1].kind), static_cast<int>(Kind::kNote));
    QVERIFY(!beltpack.inCalibrationMode());
    QVERIFY(!beltpack.liveFmDeviation());
    QCOMPARE(QByteArray::fromStdString(beltpack.dump()), QByteArray::fromStdString(before));
    QCOMPARE(exchange(beltpack, "# 0102"), "# 02821F\r\n");
}

void TestBeltpack::lineNeedsBothEnds_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("carriage return alone") << QByteArray("# 0102\r") << QByteArray();
    QTest::newRow("line feed alone") << QByteArray("# 0102\n") << QByteArray();
    QTest::newRow("line feed behind something else") << QByteArray("# 0102x\n") << QByteArray();
    QTest::newRow("the wrong way round") << QByteArray("# 0102\n\r") << QByteArray();
    QTest::newRow("both") << QByteArray("# 0102\r\n") << QByteArray("# 02821F\r\n");
    QTest::newRow("two lines") << QByteArray("# 0102\r\n# 0104\r\n")
                               << QByteArray("# 02821F\r\n# 028430\r\n");
}

void TestBeltpack::lineNeedsBothEnds() {
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, reply);
    Beltpack beltpack(RfModule::kKirk);
    beltpack.receive(bytes.toStdString(), 0);
    QCOMPARE(takeAll(beltpack, 0), reply);
}

void TestBeltpack::takesBytesInAnyPortions() {
    Beltpack beltpack(RfModule::kKirk);
    for (const char c : std::string("# 0102\r")) {
        beltpack.receive(std::string(1, c), 0);
        QCOMPARE(takeAll(beltpack, 0), "");
    }
    beltpack.receive("\n", 0);
    QCOMPARE(takeAll(beltpack, 0), "# 02821F\r\n");
    QCOMPARE(takeAll(beltpack, 0), "");
}

void TestBeltpack::recoversFromEndlessNoise() {
    Beltpack beltpack(RfModule::kKirk);
    int dropped = 0;
    beltpack.setTranscript(
        [&](const TranscriptEntry& entry) { dropped += entry.kind == Kind::kNote ? 1 : 0; });
    beltpack.receive(std::string(100'000, 'x'), 0);
    QVERIFY(dropped > 100);
    QCOMPARE(takeAll(beltpack, 0), "");
    exchange(beltpack, "");  // ends what the noise has begun
    QCOMPARE(exchange(beltpack, "# 0102"), "# 02821F\r\n");
}

void TestBeltpack::dumpsWhatItHolds() {
    Beltpack beltpack(RfModule::kRm5);
    for (int number = 0x02; number <= 0x14; ++number)
        beltpack.setAvailable(number, false);
    QVERIFY(beltpack.setValue(0x01, "00443000ff"));
    exchange(beltpack, "# 025507        ");
    QCOMPARE(QByteArray::fromStdString(beltpack.dump()), "01=00443000FF\n15=07\n3C=0A\n3D=21\n3E=00\n");
}

void TestBeltpack::transcriptTellsEverything() {
    Beltpack beltpack(RfModule::kKirk);
    std::vector<TranscriptEntry> transcript;
    beltpack.setTranscript([&](const TranscriptEntry& entry) { transcript.push_back(entry); });
    exchange(beltpack, "# 0102", 7);
    exchange(beltpack, "x\x01\\", 9);
    const std::vector<TranscriptEntry> expected{{7, Kind::kReceived, "# 0102"},
                                                {7, Kind::kSent, "# 02821F"},
                                                {9, Kind::kReceived, "x\\x01\\x5C"},
                                                {9, Kind::kNote, "not understood"}};
    QVERIFY(transcript == expected);
}

QUORVEX_TEST(TestBeltpack, quorvex::NoApplication)
#include "test_beltpack.moc"
