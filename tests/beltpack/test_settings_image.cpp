#include <QTest>

#include "beltpack/settings_image.h"
#include "link/reply.h"
#include "link/runtime_fault.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// The parameters of a Beltpack in memory: table, fixed widths and wire forms.
class TestSettingsImage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void table_data();
    void table();
    void blankAtTheStart();
    void lastRecordIsEmpty();
    void storesReplies_data();
    void storesReplies();
    void writeLines_data();
    void writeLines();
    void fixedText_data();
    void fixedText();
    void dataOfReplies_data();
    void dataOfReplies();
    void clearsValuesOnly();
    void filled_data();
    void filled();
    void outsideTheRecords_data();
    void outsideTheRecords();
};

void TestSettingsImage::table_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("readLine");
    QTest::addColumn<int>("replyLength");
    QTest::addColumn<int>("digits");
    QTest::addColumn<QString>("name");
    int index = 0;
    const auto row = [&index](const char* readLine, int replyLength, int digits, const char* name) {
        QTest::newRow(name) << index++ << readLine << replyLength << digits << name;
    };
    row("# 0101", 16, 10, "Beltpack PSN/ID     ");
    row("# 0102", 8, 2, "System Id Length    ");
    row("# 0103", 16, 10, "System Id           ");
    row("# 0104", 8, 2, "Headset Limit       ");
    row("# 0105", 8, 2, "RSSI Warning Alarm  ");
    row("# 0106", 8, 2, "Low Battery Alarm   ");
    row("# 0107", 8, 2, "Headset Mic Type    ");
    row("# 0108", 8, 2, "Headset Mic Gain    ");
    row("# 0109", 8, 2, "Headphone Off Level ");
    row("# 010A", 8, 2, "Sidetone Volume     ");
    row("# 010B", 8, 2, "Master Volume       ");
    row("# 010C", 8, 2, "Programming Mode    ");
    row("# 010D", 8, 2, "PTT Switch          ");
    row("# 010E", 16, 10, "RD Carrier Mask     ");
    row("# 010F", 8, 2, "Page Change Mode    ");
    row("# 0110", 8, 2, "FCC Enabled         ");
    row("# 0111", 8, 2, "Keylock             ");
    row("# 0112", 8, 2, "Vibrator Enabled    ");
    row("# 0113", 8, 2, "Mic Noise Gate Enabl");
    row("# 0114", 8, 2, "Keytap Mode         ");
    row("# 0115", 8, 2, "Feature Map         ");
}

void TestSettingsImage::table() {
    QFETCH(int, index);
    QFETCH(QString, readLine);
    QFETCH(int, replyLength);
    QFETCH(int, digits);
    QFETCH(QString, name);
    const SettingsImage image;
    const Parameter& parameter = image[index];
    QCOMPARE(shown(parameter.readLine()), readLine);
    QCOMPARE(parameter.replyLength(), replyLength);
    QCOMPARE(parameter.digits(), digits);
    QCOMPARE(shown(parameter.name.str()), name);
    QCOMPARE(static_cast<int>(parameter.number), index + 1);
    QCOMPARE(static_cast<int>(parameter.length), digits / 2 + 1);
}

void TestSettingsImage::blankAtTheStart() {
    const SettingsImage image;
    for (int i = 0; i <= 21; ++i) {
        QCOMPARE(shown(image[i].value.str()), "          ");
        QCOMPARE(shown(image[i].available.str()), "  ");
    }
    QVERIFY(!image.isFilled());
}

void TestSettingsImage::lastRecordIsEmpty() {
    const SettingsImage image;
    QCOMPARE(static_cast<int>(image[21].number), 0);
    QCOMPARE(static_cast<int>(image[21].length), 0);
    QCOMPARE(shown(image[21].name.str()), QString(20, ' '));
}

void TestSettingsImage::storesReplies_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("value");
    QTest::newRow("two digits") << 6 << QByteArray("# 02871F") << "1F        ";
    QTest::newRow("ten digits fill the field") << 2 << QByteArray("# 0683100ECE1000") << "100ECE1000";
    QTest::newRow("as it came") << 6 << QByteArray("^ 0287xy") << "xy        ";
    QTest::newRow("lower case stays") << 6 << QByteArray("# 02871f") << "1f        ";
    QTest::newRow("longer is cut") << 6 << QByteArray("# 0287123456789ABC") << "123456789A";
    QTest::newRow("head alone") << 6 << QByteArray("# 0287") << "          ";
    QTest::newRow("shorter than a head") << 6 << QByteArray("Error") << "          ";
}

