#include <QJsonArray>
#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

QStringList namesIn(const QJsonValue& differences) {
    QStringList names;
    for (const QJsonValue& each : differences.toArray())
        names << each["name"].toString();
    return names;
}

QJsonObject firstOf(const QJsonValue& differences) {
    return differences.toArray().at(0).toObject();
}

constexpr int kFirstReadBack = 25;  // the replies of a read of an RM5 come before it
constexpr int kLimitReadBack = kFirstReadBack + 1;
constexpr int kSecondRead = kFirstReadBack + 19;
constexpr int kDone = 0, kDiffers = 1, kNoAnswer = 3, kPort = 4, kFile = 5;

int statusOf(const tool::Result& result) {
    return static_cast<int>(result.status);
}

}  // namespace

/// read, write, verify and production-values on Beltpacks.
class TestBeltpackCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readTells_data();
    void readTells();
    void readSaves();
    void readKeepsOddValues();
    void readWithoutParameter();
    void readOfNothing();
    void readThatCannotBeSaved();
    void readWithoutThreshold();
    void writeChangesSettings();
    void writeWithIdentity();
    void writeDryRun();
    void writeTwiceChangesNothing();
    void writeSkipsWhatTheUnitLacks();
    void writeSkipsWhatTheFileLacks();
    void writeReadBackOtherwise();
    void writeGoneHalfWay();
    void writeBrokenOffByOneReply();
    void writeReadBackByNoAnswer();
    void writeToAnotherUnit();
    void writeToWhatWasNotThereAtFirst();
    void writePulledHalfWay();
    void verifyNames();
    void verifyWithoutIdentity();
    void productionValues();
    void productionValuesForNoRevision_data();
    void productionValuesForNoRevision();
    void refusedFiles_data();
    void refusedFiles();
    void radioModuleIsNotStored();

private:
    ToolBench& withBeltpack(sim::RfModule module = sim::RfModule::kRm5) {
        bench_ = std::make_unique<ToolBench>(ToolBench::beltpack(module));
        return *bench_;
    }
    std::string held(int number) { return bench_->unit().value(number); }
    void demandFile(const QString& name, const QByteArray& value);

    std::unique_ptr<ToolBench> bench_;
    std::unique_ptr<SettingsFolder> folder_;
};

void TestBeltpackCommands::init() {
    folder_ = std::make_unique<SettingsFolder>();
    withBeltpack();
}

void TestBeltpackCommands::readTells_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QJsonObject>("radio");
    QTest::newRow("RM5") << false
                         << QJsonObject{{"RF Module", "Plextek RM5"},
                                        {"FM Deviation", 33},
                                        {"Frequency Accuracy", 5},
                                        {"DECT Version", "4.07"}};
    QTest::newRow("Kirk") << true << QJsonObject{{"RF Module", "Kirk KRM 1800"},
                                                 {"FM Deviation", 33},
                                                 {"Mid", 4},
                                                 {"Receive", 3},
                                                 {"Transmit", 2},
                                                 {"RSSI Threshold", 72},
                                                 {"DECT Version", "4.07"}};
}

void TestBeltpackCommands::readTells() {
    QFETCH(bool, kirk);
    QFETCH(QJsonObject, radio);
    withBeltpack(kirk ? sim::RfModule::kKirk : sim::RfModule::kRm5);
    bench_->unit().setValue(0x01, "00443186A0");
    bench_->unit().setValue(0x13, "01");
    const tool::Result result = bench_->run("read");
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(result.problem, "");
    QCOMPARE(result.object["psn"].toInt(), 100000);
    QCOMPARE(result.object["radio"].toObject(), radio);
    const QJsonObject parameters = result.object["parameters"].toObject();
    QCOMPARE(parameters.size(), 21);
    QCOMPARE(parameters["Beltpack PSN/ID"].toString(), "00443186A0");
    QCOMPARE(parameters["Headset Limit"].toString(), "30");
    QCOMPARE(parameters["Mic Noise Gate Enabl"].toString(), "01");
    QVERIFY(result.text.startsWith("PSN 100000\n\nParam  Description              Data\n"));
    QVERIFY(result.text.contains("\n04     Headset Limit            30        \n"));
    QVERIFY(!result.text.contains('\r'));
    for (const QString& name : radio.keys())
        QVERIFY2(result.text.contains("\n" + name), qPrintable(name));
    for (const char* text :
         {"Reading settings from Beltpack...", "Reading settings from Beltpack... 12 of 21"})
        QVERIFY2(bench_->progress().contains(text), text);
}

