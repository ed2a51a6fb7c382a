#include <QTest>

#include "identity/system_id.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/registry.h"
#include "tests/support/rows.h"

using namespace quorvex;

namespace {

struct Identity {
    void fill(const QString& newParkB, const QString& newEic, const QString& newFpn, const QString& newFps) {
        parkB.type(newParkB.toStdString());
        eic.type(newEic.toStdString());
        fpn.type(newFpn.toStdString());
        fps.type(newFps.toStdString());
    }
    QStringList fields() const {
        return {shown(parkB.text()), shown(eic.text()), shown(fpn.text()), shown(fps.text())};
    }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    FakeField parkB{journal, "TextParkB"};
    FakeField eic{journal, "TextEic"};
    FakeField fpn{journal, "TextFpn"};
    FakeField fps{journal, "TextFps"};
    SettingsImage image;
    SystemId systemId{link, image, {parkB, eic, fpn, fps}};
};

}  // namespace

/// PARK B and its components, kept in step both ways.
class TestSystemId : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void composes_data();
    void composes();
    void everyComponentComposes();
    void splits_data();
    void splits();
    void splitKeepsWhatWasTyped();
    void displays_data();
    void displays();
    void refuses_data();
    void refuses();
    void displayTwice();
};

void TestSystemId::composes_data() {
    QTest::addColumn<QStringList>("before");  // PARK B, EIC, FPN, FPS
    QTest::addColumn<QString>("parkB");
    QTest::newRow("empty PARK B") << QStringList{"", "00EC", "*E*1", "0"} << "100ECE1000";
    QTest::newRow("ends kept") << QStringList{"3FFFFFFF27", "1234", "*5*6", "A"} << "3123456A27";
    QTest::newRow("default over another") << QStringList{"9AAAAAAA55", "00EC", "*E*1", "0"} << "900ECE1055";
    QTest::newRow("PARK B too short") << QStringList{"3FFFFFFF2", "1234", "*5*6", "A"} << "1123456A00";
    QTest::newRow("PARK B too long") << QStringList{"3FFFFFFF277", "1234", "*5*6", "A"} << "1123456A00";
    QTest::newRow("2nd and 4th of the FPN") << QStringList{"", "1234", "ABCD", "0"} << "11234BD000";
    QTest::newRow("copied as they stand") << QStringList{"??????????", "wxyz", "-g h", "!"} << "?wxyzgh!??";
    QTest::newRow("lower case stays") << QStringList{"", "00ec", "*e*1", "a"} << "100ece1a00";
    QTest::newRow("EIC too short") << QStringList{"3FFFFFFF27", "123", "*5*6", "A"} << "3FFFFFFF27";
    QTest::newRow("EIC too long") << QStringList{"3FFFFFFF27", "12345", "*5*6", "A"} << "3FFFFFFF27";
    QTest::newRow("FPN too short") << QStringList{"3FFFFFFF27", "1234", "*5*", "A"} << "3FFFFFFF27";
    QTest::newRow("FPN too long") << QStringList{"3FFFFFFF27", "1234", "*5*6*", "A"} << "3FFFFFFF27";
    QTest::newRow("FPS empty") << QStringList{"3FFFFFFF27", "1234", "*5*6", ""} << "3FFFFFFF27";
    QTest::newRow("FPS too long") << QStringList{"3FFFFFFF27", "1234", "*5*6", "AB"} << "3FFFFFFF27";
    QTest::newRow("nothing") << QStringList{"", "", "", ""} << "";
    QTest::newRow("half a PARK B stays") << QStringList{"3FF", "", "", ""} << "3FF";
}

void TestSystemId::composes() {
    QFETCH(QStringList, before);
    QFETCH(QString, parkB);
    Identity at;
    at.fill(before[0], before[1], before[2], before[3]);
    at.systemId.TextEic_Change();
    QCOMPARE(shown(at.parkB.text()), parkB);
    // The components are the operator's; composing never touches them.
    QCOMPARE(at.fields().mid(1), before.mid(1));
}

void TestSystemId::everyComponentComposes() {
    for (const auto change :
         {&SystemId::TextEic_Change, &SystemId::TextFpn_Change, &SystemId::TextFps_Change}) {
        Identity at;
        at.fill("", "00EC", "*E*1", "0");
        (at.systemId.*change)();
        QCOMPARE(shown(at.parkB.text()), "100ECE1000");
    }
}

void TestSystemId::splits_data() {
    QTest::addColumn<QString>("parkB");
    QTest::addColumn<QStringList>("fields");  // EIC, FPN, FPS
    const QStringList before{"00EC", "*E*1", "0"};
    QTest::newRow("10 characters") << "3123456A27" << QStringList{"1234", "*5*6", "A"};
    QTest::newRow("not hexadecimal") << "zwxyzgh!ab" << QStringList{"wxyz", "*g*h", "!"};
    QTest::newRow("blanks") << "          " << QStringList{"    ", "* * ", " "};
    QTest::newRow("9 characters") << "3123456A2" << before;
    QTest::newRow("11 characters") << "3123456A277" << before;
    QTest::newRow("empty") << "" << before;
}

