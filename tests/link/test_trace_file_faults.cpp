#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "link/trace_file.h"
#include "tests/support/registry.h"
#include "tests/support/small_disk.h"

namespace quorvex {

/// Traces that a pipe or a full disk does not take.
class TestTraceFileFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { told_.clear(); }
    void pipe();
    void fullDisk();

private:
    QString path(const QString& name) const { return folder_.filePath(name); }
    TraceFile traceAt(const QString& name) {
        return TraceFile(path(name).toStdString(),
                         [this](const std::string& text) { told_ << QString::fromStdString(text); });
    }

    QTemporaryDir folder_;
    QStringList told_;
};

void TestTraceFileFaults::pipe() {
    QCOMPARE(::mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    TraceFile trace = traceAt("pipe");
    trace.line("lost");
    QCOMPARE(told_, QStringList("The trace cannot be written: " + path("pipe") + " is no ordinary file."));
}

void TestTraceFileFaults::fullDisk() {
    const SmallDisk disk(64);
    TraceFile trace = traceAt("full.trace");
    for (int i = 0; i < 10; ++i)
        trace.line("twenty characters ...");
    QCOMPARE(told_, QStringList("The trace " + path("full.trace") + " ends here: File too large."));
    QFile file(path("full.trace"));
    QVERIFY(file.open(QIODevice::ReadOnly) && file.readAll().count('\n') > 1);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestTraceFileFaults, quorvex::NoApplication)
#include "test_trace_file_faults.moc"