void TestBeltpackCommands::demandFile(const QString& name, const QByteArray& value) {
    const QList<QByteArray> lines = SettingsFolder::content(folder_->path(name)).split('\n');
    QCOMPARE(lines.size(), 23);
    QCOMPARE(lines.at(0), "K4700\r");
    QCOMPARE(lines.at(4), value.leftJustified(10) + '\r');
}

void TestBeltpackCommands::readSaves() {
    const QString path = folder_->make("found.bpc", {{5, "77"}});
    const tool::Result result = bench_->run("read " + path);
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(result.object["file"].toString(), path);
    demandFile("found.bpc", "30");
    QVERIFY(QFile::remove(path));
    bench_->run("read " + path);
    demandFile("found.bpc", "30");
}

// The window puts a microphone type into its range; the record of a unit must be what it held.
void TestBeltpackCommands::readKeepsOddValues() {
    bench_->unit().setValue(0x07, "0A");
    bench_->unit().setValue(0x06, "07");
    bench_->unit().setValue(0x10, "09");
    const QString path = folder_->path("found.bpc");
    const tool::Result result = bench_->run("read " + path);
    QCOMPARE(statusOf(result), kDone);
    const QJsonObject parameters = result.object["parameters"].toObject();
    QCOMPARE(parameters["Headset Mic Type"].toString(), "0A");
    QCOMPARE(parameters["Low Battery Alarm"].toString(), "07");
    QCOMPARE(parameters["FCC Enabled"].toString(), "09");
    const QByteArray file = SettingsFolder::content(path);
    QCOMPARE(file.split('\n').at(7), "0A        \r");
    QCOMPARE(bench_->run("verify " + path).object["differences"].toArray().size(), 0);
}

void TestBeltpackCommands::readWithoutParameter() {
    bench_->unit().setAvailable(0x0D, false);
    const tool::Result result = bench_->run("read");
    QCOMPARE(statusOf(result), kDone);
    QVERIFY(result.object["parameters"]["PTT Switch"].isNull());
    QVERIFY(result.text.contains("PTT Switch               N/A"));
}

void TestBeltpackCommands::readOfNothing() {
    bench_->unit().addFault(sim::parseFault("no-reply"));
    const QString path = folder_->path("found.bpc");
    const tool::Result result = bench_->run("read " + path);
    QCOMPARE(statusOf(result), kNoAnswer);
    QCOMPARE(result.problem,
             "No Response from Beltpack! Check connection to Beltpack. No line was answered.");
    QVERIFY(!QFile::exists(path));
}

void TestBeltpackCommands::readThatCannotBeSaved() {
    if (!QFile::exists("/dev/full"))
        QSKIP("no device that is full");
    const QString path = folder_->path("full/found.bpc");
    QVERIFY(QDir().mkpath(folder_->path("full")));
    const tool::UnitJob job = [&] {
        const tool::Request request = tool::parseCommandLine({"read", path});
        return request.command->prepare(request);
    }();
    QVERIFY(QDir(folder_->path("full")).removeRecursively());  // after the command has looked
    tool::PlainWindow window(bench_->port(), bench_->loop());
    const tool::Result result = tool::runJob(job, window);
    QCOMPARE(statusOf(result), kFile);
    QVERIFY2(result.problem.startsWith(path), qPrintable(result.problem));
    QVERIFY(result.text.contains("Headset Limit"));  // what was read is told all the same
}

void TestBeltpackCommands::readWithoutThreshold() {
    withBeltpack(sim::RfModule::kKirk);
    QVERIFY(bench_->run("read").object["radio"].toObject().contains("RSSI Threshold"));
    bench_->unit().addFault(sim::parseFault("no-reply=38"));
    const tool::Result result = bench_->run("read");
    QCOMPARE(statusOf(result), kDone);
    QVERIFY(!result.object["radio"].toObject().contains("RSSI Threshold"));
}

void TestBeltpackCommands::writeChangesSettings() {
    bench_->unit().setValue(0x01, "0044300007");
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}, {9, "08"}}));
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(namesIn(result.object["changes"]),
             QStringList({"Headset Limit", "Headset Mic Type", "Headset Mic Gain", "Master Volume"}));
    QCOMPARE(firstOf(result.object["changes"]),
             QJsonObject({{"name", "Headset Limit"}, {"before", "30"}, {"after", "24"}}));
    QVERIFY(result.object["otherwise"].toArray().isEmpty());
    QCOMPARE(result.object["written"].toArray().size(), 19);
    QCOMPARE(held(0x04), "24");
    QCOMPARE(held(0x08), "08");
    QCOMPARE(held(0x01), "0044300007");
    QVERIFY(result.text.startsWith("PSN 7: 4 parameters changed.\nHeadset Limit                 30 -> 24\n"));
    QVERIFY(result.text.contains("PSN and System Id are left as they are; --with-identity writes them.\n"));
    for (const char* line : {"# 0641", "# 0643"})
        QVERIFY(bench_->lines().filter(line).isEmpty());
}

