#include <QJsonArray>
#include <QTest>

#include "rscreen/screen_bitmap.h"
#include "simulator/menu_picture.h"
#include "tests/support/pseudo_terminal.h"
#include "tests/support/registry.h"
#include "tests/tool/tool_bench.h"
#include "tests/tool/tool_process.h"

namespace quorvex {

namespace {

/// Whether a file holds a whole picture that the simulated unit shows.
bool isShown(const QString& path) {
    constexpr int kPictures = 60;  // more than are sent in a test
    constexpr int kVolume = 0x10;
    const QByteArray file = SettingsFolder::content(path);
    for (int picture = 0; picture < kPictures; ++picture) {
        const std::string bytes = sim::drawMenu(picture, kVolume).bytes();
        ScreenBits bits{};
        std::copy(bytes.begin(), bytes.end(), bits.begin());
        if (file == QByteArray::fromStdString(bitmapOf(bits)))
            return true;
    }
    return false;
}

}  // namespace

/// screen: pictures of a Beltpack's display.
class TestScreenCommand : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { tool_.reset(); }
    void savesOne();
    void savesSeveral();
    void faults_data();
    void faults();
    void noDisplay();
    void halfAFrame();
    void cannotBeSaved();

private:
    QString path(const QString& name) const { return folder_->path(name); }

    std::unique_ptr<SettingsFolder> folder_;
    std::unique_ptr<ToolProcess> tool_;
};

void TestScreenCommand::init() {
    folder_ = std::make_unique<SettingsFolder>();
    tool_ = std::make_unique<ToolProcess>();
}

void TestScreenCommand::savesOne() {
    tool_->plugIn(1, {"beltpack", "--display-rate", "10"});
    const auto ended = tool_->run("--json --port COM1 screen " + path("display.bmp"));
    QCOMPARE(ended.status, 0);
    QCOMPARE(ended.object()["files"].toArray(), QJsonArray({path("display.bmp")}));
    QVERIFY(isShown(path("display.bmp")));
}

void TestScreenCommand::savesSeveral() {
    tool_->plugIn(1, {"beltpack", "--display-rate", "20"});
    const auto ended = tool_->run("--port COM1 --frames 3 screen " + path("menu.bmp"));
    QCOMPARE(ended.status, 0);
    QString told;
    for (const char* name : {"menu0.bmp", "menu1.bmp", "menu2.bmp"}) {
        QVERIFY2(isShown(path(name)), name);
        told += "Saved in " + path(name) + ".\n";
    }
    QCOMPARE(ended.out, told);
    QVERIFY(!QFile::exists(path("menu.bmp")));
}

void TestScreenCommand::faults_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("whole");  // a frame that is short cannot be told from a whole one
    QTest::newRow("broken marker") << "display-broken-marker" << 3 << false;
    QTest::newRow("broken marker, once") << "display-broken-marker,once" << 0 << true;
    QTest::newRow("short") << "display-short" << 0 << false;
    QTest::newRow("short, once") << "display-short,once" << 0 << false;
    QTest::newRow("garbage") << "display-garbage" << 0 << true;
    QTest::newRow("inner marker") << "display-inner-marker" << 0 << false;
}

void TestScreenCommand::faults() {
    QFETCH(QString, fault);
    QFETCH(int, status);
    QFETCH(bool, whole);
    tool_->plugIn(1, {"beltpack", "--display-rate", "10", "--fault", fault});
    const auto ended = tool_->run("--port COM1 screen " + path("display.bmp"));
    QCOMPARE(ended.status, status);
    QCOMPARE(QFile::exists(path("display.bmp")), status == 0);
    QVERIFY(!whole || isShown(path("display.bmp")));
}

void TestScreenCommand::noDisplay() {
    tool_->plugIn(1, {"beltpack"});
    const auto ended = tool_->run("--json --port COM1 screen --frames 2 " + path("display.bmp"));
    QCOMPARE(ended.status, 3);
    QCOMPARE(ended.err, "quorvex-tool: The Beltpack shows no display: 0 of 2 pictures came in 5 s.\n");
    QCOMPARE(ended.object()["files"].toArray().size(), 0);
}

// The capture waits for the rest of it as long as it may take; the tool does not.
void TestScreenCommand::halfAFrame() {
    const PseudoTerminal terminal;
    QVERIFY(terminal.linkAs(tool_->portLink(1)));
    tool_->start("--port COM1 screen " + path("display.bmp"));
    QTRY_VERIFY(tool_->hasOpen(1));
    terminal.send("sync" + QByteArray(100, 'x'));
    const auto ended = tool_->end();
    QCOMPARE(ended.status, 3);
    QCOMPARE(ended.err, "quorvex-tool: The Beltpack shows no display: 0 of 1 picture came in 5 s.\n");
}

void TestScreenCommand::cannotBeSaved() {
    tool_->plugIn(1, {"beltpack", "--display-rate", "10"});
    const auto ended = tool_->run("--port COM1 screen " + path("none/display.bmp"));
    QCOMPARE(ended.status, 5);
    QVERIFY2(ended.err.contains("there is no folder"), qPrintable(ended.err));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestScreenCommand, QCoreApplication)
#include "test_screen_command.moc"
