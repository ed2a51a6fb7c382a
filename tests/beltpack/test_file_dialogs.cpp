#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QListView>
#include <QTemporaryDir>

#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kSaveEntry = dialogEntry("CommonDialog1", "Save settings...");
const QString kLoadEntry = dialogEntry("CommonDialog1", "Open File");
const QString kReadDone = "green: Settings read from Beltpack successfully.";
const QString kFileSaved = "black: Betpack settings saved to file successfully.";
const QString kFileLoaded = "black: Beltpack settings read from file successfully.";
const QString kFileNotLoaded = failureEntry("Error reading from file!");
const QString kFileNotSaved = failureEntry("Error writing Beltpack settings to file!");

QLineEdit& nameField(QDialog& dialog) {
    return *dialog.findChild<QLineEdit*>("fileNameEdit");
}

QPushButton& button(QDialog& dialog, QDialogButtonBox::StandardButton which) {
    return *dialog.findChild<QDialogButtonBox*>("buttonBox")->button(which);
}

/// Types a name over the one that is there, and Enter.
void answer(QDialog& dialog, const QString& name) {
    hand::click(nameField(dialog));
    keys::control('A');
    nameField(dialog).insert(name);  // pasted, so that no completion comes in between
    keys::press(Qt::Key_Return);
}

/// Puts a name into the field of an open dialog and ends it by Enter or by its button.
void open(QDialog& dialog, const QString& name, bool byButton) {
    if (!byButton) {
        answer(dialog, name);
        return;
    }
    nameField(dialog).setText(name);
    hand::click(button(dialog, QDialogButtonBox::Open));
}

void cancel(QDialog& dialog) {
    hand::click(button(dialog, QDialogButtonBox::Cancel));
}

}  // namespace

/// Saving and loading with the dialogs that a person meets.
class TestFileDialogs : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase() { QDir::setCurrent(before_); }
    void saveDialog();
    void loadDialog();
    void cancelled_data();
    void cancelled();
    void saveUnderTheProposedName();
    void noExtensionIsAdded();
    void overwriteRefused();
    void overwriteAgreed();
    void newFileIsNotAskedAbout();
    void mustExist_data();
    void mustExist();
    void anyNameIsOpened_data();
    void anyNameIsOpened();
    void proposedAsItStands_data();
    void proposedAsItStands();
    void goesOnInTheLastFolder();
    void savedFileIsFoundAgain_data();
    void savedFileIsFoundAgain();
    void loads();
    void loadLeavesTheEditors();
    void invalidFile();
    void emptyFileAndAfter();
    void writeAfterALoadAlone();
    void productionAfterALoadAlone();

private:
    void read();
    QString pathOf(const QString& name) const { return folder_.filePath(name); }
    void make(const QString& name, const QByteArray& content) const;
    QByteArray content(const QString& name) const;
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files); }
    void load(const QString& name);

    QString before_ = QDir::currentPath();
    QTemporaryDir folder_;
    std::unique_ptr<Bench> bench_;
};

void TestFileDialogs::initTestCase() {
    // Where the first dialog starts, and where later ones go on.
    QVERIFY(QDir::setCurrent(folder_.path()));
}

void TestFileDialogs::init() {
    bench_.reset();  // with whatever file it has open, which may not be removable before
    for (const QString& name : files())
        QVERIFY(QFile::remove(pathOf(name)));
    QFileDialog().setDirectory(folder_.path());  // the toolkit remembers one, from test to test
    renew(bench_);
    bench_->startWith(kRm5);
}

void TestFileDialogs::read() {
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    bench_->wire.forgetLines();
}