void TestBeltpackCommands::writeWithIdentity() {
    const QString file = folder_->make("new.bpc", {{2, "00443ABCDE"}, {4, "123456789A"}});
    const tool::Result result = bench_->run("write --with-identity " + file);
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(held(0x01), "00443ABCDE");
    QCOMPARE(held(0x03), "123456789A");
    QCOMPARE(namesIn(result.object["changes"]).mid(0, 2), QStringList({"Beltpack PSN/ID", "System Id"}));
    QVERIFY(!result.text.contains("--with-identity"));
}

void TestBeltpackCommands::writeDryRun() {
    const std::string before = bench_->unit().dump();
    const tool::Result result = bench_->run("write --dry-run " + folder_->make("new.bpc", {{5, "24"}}));
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(bench_->unit().dump(), before);
    QVERIFY(bench_->lines().filter("# 0244").isEmpty());
    QCOMPARE(firstOf(result.object["changes"]),
             QJsonObject({{"name", "Headset Limit"}, {"before", "30"}, {"after", "24"}}));
    QCOMPARE(result.object["dryRun"].toBool(), true);
    QVERIFY(result.text.contains(" would change.\nHeadset Limit "));
}

void TestBeltpackCommands::writeTwiceChangesNothing() {
    const QString file = folder_->make("new.bpc", {{5, "24"}});
    bench_->run("write " + file);
    const tool::Result result = bench_->run("write " + file);
    QCOMPARE(statusOf(result), kDone);
    QVERIFY(result.object["changes"].toArray().isEmpty());
    QVERIFY(result.text.contains(": no parameter changed.\n"));
}

void TestBeltpackCommands::writeSkipsWhatTheUnitLacks() {
    bench_->unit().setAvailable(0x04, false);
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}}));
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(result.object["notInUnit"].toArray(), QJsonArray({"Headset Limit"}));
    QVERIFY(bench_->lines().filter("# 0244").isEmpty());
    QVERIFY(result.text.contains("Not in this unit, so not written: Headset Limit.\n"));
}

void TestBeltpackCommands::writeSkipsWhatTheFileLacks() {
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "N/A"}}));
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(held(0x04), "30");
    QVERIFY(bench_->lines().filter("# 0244").isEmpty());
    QVERIFY(result.object["notInUnit"].toArray().isEmpty());
}

void TestBeltpackCommands::writeReadBackOtherwise() {
    bench_->unit().addFault(sim::parseFault("other-value=04"));
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}}));
    QCOMPARE(statusOf(result), kDiffers);
    QCOMPARE(result.object["otherwise"].toArray(),
             QJsonArray({QJsonObject({{"name", "Headset Limit"}, {"written", "24"}, {"read", "DB"}})}));
    QVERIFY(result.text.contains(
        "Not read back as written:\nHeadset Limit                 24 written, read back DB\n"));
    QVERIFY(!result.object["written"].toArray().contains("Headset Limit"));
}

void TestBeltpackCommands::writeGoneHalfWay() {
    bench_->unit().setValue(0x08, "05");
    const QString file = folder_->make("new.bpc", {{5, "24"}});
    // The 5th write is the one of the microphone type: silent from there on.
    bench_->port().plan({FaultyPort::Place::line, 25 + 2 * 5, false, [](FaultyPort&, const auto&) {}, {}});
    const tool::Result result = bench_->run("write " + file);
    QCOMPARE(statusOf(result), kNoAnswer);
    QCOMPARE(result.object["written"].toArray(),
             QJsonArray({"System Id Length", "Headset Limit", "RSSI Warning Alarm", "Low Battery Alarm",
                         "Headset Mic Type"}));
    QVERIFY(result.text.startsWith("Written and read back: System Id Length, Headset Limit, "));
    QVERIFY(result.text.contains("What the unit holds now is not known.\n"));
    QCOMPARE(result.problem,
             "Error occured while writing settings to Beltpack! Check connection to Beltpack. The last line "
             "that was answered: \"# 0107\". Sent and not confirmed: \"# 024802\".");
    QCOMPARE(held(0x04), "24");
    QCOMPARE(held(0x08), "05");
}

