#include <sys/mount.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "tests/rscreen/bitmap_file.h"
#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"
#include "tests/support/small_disk.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

namespace {

const QByteArray kOlder = "an older file of that name";

bool write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList entriesOf(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// A disk of `kilobytes` at `path`; isThere() is false where the tests may not make one.
class TinyDisk {
public:
    TinyDisk(const QString& path, int kilobytes)
        : path_(path.toLocal8Bit()),
          there_(::mount("tmpfs", path_.constData(), "tmpfs", 0,
                         ("size=" + QByteArray::number(kilobytes) + 'k').constData()) == 0) {}
    ~TinyDisk() {
        if (there_)
            ::umount2(path_.constData(), MNT_DETACH);
    }
    TinyDisk(const TinyDisk&) = delete;
    TinyDisk& operator=(const TinyDisk&) = delete;
    bool isThere() const { return there_; }

private:
    QByteArray path_;
    bool there_;
};

}  // namespace

/// The saved bitmap as a file: what other programs find in it, and what is left when it cannot be written.
class TestDumpFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void holdsThePicture_data();
    void holdsThePicture();
    void blankPicture();
    void replacesAFile();
    void numberedFiles();
    void linkIsFollowed();
    void noSuchFolder();
    void folderOfThatName();
    void folderWithoutRights();
    void fileThatMayBeWrittenThere();
    void noRoom_data();
    void noRoom();
    void fullDisk_data();
    void fullDisk();
    void worksAgainAfterwards();

private:
    QString path(const QString& name) const { return folder_->filePath(name); }
    void demandFailure(const QString& path, bool isFull = false);

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<ScreenPage> page_;
};

void TestDumpFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    page_ = std::make_unique<ScreenPage>();
    page_->toFront();
    page_->show(pictureBytes(3));
    page_->type("screenDump", folder_->path() + '/');
    page_->bench.click("AutoIncrementOption");
    page_->type("autoIncValText", "7");
}

void TestDumpFile::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
}

/// One box with what went wrong, and everything else as before.
void TestDumpFile::demandFailure(const QString& failedPath, bool isFull) {
    const QStringList happened = page_->bench.journal.take();
    QCOMPARE(happened.size(), 1);
    const QString opening = failureEntry("The picture could not be saved.\r\n\r\n" + failedPath + "\r\n");
    QVERIFY2(happened.first().startsWith(opening), qPrintable(happened.first()));
    QVERIFY2(happened.first().size() > opening.size(), "the box does not say what went wrong");
    QVERIFY2(!happened.first().endsWith("Unknown error"), qPrintable(happened.first()));
    const bool toldAsFull =
        happened.first().endsWith("\r\nThe disk did not take the whole picture; it may be full.");
    QVERIFY2(toldAsFull == isFull, qPrintable(happened.first()));
    QCOMPARE(page_->bench.text("autoIncValText"), "7");
    QCOMPARE(page_->picture().image().convertToFormat(QImage::Format_RGB32),
             ScreenPage::drawn(pictureBytes(3)));
}

void TestDumpFile::holdsThePicture_data() {
    QTest::addColumn<QByteArray>("picture");
    QTest::newRow("every byte") << pictureBytes(0);
    QTest::newRow("black") << QByteArray(kFrameBytes, '\xFF');
    QByteArray corner(kFrameBytes, '\0');
    corner[0] = '\x80';
    QTest::newRow("upper left corner") << corner;
}

void TestDumpFile::holdsThePicture() {
    QFETCH(QByteArray, picture);
    page_->show(picture);
    page_->bench.click("CommandScreenDump");
    const BitmapFile file = BitmapFile::read(path("Grab17.bmp"));
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.image.size(), QSize(256, 66));
    QCOMPARE(file.image, ScreenPage::drawn(picture));
    QCOMPARE(entriesOf(folder_->path()), QStringList("Grab17.bmp"));
}

void TestDumpFile::blankPicture() {
    ScreenPage fresh;
    fresh.toFront();
    fresh.type("screenDump", folder_->path() + '/');
    fresh.bench.click("CommandScreenDump");
    const BitmapFile file = BitmapFile::read(path("Grab1.bmp"));
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.image, ScreenPage::drawn({}));
}

void TestDumpFile::replacesAFile() {
    QVERIFY(write(path("Grab17.bmp"), QByteArray(1'000'000, 'x')));
    page_->bench.click("CommandScreenDump");
    const BitmapFile file = BitmapFile::read(path("Grab17.bmp"));
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.image, ScreenPage::drawn(pictureBytes(3)));
    QCOMPARE(entriesOf(folder_->path()), QStringList("Grab17.bmp"));
}

void TestDumpFile::numberedFiles() {
    for (int number = 7; number <= 9; ++number) {
        page_->show(pictureBytes(number));
        page_->bench.click("CommandScreenDump");
    }
    QCOMPARE(entriesOf(folder_->path()), QStringList({"Grab17.bmp", "Grab18.bmp", "Grab19.bmp"}));
    for (int number = 7; number <= 9; ++number) {
        const BitmapFile file = BitmapFile::read(path(QStringLiteral("Grab1%1.bmp").arg(number)));
        QCOMPARE(file.problem, QString());
        QCOMPARE(file.image, ScreenPage::drawn(pictureBytes(number)));
    }
    QCOMPARE(page_->bench.text("autoIncValText"), "10");
}