void TestFileDialogs::make(const QString& name, const QByteArray& content) const {
    QFile file(pathOf(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray TestFileDialogs::content(const QString& name) const {
    QFile file(pathOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

void TestFileDialogs::load(const QString& name) {
    bench_->person.plan([&](QDialog& dialog) { answer(dialog, name); });
    bench_->click("CommandRead");
}

void TestFileDialogs::saveDialog() {
    read();
    bench_->person.plan([](QDialog& dialog) {
        auto& chooser = dynamic_cast<QFileDialog&>(dialog);
        QCOMPARE(chooser.nameFilters(), QStringList({"Beltpack Config Files (*.bpc)", "All Files (*.*)"}));
        QCOMPARE(chooser.selectedNameFilter(), "Beltpack Config Files (*.bpc)");
        QCOMPARE(chooser.acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(nameField(dialog).text(), "12345");
        QVERIFY(nameField(dialog).isVisible());
        QCOMPARE(dialog.findChild<QComboBox*>("fileTypeCombo")->count(), 2);
        cancel(dialog);
    });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take(), QStringList{kSaveEntry});
}

void TestFileDialogs::loadDialog() {
    read();
    bench_->person.plan([](QDialog& dialog) {
        auto& chooser = dynamic_cast<QFileDialog&>(dialog);
        QCOMPARE(chooser.nameFilters(), QStringList({"Beltpack Config Files (*.bpc)", "All Files (*.*)"}));
        QCOMPARE(chooser.acceptMode(), QFileDialog::AcceptOpen);
        QCOMPARE(chooser.fileMode(), QFileDialog::ExistingFile);
        QCOMPARE(nameField(dialog).text(), "");
        cancel(dialog);
    });
    bench_->click("CommandRead");
    QCOMPARE(bench_->journal.take(), QStringList{kLoadEntry});
}

void TestFileDialogs::cancelled_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("save") << "CommandSave" << kSaveEntry << false;
    QTest::newRow("save, Escape") << "CommandSave" << kSaveEntry << true;
    QTest::newRow("load") << "CommandRead" << kLoadEntry << false;
    QTest::newRow("load, Escape") << "CommandRead" << kLoadEntry << true;
}

void TestFileDialogs::cancelled() {
    QFETCH(QString, command);
    QFETCH(QString, entry);
    QFETCH(bool, byKey);
    read();
    bench_->person.plan([&](QDialog& dialog) {
        if (byKey)
            keys::press(Qt::Key_Escape);
        else
            cancel(dialog);
    });
    bench_->click(command);
    QCOMPARE(bench_->journal.take(), QStringList{entry});
    QCOMPARE(bench_->status(), kReadDone);
    QCOMPARE(files(), QStringList());
}

void TestFileDialogs::saveUnderTheProposedName() {
    read();
    bench_->person.plan([](QDialog& dialog) { hand::click(button(dialog, QDialogButtonBox::Save)); });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take(), QStringList{kSaveEntry});
    QCOMPARE(bench_->status(), kFileSaved);
    QCOMPARE(files(), QStringList{"12345"});
    const QByteArray bytes = content("12345");
    QVERIFY(bytes.startsWith("K4700\r\n0044303039\r\n1F        \r\n"));
    QCOMPARE(bytes.count("\r\n"), 22);
    QCOMPARE(bytes.size(), 7 + 21 * 12);
}

void TestFileDialogs::noExtensionIsAdded() {
    read();
    for (const char* name : {"plain", "dotted.txt", "unit.bpc"}) {
        bench_->person.plan([&](QDialog& dialog) { answer(dialog, name); });
        bench_->click("CommandSave");
        QCOMPARE(bench_->journal.take(), QStringList{kSaveEntry});
    }
    QCOMPARE(files(), QStringList({"dotted.txt", "plain", "unit.bpc"}));
}

void TestFileDialogs::overwriteRefused() {
    read();
    make("12345", "before");
    QString question;
    bench_->person.beforeOk([&](QMessageBox& box) {
        question = box.text();
        hand::click(*box.button(QMessageBox::No));
    });
    bench_->person.plan([](QDialog& dialog) {
        hand::click(button(dialog, QDialogButtonBox::Save));
        QVERIFY(dialog.isVisible());
        cancel(dialog);
    });
    bench_->click("CommandSave");
    QVERIFY2(question.contains("12345"), qPrintable(question));
    QCOMPARE(content("12345"), QByteArray("before"));
    QCOMPARE(bench_->status(), kReadDone);
    QCOMPARE(bench_->journal.take().size(), 2);
}

void TestFileDialogs::overwriteAgreed() {
    read();
    make("12345", QByteArray(100'000, 'x'));
    bench_->person.beforeOk([&](QMessageBox& box) { hand::click(*box.button(QMessageBox::Yes)); });
    bench_->person.plan([](QDialog& dialog) { hand::click(button(dialog, QDialogButtonBox::Save)); });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take().size(), 2);
    QCOMPARE(content("12345").size(), 7 + 21 * 12);
    QCOMPARE(bench_->status(), kFileSaved);
}

void TestFileDialogs::newFileIsNotAskedAbout() {
    read();
    make("12345.bpc", "another");
    bench_->person.plan([](QDialog& dialog) { hand::click(button(dialog, QDialogButtonBox::Save)); });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take(), QStringList{kSaveEntry});
    QCOMPARE(content("12345.bpc"), QByteArray("another"));
}

void TestFileDialogs::mustExist_data() {
    QTest::addColumn<bool>("byButton");
    QTest::newRow("Enter") << false;
    QTest::newRow("button") << true;
}

void TestFileDialogs::mustExist() {
    QFETCH(bool, byButton);
    read();
    bool stays = false;
    bench_->person.plan([&](QDialog& dialog) {
        open(dialog, pathOf("missing.bpc"), byButton);
        stays = dialog.isVisible();
        cancel(dialog);
    });
    bench_->click("CommandRead");
    QVERIFY(stays);
    const QStringList happened = bench_->journal.take();
    QCOMPARE(happened.size(), 2);
    QVERIFY2(happened[1].startsWith("box ") && happened[1].contains("missing.bpc"), qPrintable(happened[1]));
    QCOMPARE(bench_->status(), kReadDone);
}

void TestFileDialogs::anyNameIsOpened_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("byButton");
    for (const char* name : {"12345", "unit.txt", "unit.bpc"}) {
        QTest::addRow("%s by Enter", name) << name << false;
        QTest::addRow("%s by the button", name) << name << true;
    }
}

// The filter says what is listed, not what may be opened.
void TestFileDialogs::anyNameIsOpened() {
    QFETCH(QString, name);
    QFETCH(bool, byButton);
    make(name, "K4700\r\n00443186A0\r\n");
    bench_->person.plan([&](QDialog& dialog) { open(dialog, pathOf(name), byButton); });
    bench_->click("CommandRead");
    QCOMPARE(bench_->journal.take(), QStringList{kLoadEntry});
    QCOMPARE(bench_->text("TextBeltpackId"), "100000");
}

void TestFileDialogs::proposedAsItStands_data() {
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "..", "/", "1/2", "-1.5"})
        QTest::newRow(text) << text;
}

