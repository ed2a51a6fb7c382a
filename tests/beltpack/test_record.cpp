#include <sys/stat.h>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <mutex>
#include <thread>
#include <vector>

#include "beltpack/record.h"
#include "link/qt_text.h"
#include "tests/support/registry.h"
#include "tests/support/small_disk.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

namespace {

const QString kTime = "\\d{4}-\\d\\d-\\d\\dT\\d{6}";
const QString kRecordHeader = "time,port,psn,operation,outcome,differences";

TransferEntry readOf(const char* psn) {
    return {"COM1", "read", "done", psn, "", true, std::string("K4700\r\n") + psn + "\r\n"};
}

QString contentOf(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : "cannot be read";
}

}  // namespace

/// The folder in which reads and writes are kept.
class TestRecord : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void filesAndLines();
    void lines_data();
    void lines();
    void twoInASecond();
    void twoAtOnce();
    void fullDisk();
    void noPlace_data();
    void noPlace();
    void hangs();
    void lockOfAKilledProgram();

private:
    QString path(const QString& name = {}) const { return base_->filePath("record/" + name); }
    /// Keeps what is given in a record at `where`, all of it before this returns.
    void keep(const QString& where, const std::vector<TransferEntry>& entries) {
        Record record(where, [this](const QString& text) { told_ << text; });
        for (const TransferEntry& entry : entries)
            record.keep(entry);
    }
    QStringList journal() const { return contentOf(path("journal.csv")).split('\n'); }
    /// All files below the record, hidden ones, too.
    QStringList files() const {
        QStringList found;
        for (const QFileInfo& folder : QDir(path()).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            for (const QString& name : QDir(folder.filePath()).entryList(QDir::Files | QDir::Hidden))
                found << folder.fileName() + "/" + name;
        }
        return found + QDir(path()).entryList(QDir::Files | QDir::Hidden);
    }

    std::unique_ptr<QTemporaryDir> base_;
    QStringList told_;
};

void TestRecord::init() {
    base_ = std::make_unique<QTemporaryDir>();
    told_.clear();
}

void TestRecord::filesAndLines() {
    const QDateTime before = QDateTime::currentDateTime();
    keep(path(), {readOf("100001"),
                  {"COM1", "write", "done", "100001", "Headset Limit: 30 -> 24", false, "K4700\r\nleft\r\n"},
                  {"COM1", "read", "failed", "", "", true, ""}});
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(told_, QStringList());
    const QStringList names = files();
    QCOMPARE(names.size(), 3);
    QVERIFY(QRegularExpression("^100001/" + kTime + "-as-found\\.bpc$").match(names[0]).hasMatch());
    QVERIFY(QRegularExpression("^100001/" + kTime + "-as-left\\.bpc$").match(names[1]).hasMatch());
    QCOMPARE(names[2], "journal.csv");
    QCOMPARE(contentOf(path(names[0])), "K4700\r\n100001\r\n");
    QCOMPARE(contentOf(path(names[1])), "K4700\r\nleft\r\n");
    const QStringList lines = journal();
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines[0], kRecordHeader);
    QCOMPARE(lines[1], names[0].mid(7, 17) + ",COM1,100001,read,done,");
    QCOMPARE(lines[2], names[1].mid(7, 17) + ",COM1,100001,write,done,Headset Limit: 30 -> 24");
    QVERIFY(QRegularExpression("^" + kTime + ",COM1,,read,failed,$").match(lines[3]).hasMatch());
    QCOMPARE(lines[4], "");
    // Local time.
    const QString form = "yyyy-MM-ddTHHmmss";
    const QString time = lines[1].left(17);
    QVERIFY(before.toString(form) <= time && time <= after.toString(form));
}

void TestRecord::lines_data() {
    QTest::addColumn<QString>("differences");
    QTest::addColumn<QString>("field");
    QTest::newRow("plain") << "Mic Gain: 02 -> 08; Mic Type: ? -> 01"
                           << "Mic Gain: 02 -> 08; Mic Type: ? -> 01";
    QTest::newRow("comma") << "a,b"
                           << "\"a,b\"";
    QTest::newRow("quote") << "a\"b"
                           << "\"a\"\"b\"";
    QTest::newRow("line ends") << "a\r\nb"
                               << "a  b";
    QTest::newRow("beyond ASCII") << "\u00e9"
                                  << "\u00e9";
}

void TestRecord::lines() {
    QFETCH(QString, differences);
    QFETCH(QString, field);
    Record record(path(), [this](const QString& text) { told_ << text; });
    record.keep({"/dev/a,\"b", "write", "done", "7", differences.toStdString(), false, ""});
    record.finish();
    QCOMPARE(journal()[1].mid(17), ",\"/dev/a,\"\"b\",7,write,done," + field);
    QCOMPARE(files(), QStringList("journal.csv"));
}

void TestRecord::twoInASecond() {
    keep(path(), std::vector<TransferEntry>(8, readOf("100001")));
    QCOMPARE(files().size(), 9);
    // In the order of their names, those of a second together.
    const QRegularExpression form("^100001/(" + kTime + ")(_\\d)?-as-found\\.bpc$");
    for (const QString& name : files().mid(0, 8))
        QVERIFY2(form.match(name).hasMatch(), qPrintable(name));
    QVERIFY(files().filter("_2-as-found.bpc").size() >= 1);
}

