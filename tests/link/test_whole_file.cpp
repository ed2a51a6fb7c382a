#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "link/whole_file.h"
#include "tests/support/registry.h"
#include "tests/support/small_disk.h"
#include "tests/support/without_privileges.h"

namespace quorvex {

namespace {
const QByteArray kHead = "number,text\n";
const QString kTooSmall = "The disk did not take the whole list; it may be full.";
}  // namespace

/// Lines that are written whole or not at all.
class TestWholeFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void appends();
    void appendsAfterHalfALine();
    void appendsNothingToAFullDisk();
    void notToBeAppendedTo_data();
    void notToBeAppendedTo();

private:
    QString path(const QString& name) const { return folder_->filePath(name); }
    static QByteArray content(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    QString append(const QByteArray& line) const { return appendLine(path("list"), kHead, line, "list"); }

    std::unique_ptr<QTemporaryDir> folder_;
};

void TestWholeFile::init() {
    folder_ = std::make_unique<QTemporaryDir>();
}

void TestWholeFile::appends() {
    QCOMPARE(append("1,a\n"), "");
    QCOMPARE(content(path("list")), kHead + "1,a\n");
    QCOMPARE(append("2,b\n"), "");
    QCOMPARE(content(path("list")), kHead + "1,a\n2,b\n");
}

void TestWholeFile::appendsAfterHalfALine() {
    QFile half(path("list"));
    QVERIFY(half.open(QIODevice::WriteOnly));
    half.write("number,text\n1,");
    half.close();
    QCOMPARE(append("2,b\n"), "");
    QCOMPARE(content(path("list")), kHead + "1,\n2,b\n");
}

void TestWholeFile::appendsNothingToAFullDisk() {
    QCOMPARE(append("1," + QByteArray(1000, 'a') + "\n"), "");
    const QByteArray before = content(path("list"));
    {
        const SmallDisk disk(rlim_t(before.size()) + 3);
        QCOMPARE(append(QByteArray(5000, 'x') + "\n"), kTooSmall);
        QCOMPARE(content(path("list")), before);
    }
    QCOMPARE(append("2,b\n"), "");
    QCOMPARE(content(path("list")), before + "2,b\n");
}

void TestWholeFile::notToBeAppendedTo_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    QTest::newRow("pipe") << "pipe"
                          << "It is no ordinary file.";
    QTest::newRow("folder") << "."
                            << "It is no ordinary file.";
    QTest::newRow("no folder") << "none/list"
                               << "No such file or directory";
    QTest::newRow("no rights") << "closed/list"
                               << "Permission denied";
    QTest::newRow("read-only") << "readonly"
                               << "Permission denied";
}

void TestWholeFile::notToBeAppendedTo() {
    QFETCH(QString, name);
    QFETCH(QString, told);
    QCOMPARE(::mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    QVERIFY(QDir(folder_->path()).mkdir("closed"));
    QFile readOnly(path("readonly"));
    QVERIFY(readOnly.open(QIODevice::WriteOnly));
    readOnly.close();
    QVERIFY(QFile::setPermissions(folder_->path(), QFile::Permissions(0x7777)));
    QVERIFY(QFile::setPermissions(path("closed"), QFile::Permissions(0x5555)));
    QVERIFY(QFile::setPermissions(path("readonly"), QFile::Permissions(0x4444)));
    const WithoutPrivileges asAnyone;
    QCOMPARE(appendLine(path(name), kHead, "1,a\n", "list"), told);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestWholeFile, quorvex::NoApplication)
#include "test_whole_file.moc"