void TestSystemId::splits() {
    QFETCH(QString, parkB);
    QFETCH(QStringList, fields);
    Identity at;
    at.fill(parkB, "00EC", "*E*1", "0");
    at.systemId.TextParkB_KeyUp();
    QCOMPARE(at.fields(), QStringList{parkB} + fields);
}

void TestSystemId::splitKeepsWhatWasTyped() {
    // Typed character by character over a whole one, with whatever the components were meanwhile.
    Identity at;
    at.fill("100ECE1000", "00EC", "*E*1", "0");
    const QString typed = "3FEDCBA927";
    for (int length = 0; length <= typed.size(); ++length) {
        at.parkB.type(typed.left(length).toStdString());
        at.systemId.TextParkB_KeyUp();
        QCOMPARE(shown(at.parkB.text()), typed.left(length));
    }
    QCOMPARE(at.fields(), QStringList({typed, "FEDC", "*B*A", "9"}));
}

void TestSystemId::displays_data() {
    QTest::addColumn<QString>("parkB");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QStringList>("fields");  // PARK B, EIC, FPN, FPS
    QTest::newRow("default, nothing before") << "100ECE1000"
                                             << "" << QStringList{"100ECE1000", "00EC", "*E*1", "0"};
    QTest::newRow("default over another") << "100ECE1000"
                                          << "9AAAAAAA55" << QStringList{"900ECE1055", "00EC", "*E*1", "0"};
    QTest::newRow("its ends are not shown") << "3123456A27"
                                            << "" << QStringList{"1123456A00", "1234", "*5*6", "A"};
    QTest::newRow("lower case EIC and FPS are raised")
        << "100ecabbc0"
        << "" << QStringList{"100ECabB00", "00EC", "*a*b", "B"};
    QTest::newRow("FPN is copied") << "11234?!500"
                                   << "" << QStringList{"11234?!500", "1234", "*?*!", "5"};
    QTest::newRow("ends may be anything") << "z00ECE10zz"
                                          << "" << QStringList{"100ECE1000", "00EC", "*E*1", "0"};
    QTest::newRow("blanks count as 0") << "          "
                                       << "" << QStringList{"10000  000", "0000", "* * ", "0"};
    QTest::newRow("short one, filled up with blanks") << "100EC     "
                                                      << "" << QStringList{"100EC  000", "00EC", "* * ", "0"};
}

void TestSystemId::displays() {
    QFETCH(QString, parkB);
    QFETCH(QString, before);
    QFETCH(QStringList, fields);
    Identity at;
    at.fill(before, "", "", "");
    at.systemId.showParkB(parkB.toStdString());
    QCOMPARE(at.fields(), fields);
    QCOMPARE(at.journal.entriesOf("box"), QStringList());
}

void TestSystemId::refuses_data() {
    QTest::addColumn<QString>("parkB");
    QTest::addColumn<QString>("named");
    QTest::newRow("no value") << "N/A       " << QString();
    QTest::newRow("EIC") << "100G1E1000"
                         << "100G1E1000";
    QTest::newRow("first character of the EIC") << "1-000E1000"
                                                << "1-000E1000";
    QTest::newRow("last character of the EIC") << "1000*E1000"
                                               << "1000*E1000";
    QTest::newRow("FPS") << "100ECE1X00"
                         << "100ECE1X00";
    QTest::newRow("too short") << "100ECE100"
                               << "100ECE100";
    QTest::newRow("too long") << "100ECE10000"
                              << "100ECE10000";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("named without the blanks behind it") << "1-0       "
                                                        << "1-0";
}

void TestSystemId::refuses() {
    QFETCH(QString, parkB);
    QFETCH(QString, named);
    Identity at;
    at.fill("3123456A27", "1234", "*5*6", "A");
    const QString problem = shown(at.systemId.showParkB(parkB.toStdString()));
    QCOMPARE(at.fields(), QStringList({"", "", "", ""}));
    QCOMPARE(at.journal.entriesOf("box"), QStringList());  // whoever asked for it tells, in good time
    QCOMPARE(problem,
             named.isNull()
                 ? QString()
                 : "\"" + named + "\" is not a valid System Id.\r\nThe System ID fields were emptied.");
}

void TestSystemId::displayTwice() {
    Identity at;
    at.systemId.showParkB("3123456A27");
    at.systemId.showParkB("3FEDCBA927");
    QCOMPARE(at.fields(), QStringList({"1FEDCBA900", "FEDC", "*B*A", "9"}));
}

QUORVEX_TEST(TestSystemId, quorvex::NoApplication)
#include "test_system_id.moc"
