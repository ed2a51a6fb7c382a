#include <QTest>

#include "tests/beltpack/file_bench.h"
#include "tests/beltpack/write_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

const QString kFilter = "Beltpack Config Files (*.bpc)|*.bpc|All Files (*.*)|*.*";

void fill(SettingsImage& image) {
    for (int i = 0; i <= 20; ++i)
        image[i].value = kWholeValues[i].toStdString();
}

}  // namespace

/// Saving settings, and loading what was saved.
class TestSettingsFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saves();
    void savesAnImageNeverFilled();
    void savesOverALongerFile();
    void savesUnderTheNameAsGiven_data();
    void savesUnderTheNameAsGiven();
    void savingSendsAndChangesNothing();
    void proposesTheSerialNumber_data();
    void proposesTheSerialNumber();
    void dialogForLoading();
    void dialogGivenUp_data();
    void dialogGivenUp();
    void loads();
    void roundTrip_data();
    void roundTrip();
    void loadLeavesAvailability();
    void loadThenWrite();
    void readLoadThenWrite();
    void serialNumberShown_data();
    void serialNumberShown();
};

void TestSettingsFile::saves() {
    FileBench bench;
    fill(bench.image);
    QCOMPARE(bench.save(bench.pathOf("new.bpc")), QStringList{kSaved});
    QCOMPARE(bench.content(bench.pathOf("new.bpc")), kWholeFile);
}

void TestSettingsFile::savesAnImageNeverFilled() {
    FileBench bench;
    QCOMPARE(bench.save(bench.pathOf("new.bpc")), QStringList{kSaved});
    QByteArray expected = "K4700\r\n";
    for (int i = 0; i <= 20; ++i)
        expected += "          \r\n";
    QCOMPARE(bench.content(bench.pathOf("new.bpc")), expected);
}

void TestSettingsFile::savesOverALongerFile() {
    FileBench bench;
    fill(bench.image);
    const QString path = bench.make(QByteArray(100'000, 'x'));
    QCOMPARE(bench.save(path), QStringList{kSaved});
    QCOMPARE(bench.content(path), kWholeFile);
}

void TestSettingsFile::savesUnderTheNameAsGiven_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no extension") << "12345";
    QTest::newRow("another extension") << "12345.txt";
    QTest::newRow("blanks and a comma") << "unit 7, spare .bpc";
    QTest::newRow("beyond Latin-1") << QString::fromUtf8("блок-ж.bpc");
    QTest::newRow("umlaut") << QString::fromUtf8("gerät.bpc");
}

void TestSettingsFile::savesUnderTheNameAsGiven() {
    QFETCH(QString, name);
    FileBench bench;
    fill(bench.image);
    QCOMPARE(bench.save(bench.pathOf(name)), QStringList{kSaved});
    QCOMPARE(QDir(bench.folder.path()).entryList(QDir::Files), QStringList{name});
    const SettingsImage::Filling cleared(bench.image);
    QCOMPARE(bench.load(bench.pathOf(name)).last(), kLoaded);
    QCOMPARE(bench.values(), kWholeValues);
}

void TestSettingsFile::savingSendsAndChangesNothing() {
    FileBench bench;
    fill(bench.image);
    bench.beltpackId.type("77");
    bench.save(bench.pathOf("new.bpc"));
    QCOMPARE(bench.values(), kWholeValues);
    QCOMPARE(shown(bench.beltpackId.text()), "77");
    QCOMPARE(bench.port.sentLines(), QStringList());
}

void TestSettingsFile::proposesTheSerialNumber_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << "100000";
    QTest::newRow("empty") << "";
    QTest::newRow("edited since the read") << "12 3-4";
}

void TestSettingsFile::proposesTheSerialNumber() {
    QFETCH(QString, text);
    FileBench bench;
    fill(bench.image);
    bench.beltpackId.type(text.toStdString());
    bench.dialog.choice.error = FileDialog::kCancelled;
    bench.file.CommandSave_Click();
    QCOMPARE(bench.journal.entries(), QStringList{"save: Save settings...; " + kFilter + "; " + text});
}

void TestSettingsFile::dialogForLoading() {
    FileBench bench;
    bench.beltpackId.type("100000");
    bench.dialog.choice.error = FileDialog::kCancelled;
    bench.file.CommandRead_Click();
    QCOMPARE(bench.journal.entries(), QStringList{"load: Open File; " + kFilter + "; "});
}

void TestSettingsFile::dialogGivenUp_data() {
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("cancelled") << 32755 << "Cancel was selected." << QStringList();
    QTest::newRow("error") << 20477 << "Invalid filename"
                           << QStringList{"box plain: Error 20477 selecting file.\r\nInvalid filename []"};
    QTest::newRow("next to cancelled")
        << 32754 << "x" << QStringList{"box plain: Error 32754 selecting file.\r\nx []"};
    QTest::newRow("no description") << 7 << "" << QStringList{"box plain: Error 7 selecting file.\r\n []"};
    QTest::newRow("negative") << -1 << "x" << QStringList{"box plain: Error -1 selecting file.\r\nx []"};
}

