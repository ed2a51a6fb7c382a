#include <QTest>

#include "identity/system_id.h"
#include "tests/beltpack/file_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

constexpr qsizetype kMegabyte = 1'000'000;

/// `values`, each in its ten characters, and "0" for the records that the file does not reach.
QStringList all(const QStringList& values) {
    QStringList padded;
    for (int i = 0; i <= 20; ++i)
        padded << (i < values.size() ? values[i] : QString("0")).leftJustified(10);
    return padded;
}

QByteArray numbered(const QByteArray& lineEnd) {
    QByteArray content = "K4700";
    for (int i = 0; i <= 20; ++i)
        content += lineEnd + "A" + QByteArray::number(i);
    return content + lineEnd;
}

QStringList numberedValues() {
    QStringList values;
    for (int i = 0; i <= 20; ++i)
        values << "A" + QString::number(i);
    return values;
}

}  // namespace

/// Files as people, editors and other programs leave them.
class TestSettingsFileReader : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void rejects_data();
    void rejects();
    void rejectedFileIsClosed();
    void badSystemId();

private:
    static void rowsOfLines();
    static void rowsOfItems();
};

void TestSettingsFileReader::reads_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("values");
    rowsOfLines();
    rowsOfItems();
}

void TestSettingsFileReader::rowsOfLines() {
    const auto row = [](const char* name, const QByteArray& content, const QStringList& values) {
        QTest::newRow(name) << content << values;
    };
    row("signature alone", "K4700\r\n", {});
    row("signature without line end", "K4700", {});
    row("line feeds alone", numbered("\n"), numberedValues());
    row("carriage returns alone", numbered("\r"), numberedValues());
    row("last line without line end", numbered("\r\n").chopped(2), numberedValues());
    row("more than 22 lines", numbered("\r\n") + "B1\r\nB2\r\n", numberedValues());
    row("some lines missing", "K4700\r\nA0\r\nA1\r\n", {"A0", "A1"});
    row("half a line at the end", "K4700\r\nA0\r\nA", {"A0", "A"});
    row("empty lines", "K4700\r\n\r\n\r\nA2\r\n", {"", "", "A2"});
    row("empty lines by line feeds", "K4700\n\n\nA2\n", {"", "", "A2"});
    row("blank line at the end", "K4700\r\nA0\r\n          ", {"A0", ""});
    row("longer than ten", "K4700\r\n0123456789ABCDEF\r\nA1\r\n", {"0123456789", "A1"});
    row("exactly ten", "K4700\r\n0123456789\r\nA1\r\n", {"0123456789", "A1"});
    row("a million digits in one line", "K4700\r\n" + QByteArray(kMegabyte, 'A') + "\r\nA1\r\n",
        {"AAAAAAAAAA", "A1"});
    row("a million without line end", "K4700\r\n" + QByteArray(kMegabyte, 'A'), {"AAAAAAAAAA"});
    row("a quarter of a million lines", "K4700\r\n" + QByteArray("A0\r\n").repeated(250'000),
        QStringList(21, "A0"));
}

void TestSettingsFileReader::rowsOfItems() {
    const auto row = [](const char* name, const QByteArray& content, const QStringList& values) {
        QTest::newRow(name) << content << values;
    };
    row("blanks before the signature", "   K4700\r\nA0\r\n", {"A0"});
    row("blanks before a value", "K4700\r\n   A0\r\n", {"A0"});
    row("blanks inside a value", "K4700\r\nA 0 1\r\n", {"A 0 1"});
    row("blanks behind a value", "K4700\r\nA0     \r\nA1\r\n", {"A0", "A1"});
    row("comma in a value", "K4700\r\nAB,CD\r\nA2\r\n", {"AB", "CD", "A2"});
    row("all in one line", "K4700,A0,A1,A2", {"A0", "A1", "A2"});
    row("two commas", "K4700\r\nA0,,A2\r\n", {"A0", "", "A2"});
    row("comma at the line's end", "K4700\r\nA0,\r\nA2\r\n", {"A0", "", "A2"});
    row("tab before a value", "K4700\r\n\tA0\r\n", {"\tA0"});
    row("characters behind quotes", "K4700\r\n\"A0\"xyz,A1\r\n", {"A0", "A1"});
    row("blanks behind a comma", "K4700,  A0,  A1", {"A0", "A1"});
    row("quoted signature", "\"K4700\"\r\nA0\r\n", {"A0"});
    row("blanks before a quote", "K4700\r\n  \"A0\"\r\n", {"A0"});
    row("comma between quotes", "K4700\r\n\"A,0\"\r\nA1\r\n", {"A,0", "A1"});
    row("blanks between quotes", "K4700\r\n\"  A0\"\r\n", {"  A0"});
    row("comma behind quotes", "K4700\r\n\"A0\",\"A1\"\r\nA2\r\n", {"A0", "A1", "A2"});
    row("nothing between quotes", "K4700\r\n\"\"\r\nA1\r\n", {"", "A1"});
    row("signature with a quote that is not closed", "\"K4700\r\nA0\r\n", {"A0"});
    row("value with a quote that is not closed", "K4700\r\n\"A,0\r\nA1\r\n", {"A,0", "A1"});
    row("quote alone", "K4700\r\n\"\r\nA1\r\n", {"", "A1"});
    row("quote inside a value", "K4700\r\nA\"0\r\nA1\r\n", {"A\"0", "A1"});
    row("more than ten between quotes", "K4700\r\n\"0123456789AB\"\r\nA1\r\n", {"0123456789", "A1"});
    row("NUL bytes", QByteArray("K4700\r\nA\0\0B\r\nA1\r\n", 17), {QString::fromLatin1("A\0\0B", 4), "A1"});
    row("bytes above 127", "K4700\r\n\xE9\xFF\x80\r\n", {QString::fromLatin1("\xE9\xFF\x80")});
    row("value of none", "K4700\r\nN/A\r\n", {"N/A"});
}

void TestSettingsFileReader::reads() {
    QFETCH(QByteArray, content);
    QFETCH(QStringList, values);
    FileBench bench;
    const QStringList happened = bench.load(bench.make(content));
    QCOMPARE(bench.values(), all(values));
    QCOMPARE(bench.journal.entriesOf("box"), QStringList());
    const QStringList shownValues = all(values);
    QCOMPARE(happened,
             refreshed(shown(bench.image.psnText()), shownValues[2], shownValues[13]) + QStringList{kLoaded});
}

void TestSettingsFileReader::rejects_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("lower case") << QByteArray("k4700\r\nA0\r\n");
    QTest::newRow("another number") << QByteArray("K4701\r\nA0\r\n");
    QTest::newRow("too short") << QByteArray("K470\r\nA0\r\n");
    QTest::newRow("too long") << QByteArray("K47000\r\nA0\r\n");
    QTest::newRow("blanks behind it") << QByteArray("K4700  \r\nA0\r\n");
    QTest::newRow("tab before it") << QByteArray("\tK4700\r\nA0\r\n");
    QTest::newRow("blank inside") << QByteArray("K 4700\r\nA0\r\n");
    QTest::newRow("empty first line") << QByteArray("\r\nK4700\r\n");
    QTest::newRow("comma first") << QByteArray(",K4700\r\n");
    QTest::newRow("blanks alone") << QByteArray("     ");
    QTest::newRow("line end alone") << QByteArray("\r\n");
    QTest::newRow("one NUL") << QByteArray("\0", 1);
    QTest::newRow("NUL before it") << QByteArray("\0K4700\r\n", 8);
    QTest::newRow("NUL behind it") << QByteArray("K4700\0\r\n", 8);
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBFK4700\r\nA0\r\n");
    QTest::newRow("two bytes a character") << QByteArray("K\0004\0007\0000\0000\000\r\000\n", 14);
    QTest::newRow("bytes above 127") << QByteArray(1000, '\xFE');
    QTest::newRow("a million bytes") << QByteArray(kMegabyte, 'K');
    QTest::newRow("a million NULs") << QByteArray(kMegabyte, '\0');
    QTest::newRow("a million blanks") << QByteArray(kMegabyte, ' ');
    QTest::newRow("a million behind a quote") << '"' + QByteArray(kMegabyte, ',');
}