// As two programs do that share the folder.
void TestRecord::twoAtOnce() {
    constexpr std::size_t kEach = 25;
    std::vector<std::thread> programs;
    for (const char* psn : {"1", "1", "2"})
        programs.emplace_back([this, psn] {
            Record record(path(), [](const QString&) {});
            for (std::size_t i = 0; i < kEach; ++i)
                record.keep(readOf(psn));
        });
    for (std::thread& program : programs)
        program.join();
    const QStringList lines = journal();
    QCOMPARE(lines.size(), 3 * kEach + 2);
    QCOMPARE(lines[0], kRecordHeader);
    const QRegularExpression form("^" + kTime + ",COM1,[12],read,done,$");
    for (const QString& line : lines.mid(1, 3 * kEach))
        QVERIFY2(form.match(line).hasMatch(), qPrintable(line));
    const QStringList names = files();
    QCOMPARE(names.filter(QRegularExpression("^1/")).size(), 2 * kEach);
    QCOMPARE(names.filter(QRegularExpression("^2/")).size(), kEach);
    QCOMPARE(names.size(), 3 * kEach + 1);  // nothing else, no lock, no half file
    for (const QString& name : names.mid(0, 3 * kEach))
        QCOMPARE(contentOf(path(name)), "K4700\r\n" + name.left(1) + "\r\n");
}

// Told once; what there is room for is kept, and all of it when there is room again.
void TestRecord::fullDisk() {
    const std::string tooMuch(5000, 'x');
    TransferEntry large = readOf("100001");
    large.file = tooMuch;
    large.differences = tooMuch;
    Record record(path(), [this](const QString& text) { told_ << text; });
    record.keep(readOf("100001"));
    record.finish();
    const QString before = contentOf(path("journal.csv"));
    told_.clear();
    {
        const SmallDisk disk(1000);
        Record other(path(), [this](const QString& text) { told_ << text; });
        other.keep(large);
        other.keep(large);
        other.finish();
        QCOMPARE(told_, QStringList("The record is not kept. " + path("100001") +
                                    ": The disk did not take the whole file; it may be full."));
        QCOMPARE(files().size(), 2);
        QCOMPARE(contentOf(path("journal.csv")), before);
    }
    keep(path(), {large});
    QCOMPARE(told_.size(), 1);
    QCOMPARE(files().size(), 3);
    QCOMPARE(journal().size(), 4);
    QVERIFY(journal()[2].endsWith(fromUtf8(tooMuch)));
}

void TestRecord::noPlace_data() {
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("told");
    QTest::newRow("a pipe") << "pipe"
                            << "pipe is no folder.";
    QTest::newRow("a device") << "/dev/null"
                              << "/dev/null is no folder.";
    QTest::newRow("below a file") << "file/record"
                                  << "file/record cannot be made.";
    QTest::newRow("closed") << "closed"
                            << "closed may not be written.";
    QTest::newRow("its journal is a pipe") << "piped"
                                           << "piped/journal.csv: It is no ordinary file.";
    QTest::newRow("a PSN is a file") << "taken"
                                     << "taken/100001 is no folder.";
}

void TestRecord::noPlace() {
    QFETCH(QString, where);
    QFETCH(QString, told);
    const QDir base(base_->path());
    for (const char* name : {"closed", "piped", "taken"})
        QVERIFY(base.mkdir(name));
    for (const char* name : {"pipe", "piped/journal.csv"})
        QCOMPARE(::mkfifo(base.filePath(name).toLocal8Bit().constData(), 0666), 0);
    for (const char* name : {"file", "taken/100001"})
        QVERIFY(QFile(base.filePath(name)).open(QIODevice::WriteOnly));
    for (const char* name : {"", "piped", "taken"})
        QVERIFY(QFile::setPermissions(base.filePath(name), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(base.filePath("closed"), QFile::Permissions(0x5555)));
    const WithoutPrivileges asAnyone;
    keep(base.absoluteFilePath(where), {readOf("100001"), readOf("100001")});
    QCOMPARE(told_, QStringList("The record is not kept. " + base.absoluteFilePath(told)));
}

// A disk that does not answer holds up neither who keeps something nor, for long, the end.
void TestRecord::hangs() {
    constexpr int kMostMs = 5000;
    QVERIFY(QDir().mkpath(path()));
    QLockFile held(path("record.lock"));
    QVERIFY(held.tryLock());
    QElapsedTimer since;
    since.start();
    {
        Record record(path(), [this](const QString& text) { told_ << text; });
        record.keep(readOf("1"));
        QVERIFY(since.elapsed() < 1000);
        record.finish();
    }  // does not wait once more
    QVERIFY(since.elapsed() < kMostMs);
    QCOMPARE(told_, QStringList("The record is not kept. The disk took too long."));
    held.unlock();
    QTRY_COMPARE(files().size(), 2);  // what it had begun ends, before the folder goes
}

void TestRecord::lockOfAKilledProgram() {
    QVERIFY(QDir().mkpath(path()));
    QFile lock(path("record.lock"));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.write("2147483646\nquorvex-tool\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    lock.close();
    keep(path(), {readOf("1")});
    QCOMPARE(told_, QStringList());
    QCOMPARE(files().size(), 2);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestRecord, quorvex::NoApplication)
#include "test_record.moc"