void TestSettingsFile::dialogGivenUp() {
    QFETCH(int, error);
    QFETCH(QString, description);
    QFETCH(QStringList, told);
    FileBench bench;
    fill(bench.image);
    const QString path = bench.make("K4700\r\nAA\r\n");
    bench.dialog.choice = {error, description.toStdString(), path.toStdString()};
    bench.file.CommandSave_Click();
    QCOMPARE(bench.journal.take().mid(1), told);
    QCOMPARE(bench.content(path), QByteArray("K4700\r\nAA\r\n"));
    bench.file.CommandRead_Click();
    QCOMPARE(bench.journal.take().mid(1), told);
    QCOMPARE(bench.values(), kWholeValues);
}

void TestSettingsFile::loads() {
    FileBench bench;
    QCOMPARE(bench.load(bench.make(kWholeFile)),
             refreshed("100000", "100ECE1000", "03FF00000F") + QStringList{kLoaded});
    QCOMPARE(bench.values(), kWholeValues);
    QVERIFY(bench.image[21].value.isBlank());
    QCOMPARE(bench.port.sentLines(), QStringList());
}

void TestSettingsFile::roundTrip_data() {
    QTest::addColumn<QString>("value");
    QTest::newRow("blank") << "          ";
    QTest::newRow("unavailable") << "N/A       ";
    QTest::newRow("full") << "FFFFFFFFFF";
    QTest::newRow("one digit") << "0         ";
    QTest::newRow("blanks inside") << "1 2 3     ";
    QTest::newRow("bytes above 127") << QString::fromLatin1("\xE9\xFF\x80       ");
}

void TestSettingsFile::roundTrip() {
    QFETCH(QString, value);
    FileBench bench;
    for (int i = 0; i <= 20; ++i)
        bench.image[i].value = toLatin1(value);
    const QStringList before = bench.values();
    QCOMPARE(bench.save(bench.pathOf("new.bpc")), QStringList{kSaved});
    const SettingsImage::Filling cleared(bench.image);
    QCOMPARE(bench.load(bench.pathOf("new.bpc")).last(), kLoaded);
    QCOMPARE(bench.values(), before);
}

void TestSettingsFile::loadLeavesAvailability() {
    FileBench bench;
    bench.image[3].available = "1";
    bench.image[4].available = "0";
    bench.load(bench.make(kWholeFile));
    QCOMPARE(shown(bench.image[3].available.str()), "1 ");
    QCOMPARE(shown(bench.image[4].available.str()), "0 ");
    QCOMPARE(shown(bench.image[5].available.str()), "  ");
}

// A file alone does not tell which parameters a unit has: writing it is refused before a first read.
void TestSettingsFile::loadThenWrite() {
    FileBench bench;
    bench.load(bench.make(kWholeFile));
    BeltpackWrite write(bench.link, bench.image);
    write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + kNotWritten);
}

void TestSettingsFile::readLoadThenWrite() {
    WriteBench unit;
    unit.readUnit();
    unit.image[12].available = "0";  // unavailable in the file too
    FileBench bench;
    bench.image = unit.image;
    bench.load(bench.make(kWholeFile));
    QStringList expected;
    for (int i = 0; i <= 20; ++i) {
        const std::string value = kWholeValues[i].trimmed().toStdString();
        const ParameterLines& lines = BeltpackBench::kParameters.at(static_cast<std::size_t>(i));
        bench.port.answer(lines.request, lines.head + value + "\r\n");
        if (i != 12)
            expected << kWriteLines[i].left(8) + kWholeValues[i] << kReadBackLines[i];
    }
    BeltpackWrite write(bench.link, bench.image);
    write.CommandWrite_Click();
    QCOMPARE(bench.journal.entries(), kWriteStart + expected + kWritten);
}

void TestSettingsFile::serialNumberShown_data() {
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("number");
    QTest::newRow("ten digits") << QByteArray("00443186A0") << "100000";
    QTest::newRow("highest") << QByteArray("00443FFFFF") << "1048575";
    QTest::newRow("first five do not count") << QByteArray("FFFFF00001") << "1";
    QTest::newRow("leading zeros") << QByteArray("004430000A") << "10";
    QTest::newRow("lower case") << QByteArray("00443000ff") << "255";
    QTest::newRow("five digits") << QByteArray("00443") << "0";
    QTest::newRow("seven digits") << QByteArray("004431F") << "31";
    QTest::newRow("unavailable") << QByteArray("N/A") << "0";
    QTest::newRow("not hexadecimal") << QByteArray("00443xyzzy") << "0";
}

void TestSettingsFile::serialNumberShown() {
    QFETCH(QByteArray, value);
    QFETCH(QString, number);
    FileBench bench;
    bench.load(bench.make("K4700\r\n" + value + "\r\n"));
    QCOMPARE(shown(bench.beltpackId.text()), number);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsFile, quorvex::NoApplication)
#include "test_settings_file.moc"