void TestFileDialogs::proposedAsItStands() {
    QFETCH(QString, text);
    read();
    bench_->control<QLineEdit>("TextBeltpackId").setText(text);
    QString folder;
    bench_->person.plan([&](QDialog& dialog) {
        folder = dynamic_cast<QFileDialog&>(dialog).directory().absolutePath();
        QCOMPARE(nameField(dialog).text(), text);
        cancel(dialog);
    });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take(), QStringList{kSaveEntry});
    QCOMPARE(folder, folder_.path());
}

void TestFileDialogs::goesOnInTheLastFolder() {
    read();
    const QTemporaryDir other;
    bench_->person.plan([&](QDialog& dialog) { answer(dialog, other.filePath("unit.bpc")); });
    bench_->click("CommandSave");
    QCOMPARE(bench_->status(), kFileSaved);
    for (const char* button : {"CommandSave", "CommandRead"}) {
        QString folder;
        bench_->person.plan([&](QDialog& dialog) {
            folder = dynamic_cast<QFileDialog&>(dialog).directory().absolutePath();
            cancel(dialog);
        });
        bench_->click(button);
        QCOMPARE(folder, other.path());
    }
}

// The dialog adds no extension, so a file may well have none: "All Files" must show it.
void TestFileDialogs::savedFileIsFoundAgain_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("filter");
    QTest::addColumn<bool>("listed");
    QTest::newRow("settings file") << "12345.bpc" << 0 << true;
    QTest::newRow("settings file among all") << "12345.bpc" << 1 << true;
    QTest::newRow("another one") << "12345.txt" << 0 << false;
    QTest::newRow("another one among all") << "12345.txt" << 1 << true;
    QTest::newRow("without extension among all") << "12345" << 1 << true;
}

void TestFileDialogs::savedFileIsFoundAgain() {
    QFETCH(QString, name);
    QFETCH(int, filter);
    QFETCH(bool, listed);
    make(name, "K4700\r\n");
    make("reference.bpc", "K4700\r\n");
    bool found = false;
    bench_->person.plan([&](QDialog& dialog) {
        auto& types = *dialog.findChild<QComboBox*>("fileTypeCombo");
        types.setFocus();
        if (filter == 1)
            keys::press(Qt::Key_Down);
        QCOMPARE(types.currentIndex(), filter);
        const auto& list = *dialog.findChild<QListView*>("listView");
        const auto holds = [&](const QString& wanted) {
            for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row) {
                if (list.model()->index(row, 0, list.rootIndex()).data().toString() == wanted)
                    return true;
            }
            return false;
        };
        QTRY_VERIFY(holds("reference.bpc"));  // the list is filled now
        found = holds(name);
        cancel(dialog);
    });
    bench_->click("CommandRead");
    QCOMPARE(found, listed);
}

