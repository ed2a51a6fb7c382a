#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "tests/app/file_deeds.h"
#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/port_deeds.h"
#include "tests/support/registry.h"
#include "tests/support/talking_beltpack.h"

namespace quorvex {

namespace {

const QString kReadDone = "green: Settings read from Beltpack successfully.";
const QString kReadFailed = "black: Error communicating with Beltpack.";
const QString kNoResponse = failureEntry("No Response from Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kNotWritten =
    failureEntry("Error occured while writing settings to Beltpack!\r\n\r\nCheck connection to Beltpack.");
const QString kNotReadBack = failureEntry("Value could not read back from Beltpack!");
const QString kNotSaved = failureEntry("Error writing Beltpack settings to file!");
const QString kLoad = dialogEntry("CommonDialog1", "Open File");
const QString kSave = dialogEntry("CommonDialog1", "Save settings...");

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

/// A file or another read takes the place of the image that an operation works for, in one of its waits.
class TestImageReplaced : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void fileInARead_data();
    void fileInARead();
    void fileInAnInnerRead();
    void inAWrite_data();
    void inAWrite();
    void inAnUpdate_data();
    void inAnUpdate();
    void readInARead_data();
    void readInARead();
    void writeInARead();
    void saveInARead();

private:
    void load();
    /// Saves under that name; what the file holds then.
    QByteArray saved(const QString& name);
    void plugInATalkingOne();
    void replaceDuring(const QString& line, const QString& reply, const QString& by,
                       const std::function<void()>& look);
    static QStringList opened(const QString& by) { return by == "file" ? QStringList(kLoad) : QStringList(); }
    void verifyFile();

    QTemporaryDir folder_;
    std::unique_ptr<OtherFile> file_;
    std::optional<TalkingBeltpack> unit_;
    std::unique_ptr<Bench> bench_;
};

void TestImageReplaced::init() {
    renew(bench_);
    file_ = std::make_unique<OtherFile>();
}

void TestImageReplaced::load() {
    loadFile(*bench_, file_->path());
}

QByteArray TestImageReplaced::saved(const QString& name) {
    const QString path = folder_.filePath(name);
    bench_->person.plan([path](QDialog& dialog) { takeFile(dialog, path, QDialogButtonBox::Save); });
    bench_->click("CommandSave");
    return contentOf(path);
}

void TestImageReplaced::plugInATalkingOne() {
    bench_->wire.plugIn(&unit_.emplace(kRm5));
    bench_->start();
    bench_->journal.take();
}

/// The reply to `line` comes when the image has been replaced.
void TestImageReplaced::replaceDuring(const QString& line, const QString& reply, const QString& by,
                                      const std::function<void()>& look) {
    unit_->addFault(sim::parseFault(("no-reply=" + line.right(2) + ",once").toStdString()));
    bench_->duringExchange(line, [=, this] {
        if (by == "file")
            load();
        else
            bench_->click("CommandRdSettingsBp");
        look();
        unit_->say(reply.toLatin1() + "\r\n", bench_->clock.nowMs);
    });
}

/// The image and the window are the file's, whole.
void TestImageReplaced::verifyFile() {
    verifyIsOtherFile(*bench_);
    for (const char* field : {"TextFMDev", "TextFreqAccr", "TextFreqAccrRx", "TextFreqAccrTx"})
        QCOMPARE(bench_->text(field), "");
}

void TestImageReplaced::fileInARead_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<int>("lines");  // sent when the file is loaded
    for (const bool kirk : {false, true}) {
        const QStringList lines = readLines(kirk ? kKirk : kRm5);
        for (int i = 0; i < lines.size(); ++i)
            QTest::addRow("%s, %d: %s", kirk ? "Kirk" : "RM5", i, qPrintable(lines[i])) << kirk << i + 1;
    }
}

void TestImageReplaced::fileInARead() {
    QFETCH(bool, kirk);
    QFETCH(int, lines);
    bench_->store.put("RfModule", kirk ? "1" : "0");
    bench_->startWith(kirk ? kKirk : kRm5).setAvailable(0x06, false);
    afterLines(*bench_, lines, [this] { load(); });
    bench_->click("CommandRdSettingsBp");
    QStringList happened = bench_->journal.take();
    happened.removeAll("store RfModule=1");  // nobody answered about the module
    QCOMPARE(happened, QStringList({kLoad, kNoResponse}));
    QCOMPARE(bench_->status(), kReadFailed);
    QCOMPARE(bench_->wire.lines(), readLines(kirk ? kKirk : kRm5).first(lines));
    QVERIFY(!Bench::isHourglassUp());
    verifyFile();
}

void TestImageReplaced::fileInAnInnerRead() {
    bench_->startWith(kRm5).setAvailable(0x06, false);
    afterLines(*bench_, 7, [this] {
        afterLines(*bench_, 14, [this] { load(); });
        bench_->click("CommandRdSettingsBp");
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList({kLoad, kNoResponse, kNoResponse}));
    QCOMPARE(bench_->wire.lines().size(), 14);
    verifyFile();
    QCOMPARE(saved("copy.bpc"), contentOf(file_->path()));  // nothing fills the image any more
}

void TestImageReplaced::inAWrite_data() {
    QTest::addColumn<QString>("by");
    QTest::newRow("a file") << "file";
    QTest::newRow("a read") << "read";
}

void TestImageReplaced::inAWrite() {
    QFETCH(QString, by);
    plugInATalkingOne();
    bench_->click("CommandRdSettingsBp");
    const std::string before = unit_->dump();
    bench_->wire.forgetLines();
    qsizetype sent = 0;
    replaceDuring("# 0105", "# 028500", by, [&] { sent = bench_->wire.lines().size(); });
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(), opened(by) + QStringList(kNotWritten));
    QCOMPARE(bench_->status(), kReadFailed);
    QCOMPARE(bench_->wire.lines().size(), sent);
    QCOMPARE(QString::fromStdString(unit_->dump()), QString::fromStdString(before));
    if (by == "file")
        verifyFile();
    else
        QCOMPARE(imageOf(*bench_).at("01"), "0044303039");
}

void TestImageReplaced::inAnUpdate_data() {
    QTest::addColumn<QString>("by");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("reply");  // as to a value that was taken
    QTest::addColumn<QString>("what");
    for (const char* by : {"file", "read"}) {
        const auto row = [by](const char* button, const char* field, const char* typed, const char* line,
                              const char* reply, const char* what) {
            QTest::addRow("%s, %s", button, by) << by << button << field << typed << line << reply << what;
        };
        row("CommandSetBpId", "TextBeltpackId", "77777", "# 0101", "# 06810044312FD1", "PSN");
        row("CommandSetSysID", "TextParkB", "1123456A00", "# 0103", "# 06831123456A00", "System Id");
        row("CmdUpdatePli", "TextPli", "27", "# 0102", "# 028227", "PLI");
        row("CmdSetRfCarrs", "TextRfCarrs", "03FE0A0B0F", "# 010E", "# 068E03FE0A0B0F", "RF Carrier mask");
    }
}

void TestImageReplaced::inAnUpdate() {
    QFETCH(QString, by);
    QFETCH(QString, button);
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, line);
    QFETCH(QString, reply);
    QFETCH(QString, what);
    plugInATalkingOne();
    bench_->click("CommandRdSettingsBp");
    keys::empty(*bench_, field);
    keys::type(typed);
    std::map<QString, QString> image;
    replaceDuring(line, reply, by, [&] { image = imageOf(*bench_); });
    bench_->click(button);
    QCOMPARE(bench_->journal.take(), opened(by) + QStringList(kNotReadBack));
    QCOMPARE(bench_->status(), "black: Beltpack's " + what + " could not be updated.");
    QCOMPARE(imageOf(*bench_), image);
    if (by == "file")
        verifyFile();
}