// What stands behind the break was not written, whatever the unit holds there.
void TestBeltpackCommands::writeBrokenOffByOneReply() {
    bench_->port().plan(
        {FaultyPort::Place::reply, kLimitReadBack, true, [](FaultyPort&, const auto&) {}, {}});
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}, {9, "08"}}));
    QCOMPARE(statusOf(result), kNoAnswer);
    QCOMPARE(namesIn(result.object["changes"]), QStringList("Headset Limit"));
    QCOMPARE(result.object["otherwise"].toArray(), QJsonArray());
    QCOMPARE(result.object["unasked"].toArray(), QJsonArray());
    QVERIFY2(result.problem.endsWith("The last line that was answered: \"# 0102\". Sent and not confirmed: "
                                     "\"# 024424\"."),
             qPrintable(result.problem));
}

void TestBeltpackCommands::writeReadBackByNoAnswer() {
    bench_->port().plan({FaultyPort::Place::reply,
                         kLimitReadBack,
                         true,
                         [](FaultyPort& port, const auto&) { port.say("# 028524\r\n"); },
                         {}});
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}}));
    QCOMPARE(statusOf(result), kNoAnswer);
    QCOMPARE(result.problem, "What came back for \"# 0104\" is no answer to it: \"# 028524\".");
    QCOMPARE(result.object["otherwise"].toArray(), QJsonArray());
    QVERIFY(!result.object["written"].toArray().contains("Headset Limit"));
}

void TestBeltpackCommands::writeToAnotherUnit() {
    sim::Unit& unit = bench_->unit();
    bench_->port().plan({FaultyPort::Place::reply,
                         kSecondRead,
                         true,
                         [&unit](FaultyPort& port, const FaultyPort::Struck& struck) {
                             unit.setValue(0x01, "0044300099");
                             port.say(struck.body + struck.end);
                         },
                         {}});
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc"));
    QCOMPARE(statusOf(result), kDiffers);
    QCOMPARE(result.object["otherwise"].toArray(), QJsonArray());
    QCOMPARE(namesIn(result.object["unasked"]), QStringList("Beltpack PSN/ID"));
    QVERIFY2(
        result.text.contains("Changed without being written; is it still the same unit?\nBeltpack PSN/ID "),
        qPrintable(result.text));
}

void TestBeltpackCommands::writeToWhatWasNotThereAtFirst() {
    bench_->unit().addFault(sim::parseFault("no-reply=04,once"));
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc", {{5, "24"}}));
    QCOMPARE(statusOf(result), kDiffers);
    QCOMPARE(result.object["notInUnit"].toArray(), QJsonArray({"Headset Limit"}));
    QCOMPARE(result.object["otherwise"].toArray(), QJsonArray());
    QCOMPARE(namesIn(result.object["unasked"]), QStringList("Headset Limit"));
}

void TestBeltpackCommands::writePulledHalfWay() {
    bench_->port().plan(
        {FaultyPort::Place::line, 25 + 2 * 5, true, [](FaultyPort& port, const auto&) { port.pull(); }, {}});
    const tool::Result result = bench_->run("write " + folder_->make("new.bpc"));
    QCOMPARE(statusOf(result), kPort);
    QCOMPARE(result.problem,
             "The connection to the port was lost. The last line that was answered: \"# 0107\". Sent and not "
             "confirmed: \"# 024802\".");
    QCOMPARE(result.object["written"].toArray().size(), 5);
}

void TestBeltpackCommands::verifyNames() {
    bench_->run("write --with-identity " + folder_->make("same.bpc"));
    tool::Result result = bench_->run("verify " + folder_->path("same.bpc"));
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(result.text, QString("PSN 100000 holds what is in %1.\n").arg(folder_->path("same.bpc")));
    result = bench_->run("verify " + folder_->make("other.bpc", {{2, "0044300001"}, {5, "24"}, {14, "N/A"}}));
    QCOMPARE(statusOf(result), kDiffers);
    QCOMPARE(namesIn(result.object["differences"]),
             QStringList({"Beltpack PSN/ID", "Headset Limit", "PTT Switch"}));
    QCOMPARE(result.object["differences"].toArray().at(1).toObject(),
             QJsonObject({{"name", "Headset Limit"}, {"file", "24"}, {"unit", "30"}}));
    QVERIFY(result.object["differences"].toArray().at(2)["file"].isNull());
    QVERIFY(result.text.contains("\nHeadset Limit                 24 in the file, in the unit 30\n"));
}

