#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <QElapsedTimer>
#include <QTest>
#include <filesystem>

#include "link/runtime_fault.h"
#include "tests/beltpack/file_bench.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"
#include "tests/support/small_disk.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

namespace {

/// The descriptor by which this program has a file open.
int descriptorOf(const QString& path) {
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;  // as that of the folder itself
        if (std::filesystem::read_symlink(entry, gone) == path.toStdString())
            return std::stoi(entry.path().filename());
    }
    return -1;
}

}  // namespace

/// Files that cannot be read or written. A fault in the middle leaves the file open, and nothing can be
/// loaded or saved from then on.
class TestSettingsFileFaults : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cannotBeOpened_data();
    void cannotBeOpened();
    void tooLarge_data();
    void tooLarge();
    void noRights();
    void emptyFile();
    void unreadable();
    void nothingLeftToRead();
    void breaksOffWhileRead();
    void failsToClose();
    void faultWhileShowing();
    void diskFull();
    void diskFillsUp_data();
    void diskFillsUp();

private:
    static void expectStaysOpen(FileBench& bench);
    static void expectIsClosed(FileBench& bench);
};

void TestSettingsFileFaults::expectStaysOpen(FileBench& bench) {
    const QStringList values = bench.values();
    const QString whole = bench.make(kWholeFile, "whole.bpc");
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(bench.load(whole), kNotLoaded);
        QCOMPARE(bench.save(whole), kNotSaved);
        QCOMPARE(bench.save(bench.pathOf("new.bpc")), kNotSaved);
    }
    QCOMPARE(bench.values(), values);
    QCOMPARE(bench.content(whole), kWholeFile);
    QVERIFY(!QFile::exists(bench.pathOf("new.bpc")));
}

void TestSettingsFileFaults::expectIsClosed(FileBench& bench) {
    QCOMPARE(bench.load(bench.make(kWholeFile, "whole.bpc")).last(), kLoaded);
    QCOMPARE(bench.values(), kWholeValues);
    QCOMPARE(bench.save(bench.pathOf("new.bpc")), QStringList{kSaved});
}

void TestSettingsFileFaults::cannotBeOpened_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("canBeCreated");
    QTest::newRow("missing") << "missing.bpc" << true;
    QTest::newRow("in a missing folder") << "missing/unit.bpc" << false;
    QTest::newRow("below a file") << "file/unit.bpc" << false;
    QTest::newRow("a folder") << "folder" << false;
    QTest::newRow("the folder itself") << "" << false;
    QTest::newRow("a pipe") << "pipe" << false;
    QTest::newRow("a name too long") << QString(300, 'x') << false;
    QTest::newRow("a link to itself") << "link" << false;
}

void TestSettingsFileFaults::cannotBeOpened() {
    QFETCH(QString, name);
    QFETCH(bool, canBeCreated);
    FileBench bench;
    bench.make("", "file");
    QVERIFY(QDir(bench.folder.path()).mkdir("folder"));
    QCOMPARE(mkfifo(bench.pathOf("pipe").toLocal8Bit().constData(), 0600), 0);
    QCOMPARE(symlink("link", bench.pathOf("link").toLocal8Bit().constData()), 0);
    QCOMPARE(bench.load(bench.pathOf(name)), kNotLoaded);
    QCOMPARE(bench.values(), QStringList(21, QString(10, ' ')));
    QCOMPARE(bench.save(bench.pathOf(name)), canBeCreated ? QStringList{kSaved} : kNotSaved);
    expectIsClosed(bench);
}

void TestSettingsFileFaults::tooLarge_data() {
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("loads");
    constexpr qint64 kMost = 1 << 20;
    QTest::newRow("as large as may be") << kMost << true;
    QTest::newRow("one too many") << kMost + 1 << false;
    QTest::newRow("4 GB of nothing") << (qint64{4} << 30) << false;
}

// No file of settings is larger, and the window must not stand still for one that is none.
void TestSettingsFileFaults::tooLarge() {
    QFETCH(qint64, size);
    QFETCH(bool, loads);
    FileBench bench;
    const QString path = bench.make(kWholeFile);
    QVERIFY(QFile::resize(path, size));  // sparse: the rest is NUL bytes
    QElapsedTimer timer;
    timer.start();
    const QStringList happened = bench.load(path);
    QVERIFY(timer.elapsed() < 1000);
    if (loads)
        QCOMPARE(happened.last(), kLoaded);
    else
        QCOMPARE(happened, kNotLoaded);
    QCOMPARE(bench.values(), loads ? kWholeValues : QStringList(21, QString(10, ' ')));
}

