#include "link/reply.h"

#include <QTest>

#include "tests/support/registry.h"
#include "tests/support/rows.h"

namespace quorvex {

/// What counts as an answer to a read line.
class TestReply : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answers_data();
    void answers();
    void readLines_data();
    void readLines();
    void refusals();
};

void TestReply::answers_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("is");  // "answer", "head" or "neither"
    const auto row = [](const char* name, const char* line, const char* reply, const char* is) {
        QTest::newRow(name) << line << reply << is;
    };
    row("one byte", "# 0105", "# 028500", "answer");
    row("five bytes", "# 0101", "# 06810044303039", "answer");
    row("lower case", "# 013a", "# 02ba7f", "answer");
    row("its head", "# 0139", "# 02B9", "head");
    row("half a head", "# 0139", "# 02", "neither");
    row("nothing", "# 0139", "", "neither");
    row("no reply", "# 0139", "Error", "neither");
    row("another number", "# 0105", "# 028600", "neither");
    row("the number itself", "# 0105", "# 020500", "neither");
    row("too few bytes", "# 0101", "# 068100443030", "neither");
    row("too many bytes", "# 0105", "# 02850000", "neither");
    row("half a byte", "# 0105", "# 02850", "neither");
    row("another family", "# 0105", "! 028500", "neither");
    row("in front", "# 0105", "## 028500", "neither");
    row("no digits", "# 0105", "# 0285?0", "neither");
    row("no digits in the head", "# 0105", "# ?28500", "neither");
    row("a refusal", "# 0139", "# 01BF", "neither");
}

void TestReply::answers() {
    QFETCH(QString, line);
    QFETCH(QString, reply);
    QFETCH(QString, is);
    const std::string read = line.toStdString();
    const std::string came = reply.toStdString();
    QCOMPARE(isAnswerTo(read, came), is == "answer");
    QCOMPARE(isHeadOfAnswerTo(read, came), is == "head");
}

void TestReply::readLines_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("reads");
    QTest::newRow("a parameter") << "# 0105" << true;
    QTest::newRow("lower case") << "# 010a" << true;
    QTest::newRow("a write") << "# 024430" << false;
    QTest::newRow("a command") << "! 0108" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestReply::readLines() {
    QFETCH(QString, line);
    QFETCH(bool, reads);
    QCOMPARE(isReadLine(line.toStdString()), reads);
}

void TestReply::refusals() {
    QVERIFY(isRefusal("# 01BF"));
    QVERIFY(!isRefusal("# 02BF00"));
    QVERIFY(!isRefusal("Error"));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestReply, quorvex::NoApplication)
#include "test_reply.moc"
