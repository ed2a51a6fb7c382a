#include "tool/command_line.h"

#include <QTest>

#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"

namespace quorvex {

namespace {

/// Words of a line; "" is a word without characters.
QStringList wordsOf(const QString& line) {
    QStringList words = line.split(' ', Qt::SkipEmptyParts);
    words.replaceInStrings("\"\"", "");
    return words;
}

QString optionsOf(const tool::Request& request) {
    QStringList options;
    for (auto option = request.options.begin(); option != request.options.end(); ++option)
        options << (option.value().isEmpty() ? option.key() : option.key() + "=" + option.value());
    return options.join(' ');
}

}  // namespace

/// What a command line asks for, what is wrong with one, and the help.
class TestCommandLine : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void accepted_data();
    void accepted();
    void refused_data();
    void refused();
    void helpOfEachCommand_data();
    void helpOfEachCommand();
    void helpNamesEachCommand();
};

void TestCommandLine::accepted_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("options");
    const auto row = [](const char* line, const char* command, const QStringList& arguments,
                        const char* options) {
        QTest::newRow(line) << line << command << arguments << options;
    };
    row("ports", "ports", {}, "");
    row("--port COM1 read", "read", {}, "--port=COM1");
    row("read --port=COM1 a.bpc", "read", {"a.bpc"}, "--port=COM1");
    row("--json write --dry-run a.bpc --with-identity", "write", {"a.bpc"},
        "--dry-run --json --with-identity");
    row("set psn -5", "set", {"psn", "-5"}, "");
    row("screen x.bmp --frames 3", "screen", {"x.bmp"}, "--frames=3");
    row("diff a b", "diff", {"a", "b"}, "");
    row("write --help", "write", {}, "--help");
    row("--help", "", {}, "--help");
    row("--version", "", {}, "--version");
}

void TestCommandLine::accepted() {
    QFETCH(QString, line);
    QFETCH(QString, command);
    QFETCH(QStringList, arguments);
    QFETCH(QString, options);
    const tool::Request request = tool::parseCommandLine(wordsOf(line));
    QCOMPARE(request.command ? request.command->name : QString(), command);
    QCOMPARE(request.arguments, arguments);
    QCOMPARE(optionsOf(request), options);
}

void TestCommandLine::refused_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("words");
    const QString all =
        "ports, read, write, verify, set, production-values, version, antenna, screen, show, check, diff";
    const auto row = [](const char* line, const QString& words) { QTest::newRow(line) << line << words; };
    row("", "Say what to do: " + all + ".");
    row("--json", "Say what to do: " + all + ".");
    row("reed", "\"reed\" is no command; there are " + all + ".");
    row("\"\"", "\"\" is no command; there are " + all + ".");
    row("read --file a", "There is no option --file; quorvex-tool COMMAND --help lists those of a command.");
    row("read --dry-run",
        "read does not take --dry-run; it takes --port, --trace, --record, --json, --help.");
    row("check a.bpc --port COM1", "check does not take --port; it takes --json, --help.");
    row("read --port", "--port needs PORT[,PORT...] after it.");
    row("read --trace --json", "--trace needs FILE after it.");
    row("read --trace=", "--trace needs FILE after it.");
    row("read \"\"",
        "read: \"\" is no name and no value; leave it out, or say what is meant: quorvex-tool [--port "
        "PORT[,PORT...]] read [FILE.bpc]");
    row("read --json=yes", "--json takes no value.");
    row("read --json --json", "--json is given twice.");
    row("write", "write needs FILE.bpc, as in: quorvex-tool --port COM1 write workshop.bpc --dry-run");
    row("diff a.bpc", "diff needs A.bpc B.bpc, as in: quorvex-tool diff found.bpc workshop.bpc");
    row("set psn",
        "set needs psn|system-id|pli|rf-carriers VALUE, as in: quorvex-tool --port COM1 set psn 100001");
    row("read a.bpc b.bpc",
        "\"b.bpc\" is more than read takes: quorvex-tool [--port PORT[,PORT...]] read [FILE.bpc]");
    row("ports COM1", "\"COM1\" is more than ports takes: quorvex-tool ports");
}

void TestCommandLine::refused() {
    QFETCH(QString, line);
    QFETCH(QString, words);
    try {
        tool::parseCommandLine(wordsOf(line));
        QFAIL("accepted");
    } catch (const tool::Failure& failure) {
        QCOMPARE(failure.problem(), words);
        QVERIFY(failure.status() == tool::Status::wrongUse);
    }
}

void TestCommandLine::helpOfEachCommand_data() {
    QTest::addColumn<int>("index");
    int index = 0;
    for (const tool::Command& command : tool::commandTable())
        QTest::newRow(qPrintable(command.name)) << index++;
}

void TestCommandLine::helpOfEachCommand() {
    QFETCH(int, index);
    const tool::Command& command = tool::commandTable()[static_cast<std::size_t>(index)];
    const QString help = tool::helpText(&command);
    for (const QString& part :
         {QString("Usage: quorvex-tool"), " " + command.name, command.arguments, command.purpose})
        QVERIFY2(help.contains(part), qPrintable(part + " is not in:\n" + help));
    for (const tool::Option& option : command.allOptions())
        QVERIFY2(help.contains("\n  " + option.name), qPrintable(option.name));
    // The example is a command line of this command.
    const QString example = help.section("Example:\n  quorvex-tool ", 1).trimmed();
    QVERIFY(tool::parseCommandLine(example.split(' ')).command == &command);
    for (const QString& line : help.split('\n'))
        QVERIFY2(line.size() <= 110, qPrintable(line));
}

void TestCommandLine::helpNamesEachCommand() {
    const QString help = tool::helpText(nullptr);
    for (const QString& line : help.split('\n'))
        QVERIFY2(line.size() <= 112, qPrintable(line));
    for (const tool::Command& command : tool::commandTable())
        QVERIFY2(help.contains("\n  " + command.name + " "), qPrintable(command.name));
    QVERIFY(
        help.contains("Exit status: 0 done, 1 verified otherwise or files differ, 2 wrong use, 3 no answer, "
                      "4 port,\n5 file"));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestCommandLine, quorvex::NoApplication)
#include "test_command_line.moc"
