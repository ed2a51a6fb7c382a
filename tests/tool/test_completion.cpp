#include <QDir>
#include <QProcess>
#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

/// What bash offers for the last word of a line that begins with the tool.
QStringList offered(const QString& line, const QString& folder = QDir::currentPath()) {
    QProcess bash;
    bash.setWorkingDirectory(folder);
    const QString script = R"(source "$1"; shift; COMP_WORDS=(quorvex-tool "$@"); COMP_CWORD=$#
                              _quorvex_tool; printf '%s\n' "${COMPREPLY[@]}")";
    bash.start("bash", QStringList({"-c", script, "bash", QUORVEX_COMPLETION}) + line.split(' '));
    if (!bash.waitForFinished() || !bash.readAllStandardError().isEmpty())
        return {"failed"};
    QStringList words = QString::fromLocal8Bit(bash.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    words.sort();
    return words;
}

QStringList sorted(QStringList words) {
    words.sort();
    return words;
}

}  // namespace

/// What bash completes goes by the commands and options that there are.
class TestCompletion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commands();
    void options_data();
    void options();
    void words_data();
    void words();
    void files();
};

void TestCompletion::commands() {
    QStringList names;
    for (const tool::Command& command : tool::commandTable())
        names << command.name;
    QCOMPARE(offered(""), sorted(names));
    QCOMPARE(offered("--json --port COM3 "), sorted(names));
    QCOMPARE(offered("ve"), QStringList({"verify", "version"}));
}

void TestCompletion::options_data() {
    QTest::addColumn<int>("index");
    int index = 0;
    for (const tool::Command& command : tool::commandTable())
        QTest::newRow(qPrintable(command.name)) << index++;
}

void TestCompletion::options() {
    QFETCH(int, index);
    const tool::Command& command = tool::commandTable()[std::size_t(index)];
    QStringList names;
    for (const tool::Option& option : command.allOptions())
        names << option.name;
    QCOMPARE(offered(command.name + " --"), sorted(names));
}

void TestCompletion::words_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("words");
    QTest::newRow("what is set") << "set " << QStringList({"pli", "psn", "rf-carriers", "system-id"});
    QTest::newRow("whose version") << "--port COM1 version " << QStringList({"antenna", "beltpack"});
    QTest::newRow("a port") << "--port COM1" << QStringList({"COM1", "COM10", "COM11", "COM12"});
    QTest::newRow("a port behind =") << "--port = COM1" << QStringList({"COM1", "COM10", "COM11", "COM12"});
    QTest::newRow("a port right behind =") << "--record =" << offered("--record ");
    QTest::newRow("a command behind =") << "--port = COM1 ver" << QStringList({"verify", "version"});
    QTest::newRow("a value") << "set psn " << QStringList();
    QTest::newRow("a device") << "--port /dev/nul" << QStringList("/dev/null");
    QTest::newRow("another port") << "--port COM2,COM1"
                                  << QStringList({"COM2,COM1", "COM2,COM10", "COM2,COM11", "COM2,COM12"});
    QTest::newRow("another device") << "--port COM2,/dev/nul" << QStringList("COM2,/dev/null");
    QTest::newRow("a folder") << "read --record /dev/sh" << QStringList("/dev/shm");
    QTest::newRow("a number") << "screen --frames " << QStringList();
    QTest::newRow("an option before any command") << "--v" << QStringList("--version");
}

void TestCompletion::words() {
    QFETCH(QString, line);
    QFETCH(QStringList, words);
    QCOMPARE(offered(line), words);
}

void TestCompletion::files() {
    const SettingsFolder folder;
    folder.make("one.bpc");
    folder.make("two with blanks.bpc");
    folder.make("picture.bmp");
    QDir(folder.path("")).mkdir("more");
    QCOMPARE(offered("write ", folder.path("")), QStringList({"more", "one.bpc", "two with blanks.bpc"}));
    QCOMPARE(offered("diff one.bpc t", folder.path("")), QStringList("two with blanks.bpc"));
    QCOMPARE(offered("screen ", folder.path("")), QStringList({"more", "picture.bmp"}));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCompletion, quorvex::NoApplication)
#include "test_completion.moc"