void TestImageReplaced::readInARead_data() {
    QTest::addColumn<bool>("kirk");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("hasIt");
    for (const bool kirk : {false, true}) {
        for (const QString& line : readLines(kKirk).mid(2, 20)) {
            for (const bool hasIt : {false, true})
                QTest::addRow("%s, %s, %s", kirk ? "Kirk" : "RM5", qPrintable(line),
                              hasIt ? "silent once" : "missing")
                    << kirk << line << hasIt;
        }
    }
}

void TestImageReplaced::readInARead() {
    QFETCH(bool, kirk);
    QFETCH(QString, line);
    QFETCH(bool, hasIt);
    bench_->store.put("RfModule", kirk ? "1" : "0");
    sim::Beltpack& unit = bench_->startWith(kirk ? kKirk : kRm5);
    if (!hasIt)
        unit.setAvailable(line.right(2).toInt(nullptr, 16), false);
    bench_->click("CommandRdSettingsBp");
    const auto image = imageOf(*bench_);
    bench_->wire.forgetLines();
    if (hasIt)
        unit.addFault(sim::parseFault(("no-reply=" + line.right(2) + ",once").toStdString()));
    QString inner;
    bench_->duringExchange(line, [&] {
        bench_->click("CommandRdSettingsBp");
        inner = bench_->status();
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(inner, kReadDone);
    QCOMPARE(bench_->status(), kReadDone);
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(imageOf(*bench_), image);
    QVERIFY(!Bench::isHourglassUp());
    bench_->click("CommandWrite");  // of all that the unit has
    const qsizetype values = hasIt ? 21 : 20;
    QCOMPARE(bench_->wire.lines().filter(QRegularExpression("^# 0[26][45]")).size(), values);
}

void TestImageReplaced::writeInARead() {
    sim::Beltpack& unit = bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    bench_->wire.forgetLines();
    QStringList inner;
    unit.addFault(sim::parseFault("no-reply=05,once"));
    bench_->duringExchange("# 0105", [&] {
        bench_->click("CommandWrite");
        inner = QStringList{bench_->wire.lines().last(), bench_->status()};
    });
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(inner, QStringList({"# 0105", kReadFailed}));
    QCOMPARE(bench_->journal.take(), QStringList(kNotWritten));
    QCOMPARE(bench_->status(), kReadDone);
    QCOMPARE(bench_->wire.lines(), readLines(kRm5));
    bench_->click("CommandWrite");
    QCOMPARE(bench_->status(), "green: Settings written to Beltpack successfully!");
}

void TestImageReplaced::saveInARead() {
    bench_->startWith(kRm5);
    bench_->click("CommandRdSettingsBp");
    const QString path = folder_.filePath("other.bpc");
    QVERIFY(QFile::copy(file_->path(), path));
    const QByteArray before = contentOf(path);
    bench_->person.beforeOk([](QMessageBox& box) {
        if (auto* yes = box.button(QMessageBox::Yes))  // the file may be replaced
            hand::click(*yes);
    });
    QString inner;
    bench_->beltpack().addFault(sim::parseFault("no-reply=05,once"));
    bench_->duringExchange("# 0105", [&] {
        saved("other.bpc");
        inner = bench_->status();
    });
    bench_->click("CommandRdSettingsBp");
    const QStringList happened = bench_->journal.take();
    QCOMPARE(happened.size(), 3);
    QCOMPARE(happened.first(), kSave);
    QVERIFY2(happened[1].startsWith("box warning"), qPrintable(happened[1]));
    QCOMPARE(happened.last(), kNotSaved);
    QCOMPARE(inner, "black: Error while writing file.");
    QCOMPARE(contentOf(path), before);
    QCOMPARE(bench_->status(), kReadDone);
    QVERIFY(saved("new.bpc").startsWith("K4700\r\n0044303039\r\n"));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestImageReplaced, QApplication)
#include "test_image_replaced.moc"