void TestDumpFile::linkIsFollowed() {
    QVERIFY(write(path("real.bmp"), kOlder));
    QVERIFY(QFile::link(path("real.bmp"), path("Grab17.bmp")));
    page_->bench.click("CommandScreenDump");
    QCOMPARE(BitmapFile::read(path("real.bmp")).image, ScreenPage::drawn(pictureBytes(3)));
    QCOMPARE(QFile::symLinkTarget(path("Grab17.bmp")), path("real.bmp"));
}

void TestDumpFile::noSuchFolder() {
    page_->type("screenDump", path("none/"));
    page_->bench.click("CommandScreenDump");
    demandFailure(path("none/Grab17.bmp"));
    QCOMPARE(entriesOf(folder_->path()), QStringList());
}

void TestDumpFile::folderOfThatName() {
    QVERIFY(QDir(folder_->path()).mkdir("Grab17.bmp"));
    QString box;
    page_->bench.person.beforeOk([&box](QMessageBox& shown) { box = shown.text(); });
    page_->bench.click("CommandScreenDump");
    demandFailure(path("Grab17.bmp"));
    QVERIFY2(box.contains("directory"), qPrintable(box));
    QVERIFY(QFileInfo(path("Grab17.bmp")).isDir());
}

void TestDumpFile::folderWithoutRights() {
    QVERIFY(write(path("Grab17.bmp"), kOlder));
    QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                       QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup));
    {
        const WithoutPrivileges nobody;
        page_->bench.click("CommandScreenDump");
    }
    demandFailure(path("Grab17.bmp"));
    QCOMPARE(contentOf(path("Grab17.bmp")), kOlder);
    QCOMPARE(entriesOf(folder_->path()), QStringList("Grab17.bmp"));
    QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

// The folder takes no new file, but the one of that name may be written.
void TestDumpFile::fileThatMayBeWrittenThere() {
    QVERIFY(write(path("Grab17.bmp"), kOlder));
    constexpr auto kAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::WriteGroup |
                          QFile::ReadOther | QFile::WriteOther;
    QVERIFY(QFile::setPermissions(path("Grab17.bmp"), kAll));
    QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                       QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup));
    {
        const WithoutPrivileges nobody;
        page_->bench.click("CommandScreenDump");
    }
    const BitmapFile file = BitmapFile::read(path("Grab17.bmp"));
    QCOMPARE(file.problem, QString());
    QCOMPARE(file.image, ScreenPage::drawn(pictureBytes(3)));
    QVERIFY(QFile::setPermissions(folder_->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

void TestDumpFile::noRoom_data() {
    QTest::addColumn<int>("room");
    QTest::newRow("none") << 0;
    QTest::newRow("the headers") << 60;
    QTest::newRow("some of it") << 20'000;
    QTest::newRow("most of it") << 50'000;
    QTest::newRow("all but the last byte") << 256 * 66 * 3 + 54 - 1;
}

void TestDumpFile::noRoom() {
    QFETCH(int, room);
    QVERIFY(write(path("Grab17.bmp"), kOlder));
    {
        const SmallDisk limited(static_cast<rlim_t>(room));
        page_->bench.click("CommandScreenDump");
    }
    demandFailure(path("Grab17.bmp"), true);
    QCOMPARE(contentOf(path("Grab17.bmp")), kOlder);
    QCOMPARE(entriesOf(folder_->path()), QStringList("Grab17.bmp"));
}

void TestDumpFile::fullDisk_data() {
    QTest::addColumn<int>("kilobytes");  // 4 of them for the older file
    QTest::newRow("none left") << 4;
    QTest::newRow("a part") << 20;
    QTest::newRow("all but the last piece") << 52;
}

void TestDumpFile::fullDisk() {
    QFETCH(int, kilobytes);
    QVERIFY(QDir(folder_->path()).mkdir("disk"));
    const TinyDisk disk(path("disk"), kilobytes);
    if (!disk.isThere())
        QSKIP("only the superuser can make a disk to fill");
    QVERIFY(write(path("disk/Grab17.bmp"), kOlder));
    page_->type("screenDump", path("disk/"));
    page_->bench.click("CommandScreenDump");
    demandFailure(path("disk/Grab17.bmp"), kilobytes > 4);  // with none left it cannot be made
    QCOMPARE(contentOf(path("disk/Grab17.bmp")), kOlder);
    QCOMPARE(entriesOf(path("disk")), QStringList("Grab17.bmp"));
}

void TestDumpFile::worksAgainAfterwards() {
    page_->type("screenDump", path("none/"));
    page_->bench.click("CommandScreenDump");
    demandFailure(path("none/Grab17.bmp"));
    QVERIFY(QDir(folder_->path()).mkdir("none"));
    page_->bench.click("CommandScreenDump");
    QCOMPARE(BitmapFile::read(path("none/Grab17.bmp")).image, ScreenPage::drawn(pictureBytes(3)));
    QCOMPARE(page_->bench.text("autoIncValText"), "8");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestDumpFile, QApplication)
#include "test_dump_file.moc"
