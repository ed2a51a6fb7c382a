#include <QJsonArray>
#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

/// What a command without a unit comes to.
tool::Result resultOf(const QString& line) {
    const tool::Request request = tool::parseCommandLine(line.split(' '));
    return request.command->run(request);
}

}  // namespace

/// show, check and diff.
class TestFileCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shows();
    void showsNoPsn();
    void showsValuesOutOfRange();
    void checksSound();
    void checksDefects();
    void diffsEqual();
    void diffsNames();
    void unreadable_data();
    void unreadable();

private:
    SettingsFolder folder_;
};

void TestFileCommands::shows() {
    const tool::Result result = resultOf("show " + folder_.make("a.bpc", {{14, "N/A"}}));
    QVERIFY(result.status == tool::Status::done);
    QVERIFY(result.text.startsWith("PSN 100000\n\nParam  Description              Data\n"));
    QVERIFY(result.text.contains("\n0D     PTT Switch               N/A       \n"));
    QCOMPARE(result.object["psn"].toInt(), 100000);
    const QJsonObject parameters = result.object["parameters"].toObject();
    QCOMPARE(parameters.size(), 21);
    QCOMPARE(parameters["RD Carrier Mask"].toString(), "03FF000000");
    QVERIFY(parameters["PTT Switch"].isNull());
}

void TestFileCommands::showsNoPsn() {
    const tool::Result result = resultOf("show " + folder_.make("a.bpc", {{2, "N/A"}}));
    QVERIFY(result.text.startsWith("PSN N/A\n\n"));
    QVERIFY(result.object["psn"].isNull());
}

void TestFileCommands::showsValuesOutOfRange() {
    const tool::Result result = resultOf("show " + folder_.make("a.bpc", {{8, "0A"}}));
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.object["parameters"]["Headset Mic Type"].toString(), "0A");
}

void TestFileCommands::checksSound() {
    const QString path = folder_.make("a.bpc");
    const tool::Result result = resultOf("check " + path);
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.text, path + " is as it should be.\n");
    QCOMPARE(result.object["defects"].toArray(), QJsonArray());
}

void TestFileCommands::checksDefects() {
    const tool::Result result = resultOf("check " + folder_.make("a.bpc", {{5, "3G"}, {8, "05"}}));
    QVERIFY(result.status == tool::Status::file);
    QCOMPARE(result.text,
             "line 5: Headset Limit: \"3G\" is not hexadecimal\n"
             "line 8: Headset Mic Type: \"05\" is out of its range, 00 to 02\n");
    QCOMPARE(
        result.object["defects"].toArray().at(1).toObject(),
        QJsonObject({{"line", 8}, {"defect", "Headset Mic Type: \"05\" is out of its range, 00 to 02"}}));
}

void TestFileCommands::diffsEqual() {
    const tool::Result result =
        resultOf("diff " + folder_.make("a.bpc", {{4, "100ece1000"}}) + " " + folder_.make("b.bpc"));
    QVERIFY(result.status == tool::Status::done);
    QCOMPARE(result.text, "");
    QCOMPARE(result.object["differences"].toArray(), QJsonArray());
}

void TestFileCommands::diffsNames() {
    const tool::Result result =
        resultOf("diff " + folder_.make("a.bpc", {{5, "24"}, {14, "N/A"}}) + " " + folder_.make("b.bpc"));
    QVERIFY(result.status == tool::Status::differs);
    QCOMPARE(result.text,
             "Headset Limit                 24 | 30\n"
             "PTT Switch                   N/A | 00\n");
    QCOMPARE(result.object["differences"].toArray(),
             QJsonArray({QJsonObject({{"name", "Headset Limit"}, {"first", "24"}, {"second", "30"}}),
                         QJsonObject({{"name", "PTT Switch"}, {"first", QJsonValue()}, {"second", "00"}})}));
}

void TestFileCommands::unreadable_data() {
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("told");
    QTest::newRow("show none") << "show none.bpc"
                               << "there is no such file.";
    QTest::newRow("check none") << "check none.bpc"
                                << "there is no such file.";
    QTest::newRow("diff none") << "diff sound.bpc none.bpc"
                               << "there is no such file.";
    QTest::newRow("diff with what is no settings file") << "diff sound.bpc odd.bpc"
                                                        << "line 1: \"PK\" is not the signature \"K4700\"";
    QTest::newRow("show what is no settings file") << "show odd.bpc"
                                                   << "line 1: \"PK\" is not the signature \"K4700\"";
}

void TestFileCommands::unreadable() {
    QFETCH(QString, words);
    QFETCH(QString, told);
    folder_.make("sound.bpc");
    folder_.make("odd.bpc", {{1, "PK"}});
    QStringList parts = words.split(' ');
    for (QString& part : parts) {
        if (part.endsWith(".bpc"))
            part = folder_.path(part);
    }
    const QString refusal = refusalOf(parts.join(' '));
    QVERIFY2(refusal.startsWith("5 ") && refusal.trimmed().endsWith(told), qPrintable(refusal));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestFileCommands, quorvex::NoApplication)
#include "test_file_commands.moc"
