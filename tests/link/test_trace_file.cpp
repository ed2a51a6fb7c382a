#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "link/trace_file.h"
#include "tests/support/registry.h"

using namespace quorvex;

class TestTraceFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addsToWhatIsThere_data();
    void addsToWhatIsThere();
    void noFileToWrite_data();
    void noFileToWrite();

private:
    QString path(const QString& name) const { return folder_.filePath(name); }
    TraceFile traceAt(const QString& name) {
        return TraceFile(path(name).toStdString(),
                         [this](const std::string& text) { told_ << QString::fromStdString(text); });
    }
    QByteArrayList written(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
    }

    QTemporaryDir folder_;
    QStringList told_;
};

void TestTraceFile::addsToWhatIsThere_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "a.trace";
    QTest::newRow("letters of other alphabets") << QStringLiteral(u"Me\u00dfprotokoll \u6e2c.trace");
}

void TestTraceFile::addsToWhatIsThere() {
    QFETCH(QString, name);
    for (const char* line : {"first", "second"}) {
        TraceFile trace = traceAt(name);
        trace.line(line);
        QVERIFY(written(name).contains(line));  // before the end
    }
    const QByteArrayList lines = written(name);
    QCOMPARE(lines.size(), 5);
    static const QRegularExpression date("^# trace of \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$");
    QVERIFY(date.match(lines[0]).hasMatch());
    QCOMPARE(lines[1], "first");
    QVERIFY(date.match(lines[2]).hasMatch());
    QCOMPARE(lines[3], "second");
    QCOMPARE(told_, QStringList());
}

void TestTraceFile::noFileToWrite_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    QTest::newRow("folder") << "."
                            << "The trace cannot be written: %1 is no ordinary file.";
    QTest::newRow("nowhere") << "none/a.trace"
                             << "The trace %1 cannot be written: No such file or directory.";
}

void TestTraceFile::noFileToWrite() {
    QFETCH(QString, name);
    QFETCH(QString, told);
    told_.clear();
    TraceFile trace = traceAt(name);
    trace.line("lost");
    QCOMPARE(told_, QStringList(told.arg(path(name))));
}

QUORVEX_TEST(TestTraceFile, quorvex::NoApplication)
#include "test_trace_file.moc"
