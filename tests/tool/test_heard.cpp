#include "tool/heard.h"

#include <QTest>

#include "tests/support/registry.h"

namespace quorvex {

/// What is kept of what went over the line, and what is wrong with it.
class TestHeard : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wrongReply_data();
    void wrongReply();
    void lastOfSeveralReplies();
    void silence_data();
    void silence();
    void lateAnswer();
    void answerToTheSecond();
    void firstWrongOne();
    void replyTo();
    void howFar();
};

void TestHeard::wrongReply_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<bool>("isLine");
    QTest::addColumn<bool>("isRight");
    const auto row = [](const char* name, const char* line, const char* reply, bool isLine, bool isRight) {
        QTest::newRow(name) << line << reply << isLine << isRight;
    };
    row("an answer", "# 0105", "# 028500", false, true);
    row("an answer, by line", "# 0105", "# 028500", true, true);
    row("a refusal", "# 0139", "# 01BF", false, true);
    row("six characters of an answer", "# 0139", "# 02B9", false, true);
    row("a line without data", "# 0101", "# 0281", true, false);
    row("another register's", "# 0105", "# 028600", false, false);
    row("another line", "# 0105", "! 0211E7", false, false);
    row("the command itself", "# 0105", "# 0105# ", false, false);
    row("not hexadecimal", "# 0105", "# 0285Z0", false, false);
    row("what is not read may be answered by anything", "! 0108", "!DECT Version:4.07;", true, true);
}

void TestHeard::wrongReply() {
    QFETCH(QString, line);
    QFETCH(QString, reply);
    QFETCH(bool, isLine);
    QFETCH(bool, isRight);
    tool::Heard heard;
    heard.sent(line.toStdString());
    if (isLine)
        heard.gotLine(reply.toStdString());
    else
        heard.gotCharacters(reply.toStdString());
    const QString told = QString("What came back for \"%1\" is no answer to it: \"%2\".").arg(line, reply);
    QCOMPARE(heard.wrongReply(), isRight ? QString() : told);
}

// An antenna's reader passes over lines that are meant for nobody.
void TestHeard::lastOfSeveralReplies() {
    tool::Heard heard;
    heard.sent("# 0101");
    heard.gotLine("! 0211");
    heard.gotLine("# 028121");
    QCOMPARE(heard.wrongReply(), "");
    QCOMPARE(heard.replyTo("# 0101"), std::string("# 028121"));
}

// Silence is how an antenna with an RM5 tells that it has no such register. What it sends by itself, an echo
// and a refusal are silence, too; half an answer is none, and neither is one that cannot be read.
void TestHeard::silence_data() {
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("wrong");
    QTest::newRow("nothing") << QStringList() << ""
                             << "";
    QTest::newRow("other lines") << QStringList({"! 0211E7", "^ 0230"}) << ""
                                 << "";
    QTest::newRow("an echo") << QStringList("# 0107") << ""
                             << "";
    QTest::newRow("a refusal") << QStringList("# 01BF") << ""
                               << "";
    QTest::newRow("garbled") << QStringList("#?0?8?0?") << ""
                             << "#?0?8?0?";
    QTest::newRow("another register's") << QStringList({"! 0211E7", "# 028103"}) << ""
                                        << "# 028103";
    QTest::newRow("broken off") << QStringList() << "# 028"
                                << "# 028";
}

void TestHeard::silence() {
    QFETCH(QStringList, lines);
    QFETCH(QString, part);
    QFETCH(QString, wrong);
    tool::Heard heard;
    heard.sent("# 0107");
    for (const QString& line : lines)
        heard.gotLine(line.toStdString());
    heard.gaveUp(part.toStdString());
    QCOMPARE(heard.wrongReply().section(": ", 1), wrong.isEmpty() ? "" : '"' + wrong + "\".");
    QCOMPARE(heard.replyTo("# 0107"), std::string());
}

// A reader may pass over the answer to a line that was given up before.
void TestHeard::lateAnswer() {
    tool::Heard heard;
    heard.sent("# 0107");
    heard.gaveUp("");
    heard.sent("# 0105");
    heard.gotLine("# 028777");
    heard.gotLine("# 028512");
    QCOMPARE(heard.wrongReply(), "The answer to \"# 0107\" came too late: \"# 028777\".");
}

// What was asked for again is answered in time.
void TestHeard::answerToTheSecond() {
    tool::Heard heard;
    heard.sent("# 0139");
    heard.gaveUp("");
    heard.sent("# 0139");
    heard.gotCharacters("# 02B902");
    QCOMPARE(heard.wrongReply(), "");
}

void TestHeard::firstWrongOne() {
    tool::Heard heard;
    for (const char* line : {"# 0101", "# 0102"}) {
        heard.sent(line);
        heard.gotCharacters("! 0211E7");
    }
    QVERIFY(heard.wrongReply().contains("\"# 0101\""));
    heard.clear();
    QCOMPARE(heard.wrongReply(), "");
}

void TestHeard::replyTo() {
    tool::Heard heard;
    heard.gotLine("before any line");
    heard.gaveUp("before any line");
    QVERIFY(heard.exchanges().empty());
    QCOMPARE(heard.replyTo("# 0105"), std::string());
    heard.sent("# 0105");
    heard.gotCharacters("# 028500");
    heard.sent("# 0105");
    heard.gotCharacters("# 028501");
    heard.sent("# 0106");
    QCOMPARE(heard.replyTo("# 0105"), std::string("# 028501"));
    QCOMPARE(heard.replyTo("# 0106"), std::string());
}

void TestHeard::howFar() {
    tool::Heard heard;
    QCOMPARE(heard.howFar(), "No line was answered.");
    heard.sent("# 0105");
    heard.gotCharacters("# 028500");
    heard.sent("# 0106");
    heard.gaveUp("");
    heard.sent("# 027E01");
    const QString last = "The last line that was answered: \"# 0105\".";
    QCOMPARE(heard.howFar(), last + " Sent and not confirmed: \"# 027E01\".");
    heard.clear();
    QCOMPARE(heard.howFar(), last);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestHeard, quorvex::NoApplication)
#include "test_heard.moc"
