#include "beltpack/settings_check.h"

#include <QTemporaryDir>
#include <QTest>

#include "link/qt_text.h"
#include "link/runtime_fault.h"
#include "tests/beltpack/file_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

namespace {

/// A file as it is written: the signature and 21 values.
const QStringList kSoundLines{"K4700",      "00443186A0", "1F        ", "100ECE1000", "30        ",
                              "00        ", "01        ", "02        ", "02        ", "03        ",
                              "00        ", "1F        ", "01        ", "N/A       ", "03FF000000",
                              "00        ", "02        ", "00        ", "01        ", "00        ",
                              "00        ", "02        "};

QByteArray fileOf(const QStringList& lines, const QString& lineEnd = "\r\n") {
    return (lines.join(lineEnd) + lineEnd).toLatin1();
}

QString found(const QString& path) {
    QStringList texts;
    for (const SettingsFileDefect& defect : checkSettingsFile(path.toStdString()))
        texts << QString("%1%2 %3")
                     .arg(defect.line)
                     .arg(defect.isRange ? " (range)" : "", fromUtf8(defect.text));
    return texts.join('\n');
}

}  // namespace

/// What is wrong with a settings file, by its lines.
class TestSettingsCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sound_data();
    void sound();
    void line_data();
    void line();
    void file_data();
    void file();
    void severalAtOnce();
    void unreadable();

private:
    FileBench bench_;
};

void TestSettingsCheck::sound_data() {
    QTest::addColumn<QByteArray>("content");
    QStringList bare = kSoundLines;
    for (QString& each : bare)
        each = each.trimmed();
    QTest::newRow("as written") << fileOf(kSoundLines);
    QTest::newRow("other line ends") << fileOf(kSoundLines, "\n");
    QTest::newRow("no line end at the end") << fileOf(kSoundLines).chopped(2);
    QTest::newRow("no blanks at the ends") << fileOf(bare);
    QTest::newRow("lower case") << fileOf(kSoundLines).replace("100ECE1000", "100ece1000");
}

void TestSettingsCheck::sound() {
    QFETCH(QByteArray, content);
    QCOMPARE(found(bench_.make(content)), QString());
}

void TestSettingsCheck::line_data() {
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("defect");
    const auto row = [](const char* name, int number, const char* text, const char* defect) {
        QTest::newRow(name) << number << QString::fromLatin1(text) << QString("%1%2").arg(number).arg(defect);
    };
    row("no digit", 5, "3G        ", " Headset Limit: \"3G\" is not hexadecimal");
    row("too short", 4, "100ECE10  ", " System Id: \"100ECE10\" has 8 digits in place of 10");
    row("too long", 5, "300       ", " Headset Limit: \"300\" has 3 digits in place of 2");
    row("blank", 9, "          ", " Headset Mic Gain: has no value");
    row("empty", 9, "", " Headset Mic Gain: has no value");
    row("blank in front", 5, " 30       ", " Headset Limit: \" 30\" is not hexadecimal");
    row("comma", 5, "30,00     ", " Headset Limit: \"30,00\" is not hexadecimal");
    row("quotes", 5, "\"30\"      ", " Headset Limit: \"\"30\"\" is not hexadecimal");
    row("not available, in lower case", 14, "n/a", " PTT Switch: \"n/a\" is not hexadecimal");
    row("alarm", 7, "02        ", " (range) Low Battery Alarm: \"02\" is out of its range, 00 to 01");
    row("microphone", 8, "03        ", " (range) Headset Mic Type: \"03\" is out of its range, 00 to 02");
    row("regulation", 17, "FF        ", " (range) FCC Enabled: \"FF\" is out of its range, 00 to 02");
    row("revision", 22, "0A        ", " (range) Feature Map: \"0A\" is out of its range, 00 to 02");
    row("signature", 1, "k4700", " \"k4700\" is not the signature \"K4700\"");
    row("blank before the signature", 1, " K4700", " \" K4700\" is not the signature \"K4700\"");
    row("byte that is no text", 5, "3\xE9", " Headset Limit: \"3\xC3\xA9\" is not hexadecimal");
}

void TestSettingsCheck::line() {
    QFETCH(int, number);
    QFETCH(QString, text);
    QFETCH(QString, defect);
    QStringList lines = kSoundLines;
    lines[number - 1] = text;
    QCOMPARE(found(bench_.make(fileOf(lines))), defect);
}

void TestSettingsCheck::file_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("defect");
    QTest::newRow("empty") << QByteArray() << "1 the file is empty";
    QTest::newRow("signature alone") << fileOf({"K4700"})
                                     << "2 Beltpack PSN/ID: the file ends here, 21 of 21 values are missing";
    QTest::newRow("one missing") << fileOf(kSoundLines.mid(0, 21))
                                 << "22 Feature Map: the file ends here, 1 of 21 values are missing";
    QTest::newRow("one more") << fileOf(QStringList(kSoundLines) << "00") << "23 more than 21 values";
}

void TestSettingsCheck::file() {
    QFETCH(QByteArray, content);
    QFETCH(QString, defect);
    QCOMPARE(found(bench_.make(content)), defect);
}

void TestSettingsCheck::severalAtOnce() {
    QStringList lines = kSoundLines.mid(0, 10);
    lines[4] = "x";
    lines[7] = "07";
    QCOMPARE(found(bench_.make(fileOf(lines))),
             QString("5 Headset Limit: \"x\" is not hexadecimal\n"
                     "8 (range) Headset Mic Type: \"07\" is out of its range, 00 to 02\n"
                     "11 Sidetone Volume: the file ends here, 12 of 21 values are missing"));
}

void TestSettingsCheck::unreadable() {
    QVERIFY_EXCEPTION_THROWN(found(bench_.pathOf("none.bpc")), RuntimeFault);
    QVERIFY_EXCEPTION_THROWN(found(bench_.pathOf(".")), RuntimeFault);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsCheck, quorvex::NoApplication)
#include "test_settings_check.moc"