void TestSettingsImage::storesReplies() {
    QFETCH(int, index);
    QFETCH(QByteArray, reply);
    QFETCH(QString, value);
    SettingsImage image;
    image[index].value = "FFFFFFFFFF";
    image[index].storeReply(bytesOf(reply));
    QCOMPARE(shown(image[index].value.str()), value);
}

void TestSettingsImage::writeLines_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("line");
    // The whole field goes out, its trailing blanks too.
    QTest::newRow("two digits") << 6 << QByteArray("1F") << "# 02471F        ";
    QTest::newRow("ten digits") << 0 << QByteArray("0044303039") << "# 06410044303039";
    QTest::newRow("carrier mask") << 13 << QByteArray("03FF000000") << "# 064E03FF000000";
    QTest::newRow("headset limit") << 3 << QByteArray("30") << "# 024430        ";
    QTest::newRow("number with a carry") << 15 << QByteArray("01") << "# 025001        ";
    QTest::newRow("last parameter") << 20 << QByteArray("02") << "# 025502        ";
    QTest::newRow("unknown value") << 20 << QByteArray() << "# 0255          ";
}

void TestSettingsImage::writeLines() {
    QFETCH(int, index);
    QFETCH(QByteArray, value);
    QFETCH(QString, line);
    SettingsImage image;
    image[index].value = bytesOf(value);
    QCOMPARE(shown(image[index].writeLine()), line);
}

void TestSettingsImage::fixedText_data() {
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("held");
    QTest::addColumn<bool>("blank");
    QTest::newRow("shorter") << QByteArray("N/A") << "N/A       " << false;
    QTest::newRow("exact") << QByteArray("0123456789") << "0123456789" << false;
    QTest::newRow("longer") << QByteArray("0123456789AB") << "0123456789" << false;
    QTest::newRow("empty") << QByteArray("") << "          " << true;
    QTest::newRow("blanks") << QByteArray("    ") << "          " << true;
    QTest::newRow("leading blank stays") << QByteArray(" 1") << " 1        " << false;
}

void TestSettingsImage::fixedText() {
    QFETCH(QByteArray, stored);
    QFETCH(QString, held);
    QFETCH(bool, blank);
    FixedText<10> field;
    field = "XXXXXXXXXX";
    field = bytesOf(stored);
    QCOMPARE(shown(field.str()), held);
    QCOMPARE(field.isBlank(), blank);
}

void TestSettingsImage::dataOfReplies_data() {
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("digits");
    QTest::newRow("one byte") << QByteArray("# 02BD21") << "21";
    QTest::newRow("five bytes") << QByteArray("# 0683100ECE1000") << "100ECE1000";
    QTest::newRow("head alone") << QByteArray("# 01BF") << "";
    QTest::newRow("empty") << QByteArray() << "";
}

void TestSettingsImage::dataOfReplies() {
    QFETCH(QByteArray, reply);
    QFETCH(QString, digits);
    QCOMPARE(shown(dataDigits(bytesOf(reply))), digits);
}

void TestSettingsImage::clearsValuesOnly() {
    SettingsImage image;
    for (int i = 0; i <= 21; ++i) {
        image[i].value = "1F";
        image[i].available = "1";
    }
    const SettingsImage::Filling filling(image);
    for (int i = 0; i <= 20; ++i) {
        QCOMPARE(shown(image[i].value.str()), "          ");
        QCOMPARE(shown(image[i].available.str()), "1 ");
    }
    QCOMPARE(shown(image[18].name.str()), "Mic Noise Gate Enabl");
    QCOMPARE(shown(image[20].readLine()), "# 0115");
}

void TestSettingsImage::filled_data() {
    QTest::addColumn<QByteArray>("psn");
    QTest::addColumn<bool>("filled");
    QTest::newRow("blank") << QByteArray("          ") << false;
    QTest::newRow("digits") << QByteArray("0000000000") << true;
    QTest::newRow("one digit") << QByteArray("         1") << true;
    QTest::newRow("no value") << QByteArray("N/A") << true;
}

void TestSettingsImage::filled() {
    QFETCH(QByteArray, psn);
    QFETCH(bool, filled);
    SettingsImage image;
    image[1].value = "1F";
    image[0].value = bytesOf(psn);
    QCOMPARE(image.isFilled(), filled);
}

void TestSettingsImage::outsideTheRecords_data() {
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("above") << 22;
    QTest::newRow("far above") << 1000000;
}

void TestSettingsImage::outsideTheRecords() {
    QFETCH(int, index);
    SettingsImage image;
    int fault = 0;
    try {
        image[index].value = "00";
    } catch (const RuntimeFault& thrown) {
        fault = thrown.number();
    }
    QCOMPARE(fault, 9);
}

QUORVEX_TEST(TestSettingsImage, quorvex::NoApplication)
#include "test_settings_image.moc"