void TestBeltpackCommands::verifyWithoutIdentity() {
    bench_->run("write --with-identity " + folder_->make("same.bpc"));
    const QString other = folder_->make("other.bpc", {{2, "0044300001"}, {4, "1234567890"}});
    QCOMPARE(statusOf(bench_->run("verify " + other)), kDiffers);
    QCOMPARE(statusOf(bench_->run("verify --without-identity " + other)), kDone);
}

void TestBeltpackCommands::productionValues() {
    bench_->unit().setValue(0x15, "02");
    bench_->unit().setValue(0x05, "11");
    bench_->unit().setValue(0x3E, "00");
    const tool::Result result = bench_->run("production-values");
    QCOMPARE(statusOf(result), kDone);
    QCOMPARE(held(0x04), "24");
    QCOMPARE(held(0x05), "00");
    QCOMPARE(held(0x0B), "13");
    QCOMPARE(held(0x3E), "01");
    QCOMPARE(namesIn(result.object["changes"]),
             QStringList({"Headset Limit", "RSSI Warning Alarm", "Low Battery Alarm", "Headset Mic Gain",
                          "Master Volume"}));
    QVERIFY(bench_->lines().contains("# 027E01"));
}

void TestBeltpackCommands::productionValuesForNoRevision_data() {
    QTest::addColumn<QString>("revision");
    QTest::addColumn<QString>("told");
    QTest::newRow("unknown") << "03"
                             << "Feature Map is 03, not 00 to 02";
    QTest::newRow("no decimal number, which the window takes for 0") << "0A"
                                                                     << "Feature Map is 0A, not 00 to 02";
    QTest::newRow("none") << ""
                          << "Feature Map is N/A, not 00 to 02";
}

void TestBeltpackCommands::productionValuesForNoRevision() {
    QFETCH(QString, revision);
    QFETCH(QString, told);
    if (revision.isEmpty())
        bench_->unit().setAvailable(0x15, false);
    else
        bench_->unit().setValue(0x15, revision.toStdString());
    const std::string before = bench_->unit().dump();
    const tool::Result result = bench_->run("production-values");
    QCOMPARE(statusOf(result), kDiffers);
    QVERIFY2(result.problem.contains(told), qPrintable(result.problem));
    QCOMPARE(bench_->unit().dump(), before);
    QVERIFY(bench_->lines().filter("# 027E").isEmpty());
}

void TestBeltpackCommands::refusedFiles_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("told");
    QTest::newRow("none to write") << "write"
                                   << "none.bpc"
                                   << "none.bpc: there is no such file.";
    QTest::newRow("none to verify") << "verify"
                                    << "none.bpc"
                                    << "none.bpc: there is no such file.";
    QTest::newRow("a folder") << "write"
                              << "."
                              << "it is no file.";
    QTest::newRow("no settings") << "write"
                                 << "signature.bpc"
                                 << "line 1: \"K4701\" is not the signature \"K4700\"";
    QTest::newRow("no value") << "verify"
                              << "letters.bpc"
                              << "line 5: Headset Limit: \"3G\" is not hexadecimal";
    QTest::newRow("out of range") << "write"
                                  << "range.bpc"
                                  << "line 8: Headset Mic Type: \"05\" is out of its range, 00 to 02";
    QTest::newRow("saved where no folder is") << "read"
                                              << "none/found.bpc"
                                              << "there is no folder";
    QTest::newRow("saved over a folder") << "read"
                                         << "."
                                         << "is no file.";
}

// Nothing of it reaches the port.
void TestBeltpackCommands::refusedFiles() {
    QFETCH(QString, command);
    QFETCH(QString, file);
    QFETCH(QString, told);
    folder_->make("signature.bpc", {{1, "K4701"}});
    folder_->make("letters.bpc", {{5, "3G"}});
    folder_->make("range.bpc", {{8, "05"}});
    const QString refusal = refusalOf(command + " " + folder_->path(file));
    QVERIFY2(refusal.startsWith("5 "), qPrintable(refusal));
    QVERIFY2(refusal.contains(told), qPrintable(refusal));
    // A value that means nothing may well be what a unit holds.
    QCOMPARE(refusalOf("verify " + folder_->path("range.bpc")), "accepted");
}

void TestBeltpackCommands::radioModuleIsNotStored() {
    QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    withBeltpack(sim::RfModule::kKirk);
    QCOMPARE(statusOf(bench_->run("read")), kDone);
    QCOMPARE(QDir(settings.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestBeltpackCommands, quorvex::NoApplication)
#include "test_beltpack_commands.moc"
