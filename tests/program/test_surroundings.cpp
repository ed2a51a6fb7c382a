#include <QDir>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kSuiteLimitMs = 60'000;

const QStringList kFolders{"HOME",          "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                           "XDG_DATA_HOME", "XDG_STATE_HOME",  "XDG_RUNTIME_DIR"};

/// What a program prints; nothing unless it exits with 0.
QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool passed = process.waitForFinished(kSuiteLimitMs) &&
                        process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return passed ? process.readAllStandardOutput() : QByteArray();
}

/// The CTest entries of test classes: "name", "command", "properties". The fuzz targets know neither the
/// toolkit nor a home; the scripts that read the pages make homes of their own.
QJsonArray entries() {
    const QByteArray text = outputOf(
        QUORVEX_CTEST,
        {"--test-dir", QUORVEX_BUILD_FOLDER, "--show-only=json-v1", "--exclude-regex", "^(fuzz|docs)_"});
    return QJsonDocument::fromJson(text).object()["tests"].toArray();
}

QStringList commandOf(const QJsonObject& entry) {
    return entry["command"].toVariant().toStringList();
}

QStringList environmentOf(const QJsonObject& entry) {
    for (const QJsonValue& each : entry["properties"].toArray()) {
        if (each.toObject()["name"].toString() == "ENVIRONMENT")
            return each.toObject()["value"].toVariant().toStringList();
    }
    return {};
}

QStringList filesBelow(const QString& folder) {
    QStringList found;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        found << QDir(folder).relativeFilePath(all.next());
    return found;
}

}  // namespace

/// The tests leave the user's own files alone: every process has a home of its own, and what it starts has
/// that too.
class TestSurroundings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ownFolders_data();
    void ownFolders();
    void everyEntry_data();
    void everyEntry();
    void everyTestFileIsEntered();
    void nothingForTheUser_data();
    void nothingForTheUser();
};

void TestSurroundings::ownFolders_data() {
    QTest::addColumn<QByteArray>("variable");
    for (const QString& variable : kFolders)
        QTest::newRow(qPrintable(variable)) << variable.toLatin1();
}

void TestSurroundings::ownFolders() {
    QFETCH(QByteArray, variable);
    const QFileInfo folder(qEnvironmentVariable(variable));
    QVERIFY2(folder.isDir(), qPrintable(folder.filePath()));
    QVERIFY2(folder.filePath().startsWith(QUORVEX_BUILD_FOLDER "/tests/homes/"),
             qPrintable(folder.filePath()));
    constexpr QFile::Permissions kOwners = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                           QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    QCOMPARE(folder.permissions() & ~kOwners, QFile::Permissions());
}

void TestSurroundings::everyEntry_data() {
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QStringList>("environment");
    for (const QJsonValue& each : entries()) {
        const QJsonObject entry = each.toObject();
        QTest::newRow(qPrintable(entry["name"].toString())) << commandOf(entry) << environmentOf(entry);
    }
}

// The main() that test programs share makes the home, so an entry has one if it runs a class of such a
// program.
void TestSurroundings::everyEntry() {
    QFETCH(QStringList, command);
    QFETCH(QStringList, environment);
    QCOMPARE(command.size(), 2);
    QVERIFY2(command[0].startsWith(QUORVEX_BUILD_FOLDER "/tests/test_"), qPrintable(command[0]));
    const QString classes = QString::fromLocal8Bit(outputOf(command[0], {"--list"}));
    QVERIFY2(classes.split('\n').contains(command[1]), qPrintable(classes));
    for (const QString& setting : environment)
        QVERIFY2(!kFolders.contains(setting.section('=', 0, 0)), qPrintable(setting));
}

void TestSurroundings::everyTestFileIsEntered() {
    QSet<QStringList> entered;
    for (const QJsonValue& entry : entries())
        entered.insert(commandOf(entry.toObject()));
    const QStringList files = filesBelow(QUORVEX_TESTS_FOLDER).filter(QRegularExpression("/test_.*\\.cpp$"));
    QVERIFY(!files.isEmpty());
    QCOMPARE(entered.size(), files.size());
}

void TestSurroundings::nothingForTheUser_data() {
    QTest::addColumn<QStringList>("command");
    QTest::newRow("settings store") << QStringList{"test_link", "TestSettingsStore"};
    QTest::newRow("file dialogs") << QStringList{"test_beltpack", "TestFileDialogs"};
    QTest::newRow("built program") << QStringList{"test_program", "TestSettings", "folderIsMade"};
}

// A test as a user starts it, and whose home is then looked into.
void TestSurroundings::nothingForTheUser() {
    QFETCH(QStringList, command);
    const QTemporaryDir home;
    // Tests that lay the superuser's rights down must still get into it.
    QFile::setPermissions(home.path(), QFile::permissions(home.path()) | QFile::ReadGroup | QFile::ExeGroup);
    QProcessEnvironment users = QProcessEnvironment::systemEnvironment();
    for (const QString& variable : kFolders)
        users.remove(variable);
    users.insert("HOME", home.path());
    users.insert("TMPDIR", home.path());
    QProcess test;
    test.setProcessEnvironment(users);
    test.setProcessChannelMode(QProcess::MergedChannels);
    test.start(QUORVEX_BUILD_FOLDER "/tests/" + command[0], command.mid(1));
    QVERIFY2(test.waitForFinished(kSuiteLimitMs), qPrintable(test.errorString()));
    QVERIFY2(test.exitStatus() == QProcess::NormalExit && test.exitCode() == 0, test.readAll().constData());
    QCOMPARE(filesBelow(home.path()), QStringList());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSurroundings, QCoreApplication)
#include "test_surroundings.moc"
