#include <QTest>

#include "app/startup.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

/// The text of the About box.
class TestAbout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void text_data();
    void text();
    void title();
};

void TestAbout::text_data() {
    QTest::addColumn<int>("major");
    QTest::addColumn<int>("minor");
    QTest::addColumn<int>("revision");
    QTest::addColumn<QString>("begins");
    const QString product = QString::fromUtf8("Quorvex\u00AE Configuration Utility v");
    QTest::newRow("several digits") << 1 << 12 << 19 << product + "1.12.19\r\r";
    QTest::newRow("no leading zeros") << 1 << 2 << 3 << product + "1.2.3\r\r";
    QTest::newRow("zeros") << 1 << 0 << 0 << product + "1.0.0\r\r";
}

void TestAbout::text() {
    QFETCH(int, major);
    QFETCH(int, minor);
    QFETCH(int, revision);
    QFETCH(QString, begins);
    const QString text = QString::fromStdString(aboutText(major, minor, revision));
    QVERIFY2(text.startsWith(begins), qPrintable(text));
    // One line of notice, and a last line end.
    const QString notice = text.mid(begins.size());
    QVERIFY(notice.endsWith('\r'));
    QCOMPARE(notice.count('\r'), 1);
    QVERIFY(!notice.chopped(1).trimmed().isEmpty());
    QVERIFY(!text.contains('\n'));
}

void TestAbout::title() {
    QCOMPARE(shown(kAboutTitle), "About Quorvex Config");
}

QUORVEX_TEST(TestAbout, quorvex::NoApplication)
#include "test_about.moc"
