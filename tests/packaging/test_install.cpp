#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "beltpack/settings_file.h"
#include "tests/packaging/file_text.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kLimitMs = 60'000;

/// What a program prints; nothing unless it exits with 0.
QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool passed = process.waitForFinished(kLimitMs) && process.exitStatus() == QProcess::NormalExit &&
                        process.exitCode() == 0;
    return passed ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

/// What is in one list and not in the other, a line each.
QString without(QStringList list, const QStringList& other) {
    list.removeIf([&](const QString& each) { return other.contains(each); });
    return list.join('\n');
}

/// A settings file, its lines ended by `end`.
QByteArray settings(const char* end) {
    QByteArray file;
    for (const std::string& line : settingsLines(SettingsImage()))
        file += line.c_str() + QByteArray(end);
    return file;
}

}  // namespace

/// What "cmake --install" brings.
class TestInstall : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void files();
    void programs();
    void release();
    void typeOfAFile_data();
    void typeOfAFile();

private:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QTemporaryDir folder_;
};

void TestInstall::initTestCase() {
    const QString told =
        outputOf(QUORVEX_CMAKE, {"--install", QUORVEX_BUILD_FOLDER, "--prefix", folder_.path()});
    QVERIFY(told.contains("Installing"));
    // Before this process asks for the type of anything.
    qputenv("XDG_DATA_DIRS", path("share").toLocal8Bit());
}

void TestInstall::files() {
    QStringList installed;
    QDirIterator all(folder_.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (all.hasNext()) {
        const QString file = QDir(folder_.path()).relativeFilePath(all.next());
        // Its pages are its own affair, and it may not have been made.
        if (!file.startsWith("share/doc/quorvex-config/manual/"))
            installed << file;
    }
    const QStringList listed = fileText(QUORVEX_PACKAGING "/installed-files").split('\n', Qt::SkipEmptyParts);
    QCOMPARE(without(installed, listed), "");
    QCOMPARE(without(listed, installed), "");
}

void TestInstall::programs() {
    QCOMPARE(outputOf(path("bin/quorvex-tool"), {"--version"}), "quorvex-tool " QUORVEX_VERSION "\n");
    QVERIFY(outputOf(path("bin/quorvex-simulator"), {"--help"}).startsWith("Usage: "));
    QVERIFY(QFileInfo(path("bin/quorvex-config")).isExecutable());
}

// CHANGELOG.md tells of this version once it is released.
void TestInstall::release() {
    const QString metainfo = fileText(path("share/metainfo/org.example.quorvex.config.metainfo.xml"));
    const QString newest = metainfo.mid(metainfo.indexOf("<release "));
    QVERIFY2(newest.startsWith("<release version=\"" QUORVEX_VERSION "\""), qPrintable(newest.left(100)));
}

void TestInstall::typeOfAFile_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isSettings");
    QTest::newRow("by its signature") << "found" << settings("\r\n") << true;
    QTest::newRow("edited elsewhere") << "found" << settings("\n") << true;
    QTest::newRow("by its name") << "found.bpc" << QByteArray() << true;
    QTest::newRow("another signature") << "found" << QByteArray("K47001\r\n") << false;
}

void TestInstall::typeOfAFile() {
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(name, content);
    QTEST(type.name() == "application/x-quorvex-beltpack-settings", "isSettings");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestInstall, QCoreApplication)
#include "test_install.moc"
