#include <sys/stat.h>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include "link/trace_file.h"
#include "tests/support/registry.h"
#include "tests/support/small_disk.h"

using namespace quorvex;

class TestTraceFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void addsToWhatIsThere();
    void noFileToWrite_data();
    void noFileToWrite();
    void fullDisk();

private:
    QString path(const QString& name) const { return folder_.filePath(name); }
    TraceFile traceAt(const QString& name) {
        return TraceFile(path(name).toStdString(),
                         [this](const std::string& text) { told_ << text.c_str(); });
    }
    QByteArrayList written(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QByteArrayList();
    }

    QTemporaryDir folder_;
    QStringList told_;
};

void TestTraceFile::addsToWhatIsThere() {
    for (const char* line : {"first", "second"}) {
        TraceFile trace = traceAt("a.trace");
        trace.line(line);
        QVERIFY(written("a.trace").contains(line));  // before the end
    }
    const QByteArrayList lines = written("a.trace");
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
    QTest::newRow("pipe") << "pipe"
                          << "The trace cannot be written: %1 is no ordinary file.";
    QTest::newRow("folder") << "."
                            << "The trace cannot be written: %1 is no ordinary file.";
    QTest::newRow("nowhere") << "none/a.trace"
                             << "The trace %1 cannot be written: No such file or directory.";
}

void TestTraceFile::noFileToWrite() {
    QFETCH(QString, name);
    QFETCH(QString, told);
    told_.clear();
    ::mkfifo(path("pipe").toLocal8Bit().constData(), 0600);
    TraceFile trace = traceAt(name);
    trace.line("lost");
    QCOMPARE(told_, QStringList(told.arg(path(name))));
}

void TestTraceFile::fullDisk() {
    told_.clear();
    const SmallDisk disk(64);
    TraceFile trace = traceAt("full.trace");
    for (int i = 0; i < 10; ++i)
        trace.line("twenty characters ...");
    QCOMPARE(told_, QStringList("The trace " + path("full.trace") + " ends here: File too large."));
    QVERIFY(written("full.trace").size() > 2);
}

QUORVEX_TEST(TestTraceFile, quorvex::NoApplication)
#include "test_trace_file.moc"