void TestFileDialogs::loads() {
    make("unit.bpc", "K4700\r\n00443186A0\r\n27\r\n3123456A27\r\n");
    bench_->control<QLineEdit>("TextFMDev").setText("1");
    bench_->control<QLineEdit>("TextFreqAccr").setText("2");
    bench_->control<QLineEdit>("TextFreqAccrRx").setText("3");
    bench_->control<QLineEdit>("TextFreqAccrTx").setText("4");
    bench_->control<QLineEdit>("TextRssiThr").setText("5");
    bench_->control<QLineEdit>("TextPli").setText("6");
    load(pathOf("unit.bpc"));
    QCOMPARE(bench_->journal.take(), QStringList{kLoadEntry});
    QCOMPARE(bench_->status(), kFileLoaded);
    for (const char* field : {"TextFMDev", "TextFreqAccr", "TextFreqAccrRx", "TextFreqAccrTx"})
        QCOMPARE(bench_->text(field), "");
    QCOMPARE(bench_->text("TextRssiThr"), "5");
    QCOMPARE(bench_->text("TextPli"), "6");
    QCOMPARE(bench_->text("TextBeltpackId"), "100000");
    QCOMPARE(bench_->text("TextEic"), "1234");
    QCOMPARE(bench_->text("TextFpn"), "*5*6");
    QCOMPARE(bench_->text("TextFps"), "A");
    QCOMPARE(bench_->text("TextParkB"), "1123456A00");
    QCOMPARE(bench_->text("TextRfCarrs"), "0         ");
    for (const char* name : {"CommandSave", "CommandSummary", "CommandWrite"})
        QVERIFY(bench_->control(name).isEnabled());
    auto image = imageOf(*bench_);
    QCOMPARE(image["02"], "27        ");
    QCOMPARE(image["15"], "0         ");
    QCOMPARE(bench_->wire.lines(), QStringList());
}

void TestFileDialogs::loadLeavesTheEditors() {
    sim::Beltpack& unit = bench_->beltpack();
    QVERIFY(unit.setValue(0x06, "01") && unit.setValue(0x07, "02"));
    read();
    make("unit.bpc", "K4700\r\n");
    load(pathOf("unit.bpc"));
    QVERIFY(bench_->control<QAbstractButton>("checkBattAlarm").isChecked());
    QVERIFY(bench_->control<QAbstractButton>("optionMICElectret").isChecked());
    QCOMPARE(imageOf(*bench_)["07"], "0         ");
}

void TestFileDialogs::invalidFile() {
    make("photo.bpc", "not settings\r\n");
    load(pathOf("photo.bpc"));
    QCOMPARE(bench_->journal.take(),
             QStringList({kLoadEntry, failureEntry(QDir::toNativeSeparators(pathOf("photo.bpc")) +
                                                   "\r\n is not a valid QuorvexCfg file.")}));
    QCOMPARE(bench_->status(), kFileLoaded);
    QVERIFY(!bench_->control("CommandWrite").isEnabled());
    QCOMPARE(bench_->text("TextBeltpackId"), "");
    make("good.bpc", "K4700\r\n00443186A0\r\n");
    load(pathOf("good.bpc"));
    QCOMPARE(bench_->text("TextBeltpackId"), "100000");
}

void TestFileDialogs::emptyFileAndAfter() {
    read();
    make("empty.bpc", "");
    make("good.bpc", "K4700\r\n00443186A0\r\n");
    for (const char* name : {"empty.bpc", "good.bpc"}) {
        load(pathOf(name));
        QCOMPARE(bench_->journal.take(), QStringList({kLoadEntry, kFileNotLoaded}));
        QCOMPARE(bench_->status(), "black: Error while reading Beltpack settings from file.");
    }
    bench_->person.plan([](QDialog& dialog) { hand::click(button(dialog, QDialogButtonBox::Save)); });
    bench_->click("CommandSave");
    QCOMPARE(bench_->journal.take(), QStringList({kSaveEntry, kFileNotSaved}));
    QCOMPARE(bench_->status(), "black: Error while writing file.");
    QCOMPARE(bench_->text("TextBeltpackId"), "12345");
}

void TestFileDialogs::writeAfterALoadAlone() {
    make("unit.bpc", "K4700\r\n00443186A0\r\n");
    load(pathOf("unit.bpc"));
    bench_->journal.take();
    bench_->click("CommandWrite");
    QCOMPARE(bench_->journal.take(),
             QStringList{failureEntry("Error occured while writing settings to Beltpack!\r\n\r\n"
                                      "Check connection to Beltpack.")});
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->status(), "black: Error communicating with Beltpack.");
}

void TestFileDialogs::productionAfterALoadAlone() {
    make("unit.bpc", "K4700\r\n00443186A0\r\n");
    load(pathOf("unit.bpc"));
    bench_->journal.take();
    bench_->click("buttonSetProdSettiings");
    QCOMPARE(bench_->journal.take(),
             QStringList({failureEntry("Run-time error '13':\r\n\r\nType mismatch"), "close", "end 1"}));
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(imageOf(*bench_)["04"], "0         ");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestFileDialogs, QApplication)
#include "test_file_dialogs.moc"