void TestSettingsFileFaults::noRights() {
    FileBench bench;
    const QString path = bench.make(kWholeFile);
    QVERIFY(QFile::setPermissions(bench.folder.path(),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ExeGroup));
    QVERIFY(QFile::setPermissions(path, {}));
    {
        const WithoutPrivileges nobody;
        QCOMPARE(bench.load(path), kNotLoaded);
        QCOMPARE(bench.save(path), kNotSaved);
    }
    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup));
    {
        const WithoutPrivileges nobody;
        QCOMPARE(bench.save(path), kNotSaved);
        QVERIFY(bench.load(path) != kNotLoaded);
    }
    QCOMPARE(bench.content(path), kWholeFile);
    expectIsClosed(bench);
}

void TestSettingsFileFaults::emptyFile() {
    FileBench bench;
    QCOMPARE(bench.load(bench.make("")), kNotLoaded);
    QCOMPARE(bench.values(), QStringList(21, QString(10, ' ')));
    expectStaysOpen(bench);
}

// Opens well, and fails at its first byte, as a memory stick does that was just pulled.
void TestSettingsFileFaults::unreadable() {
    if (!QFile::exists("/proc/self/mem"))
        QSKIP("no file here that opens and cannot be read");
    FileBench bench;
    QCOMPARE(bench.load("/proc/self/mem"), kNotLoaded);
    expectStaysOpen(bench);
}

void TestSettingsFileFaults::nothingLeftToRead() {
    FileBench bench;
    FileNumberOne file;
    file.openForInput(bench.make("one, \"line\"\r\nitem\r\n").toStdString());
    QCOMPARE(shown(file.readLine()), "one, \"line\"");
    QCOMPARE(shown(file.readItem()), "item");
    QVERIFY_THROWS_EXCEPTION(RuntimeFault, file.readLine());
    QVERIFY_THROWS_EXCEPTION(RuntimeFault, file.readItem());
}

// The end of what can be read is not the end of the file.
void TestSettingsFileFaults::breaksOffWhileRead() {
    FileBench bench;
    const QString path = bench.make(QByteArray("0123456789\r\n").repeated(10'000));
    FileNumberOne file;
    file.openForInput(path.toStdString());
    QCOMPARE(shown(file.readItem()), "0123456789");
    const int writeOnly = ::open("/dev/null", O_WRONLY);
    QVERIFY(::dup2(writeOnly, descriptorOf(path)) >= 0);
    ::close(writeOnly);
    int items = 1;
    const auto readOn = [&] {
        for (; !file.atEnd(); ++items)
            file.readItem();
    };
    QVERIFY_THROWS_EXCEPTION(RuntimeFault, readOn());
    QVERIFY(items < 10'000);
    QVERIFY_THROWS_EXCEPTION(RuntimeFault, file.openForInput(path.toStdString()));  // still open
}

// A network disk may tell as late as that.
void TestSettingsFileFaults::failsToClose() {
    FileBench bench;
    const QString path = bench.make(kWholeFile);
    bench.neighbours.onShowSystemId = [&] { QCOMPARE(::close(descriptorOf(path)), 0); };
    QStringList happened = bench.load(path);
    QCOMPARE(happened.mid(happened.size() - 2), kNotLoaded);
    QVERIFY(!happened.contains(kLoaded));
    bench.neighbours.onShowSystemId = {};
    expectIsClosed(bench);
}

void TestSettingsFileFaults::faultWhileShowing() {
    FileBench bench;
    bench.neighbours.onShowSystemId = [] { throw RuntimeFault::overflow(); };
    const QStringList happened = bench.load(bench.make(kWholeFile));
    QCOMPARE(happened, refreshed("100000", "100ECE1000", "").mid(0, 6) + kNotLoaded);
    QCOMPARE(bench.values(), kWholeValues);  // what was read is kept
    expectStaysOpen(bench);
}

void TestSettingsFileFaults::diskFull() {
    if (!QFile::exists("/dev/full"))
        QSKIP("no full disk here");
    FileBench bench;
    QCOMPARE(bench.save("/dev/full"), kNotSaved);
    expectStaysOpen(bench);
}

void TestSettingsFileFaults::diskFillsUp_data() {
    QTest::addColumn<int>("room");
    QTest::newRow("none") << 0;
    QTest::newRow("inside the signature") << 3;
    QTest::newRow("behind the signature") << 7;
    QTest::newRow("half-way") << 100;
    QTest::newRow("all but the last byte") << static_cast<int>(kWholeFile.size()) - 1;
}

void TestSettingsFileFaults::diskFillsUp() {
    QFETCH(int, room);
    FileBench bench;
    for (int i = 0; i <= 20; ++i)
        bench.image[i].value = kWholeValues[i].toStdString();
    QStringList happened;
    {
        const SmallDisk disk(static_cast<rlim_t>(room));
        happened = bench.save(bench.pathOf("cut.bpc"));
    }
    QCOMPARE(happened, kNotSaved);
    // What was written stays there.
    QCOMPARE(bench.content(bench.pathOf("cut.bpc")), kWholeFile.left(room));
    expectStaysOpen(bench);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSettingsFileFaults, quorvex::NoApplication)
#include "test_settings_file_faults.moc"