void TestSettingsFileReader::rejects() {
    QFETCH(QByteArray, content);
    FileBench bench;
    bench.load(bench.make(kWholeFile, "whole.bpc"));
    const QString path = bench.make(content);
    // The last status stands, although the file was refused: the box has told.
    QCOMPARE(bench.load(path),
             QStringList({"box critical: " + path + "\r\n is not a valid QuorvexCfg file. []",
                          "status black: Invalid file specified.", kLoaded}));
    QCOMPARE(bench.values(), kWholeValues);
}

void TestSettingsFileReader::rejectedFileIsClosed() {
    FileBench bench;
    bench.load(bench.make("no settings at all"));
    QCOMPARE(bench.load(bench.make(kWholeFile)).last(), kLoaded);
    QCOMPARE(bench.values(), kWholeValues);
}

// The System ID of a file that cannot be shown is refused, the rest of the file is not.
void TestSettingsFileReader::badSystemId() {
    FileBench bench;
    FakeField parkB{bench.journal, "TextParkB"}, eic{bench.journal, "TextEic"}, fpn{bench.journal, "TextFpn"},
        fps{bench.journal, "TextFps"};
    SystemId systemId(bench.link, bench.image, {parkB, eic, fpn, fps});
    bench.neighbours.onShowSystemId = [&] {
        bench.neighbours.systemIdProblem = systemId.showParkB(bench.image[2].value.str());
    };
    const QStringList happened = bench.load(bench.make("K4700\r\n00443186A0\r\n1F\r\n1WXYZ56A27\r\n"));
    QStringList boxes;
    for (const QString& entry : happened) {
        if (entry.startsWith("box"))
            boxes << entry;
    }
    QCOMPARE(boxes.size(), 1);
    QVERIFY2(boxes.first().startsWith("box critical: ") && boxes.first().contains("1WXYZ56A27"),
             qPrintable(boxes.first()));
    QCOMPARE(happened.last(), boxes.first());  // once the file has been read
    QCOMPARE(happened.at(happened.size() - 2), kLoaded);
    QVERIFY(happened.contains("settings buttons enabled"));
    QCOMPARE(shown(parkB.text() + eic.text() + fpn.text() + fps.text()), "");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsFileReader, quorvex::NoApplication)
#include "test_settings_file_reader.moc"
