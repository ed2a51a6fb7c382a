#include <QTest>
#include <map>

#include "antenna/antenna_read.h"
#include "link/qt_event_loop.h"
#include "link/qt_serial_port.h"
#include "tests/support/pty_peer.h"
#include "tests/support/registry.h"

using namespace quorvex;

namespace {

class Told : public Console {
public:
    void status(std::string_view text, Colour /*colour*/) override {
        last = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    void messageBox(std::string_view text, Icon /*icon*/, std::string_view /*title*/) override {
        boxes << QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    void beep() override {}
    void hourglass(bool /*up*/) override {}
    QString last;
    QStringList boxes;
};

class Field : public TextField {
public:
    std::string text() const override { return text_; }
    void setText(std::string_view text) override { text_ = std::string(text); }

private:
    std::string text_;
};

class HeldModule : public RadioModule {
public:
    explicit HeldModule(int type) : type_(static_cast<std::int16_t>(type)) {}
    std::int16_t type() const override { return type_; }
    void change(std::int16_t type) override { type_ = type; }

private:
    std::int16_t type_;
};

}  // namespace

/// Which module an Active Antenna has, told on a real line: the second and the third line of the answer are
/// taken only if they are there already, in the system's buffers as much as in the program's.
class TestAntennaDetection : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void detects_data();
    void detects();
};

void TestAntennaDetection::detects_data() {
    QTest::addColumn<QByteArray>("atOnce");  // written in one piece in answer to the probe
    QTest::addColumn<int>("kind");
    const QByteArray other("! 021100\r\n"), reply("# 028705\r\n");
    QTest::newRow("first line") << reply << 1;
    QTest::newRow("second line") << other + reply << 1;
    QTest::newRow("third line") << other + other + reply << 1;
    QTest::newRow("fourth line") << other + other + other + reply << 0;
    QTest::newRow("one other line, no more") << other << 0;
    QTest::newRow("two other lines, no more") << other + other << 0;
    QTest::newRow("refused") << QByteArray("# 01BF\r\n") << 0;
    QTest::newRow("silence") << QByteArray() << 0;
}

void TestAntennaDetection::detects() {
    QFETCH(QByteArray, atOnce);
    QFETCH(int, kind);
    const std::map<QString, std::string> answers{{"# 0101", "# 02811E\r\n"}, {"# 0102", "# 02821F\r\n"},
                                                 {"# 0105", "# 02850C\r\n"}, {"# 0109", "# 028911\r\n"},
                                                 {"# 0106", "# 028603\r\n"}, {"# 0108", "# 028812\r\n"},
                                                 {"# 010a", "# 028A13\r\n"}};
    bool probed = false;
    PtyPeer peer([&](const QString& line) -> std::string {
        if (line == "# 0107")
            return std::exchange(probed, true) ? "# 028705\r\n" : atOnce.toStdString();
        const auto found = answers.find(line);
        return found == answers.end() ? std::string() : found->second;
    });
    QtSerialPort port;
    QtEventLoop loop;
    Told told;
    port.open(1);
    CommandLink link(port, loop, told);
    Field fmA, freqA, rxA, txA, fmB, freqB, rxB, txB;
    HeldModule held(1 - kind);
    AntennaRead read(link, held, {fmA, freqA, rxA, txA}, {fmB, freqB, rxB, txB});
    read.CommandRdSettingsAA_Click();
    QCOMPARE(told.boxes, QStringList());
    QCOMPARE(told.last, "Settings read from Active Antenna");
    QCOMPARE(static_cast<int>(held.type()), kind);
    QCOMPARE(QString::fromStdString(freqA.text()), kind == 1 ? "12" : "3");
    QCOMPARE(QString::fromStdString(rxA.text()), kind == 1 ? "5" : "");
    QCOMPARE(peer.lines().size(), kind == 1 ? qsizetype{9} : qsizetype{5});
}

QUORVEX_TEST(TestAntennaDetection, QCoreApplication)
#include "test_antenna_detection.moc"
