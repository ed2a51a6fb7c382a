#include <QClipboard>

#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QString kReadDone = "green: Settings read from Beltpack successfully.";
const QString kCleared = "black: ";

}  // namespace

/// What the fields of the identities do with typed and pasted characters.
class TestKeyFilters : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void typed_data();
    void typed();
    void unusualKeys_data();
    void unusualKeys();
    void pasted_data();
    void pasted();
    void pastedLines_data() { fields(); }
    void pastedLines();
    void editingKeys_data() { fields(); }
    void editingKeys();
    void deleteTypesNothing_data() { fields(); }
    void deleteTypesNothing();
    void composed_data();
    void composed();
    void composedInPlaceOfAnother();
    void status_data();
    void status();
    void clearedByEveryKey_data() { fields(); }
    void clearedByEveryKey();
    void swallowedKeyClearsToo();
    void pasteByMouseLeavesTheStatus();
    void parkBSplitsOnRelease();
    void heldKeyIsReleasedOnce();

private:
    static void fields();

    std::unique_ptr<Bench> bench_;
};

void TestKeyFilters::init() {
    renew(bench_);
    bench_->startWith(kRm5);
}

void TestKeyFilters::fields() {
    QTest::addColumn<QString>("field");
    for (const char* field :
         {"TextBeltpackId", "TextEic", "TextFpn", "TextFps", "TextParkB", "TextRfCarrs", "TextPli"})
        QTest::newRow(field) << field;
}

void TestKeyFilters::typed_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* field, const QString& keys, const QString& text) {
        QTest::addRow("%s, %s", field, qPrintable(keys)) << field << keys << text;
    };
    row("TextBeltpackId", "1a", "1");
    row("TextBeltpackId", "g", "");
    row("TextBeltpackId", "0123456789", "0123456789");
    row("TextBeltpackId", "1-2", "1-2");
    row("TextBeltpackId", "1 2", "1 2");
    row("TextBeltpackId", "!\"#$%&'()*+,-./", "!\"#$%&'()*+,-./");
    row("TextBeltpackId", ":;<=>?@[\\]^_`{|}~", "");
    row("TextBeltpackId", "AZaz", "");
    row("TextBeltpackId", QString::fromUtf8("1é2ж"), "12");
    for (const char* field : {"TextEic", "TextFpn", "TextFps", "TextParkB", "TextRfCarrs", "TextPli"}) {
        row(field, "abc", "ABC");
        row(field, "g", "G");
        row(field, "z{`@", "Z{`@");
        row(field, "ABC", "ABC");
        row(field, "1-2 3", "1-2 3");
        row(field, "0123456789", "0123456789");
        row(field, QString::fromUtf8("éñ"), QString::fromUtf8("éñ"));
    }
}

void TestKeyFilters::typed() {
    QFETCH(QString, field);
    QFETCH(QString, keys);
    QFETCH(QString, text);
    keys::empty(*bench_, field);
    keys::type(keys);
    QCOMPARE(bench_->text(field), text);
    QCOMPARE(bench_->journal.take(), QStringList());
    QCOMPARE(bench_->wire.lines(), QStringList());
}

// Some keyboards type several characters with one key, or further ones with Control and Alt.
void TestKeyFilters::unusualKeys_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::AltModifier;
    const auto row = [](const char* field, Qt::KeyboardModifiers modifiers, const QString& typed,
                        const QString& text) {
        QTest::addRow("%s, %s", field, qPrintable(typed)) << field << modifiers << typed << text;
    };
    row("TextBeltpackId", Qt::NoModifier, "a1b2", "12");
    row("TextBeltpackId", Qt::NoModifier, QString::fromUtf8("\xF0\x9F\x98\x80"), "");
    row("TextBeltpackId", both, "x", "");
    row("TextBeltpackId", both, "2", "2");
    row("TextEic", Qt::NoModifier, "ab", "AB");
    row("TextEic", both, "q", "Q");
}

void TestKeyFilters::unusualKeys() {
    QFETCH(QString, field);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(QString, typed);
    QFETCH(QString, text);
    keys::empty(*bench_, field);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, modifiers, typed);
    QCoreApplication::sendEvent(&bench_->control(field), &press);
    QCOMPARE(bench_->text(field), text);
}

// Only typing is filtered.
void TestKeyFilters::pasted_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("serial number") << "TextBeltpackId"
                                   << "1a2-Z";
    QTest::newRow("carriers") << "TextRfCarrs"
                              << "abcg 1";
    QTest::newRow("EIC") << "TextEic"
                         << "00ec";
    QTest::newRow("FPN") << "TextFpn"
                         << "*e*1";
    QTest::newRow("FPS") << "TextFps"
                         << "f";
    QTest::newRow("PARK B") << "TextParkB"
                            << "100ec";
    QTest::newRow("PLI") << "TextPli"
                         << "1f";
}

void TestKeyFilters::pasted() {
    QFETCH(QString, field);
    QFETCH(QString, text);
    keys::empty(*bench_, field);
    QApplication::clipboard()->setText(text);
    keys::control('V');
    QCOMPARE(bench_->text(field), text);
    QCOMPARE(bench_->wire.lines(), QStringList());
}

void TestKeyFilters::pastedLines() {
    QFETCH(QString, field);
    keys::empty(*bench_, field);
    keys::type("89");
    keys::press(Qt::Key_Left);
    QApplication::clipboard()->setText("1\r\n2\n3\r\n");
    keys::control('V');
    QCOMPARE(bench_->text(field), "81239");
    QCOMPARE(bench_->control<QLineEdit>(field).cursorPosition(), 4);
}

void TestKeyFilters::editingKeys() {
    QFETCH(QString, field);
    keys::empty(*bench_, field);
    keys::type("123");
    keys::press(Qt::Key_Backspace);
    QCOMPARE(bench_->text(field), "12");
    keys::press(Qt::Key_Left);
    keys::press(Qt::Key_Backspace);
    QCOMPARE(bench_->text(field), "2");
    keys::press(Qt::Key_Delete);
    QCOMPARE(bench_->text(field), "");
    keys::control('Z');
    QVERIFY(!bench_->text(field).isEmpty());
}

// From a real keyboard it comes with a character, which is no digit.
void TestKeyFilters::deleteTypesNothing() {
    QFETCH(QString, field);
    keys::empty(*bench_, field);
    keys::type("123");
    keys::press(Qt::Key_Home);
    bench_->click("CommandDectPPVerReq");
    bench_->window().link().status("stays", kBlack);
    bench_->control(field).setFocus();
    QTest::sendKeyEvent(QTest::Click, keys::activeWindow(), Qt::Key_Delete, "\x7F", Qt::NoModifier);
    QCOMPARE(bench_->text(field), "23");
    QCOMPARE(bench_->status(), "black: stays");
}

// With an input method, or a key for an accent and then its letter.
void TestKeyFilters::composed_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("committed");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* field, const QString& committed, const QString& text) {
        QTest::addRow("%s, %s", field, qPrintable(committed)) << field << committed << text;
    };
    row("TextBeltpackId", QString::fromUtf8("é"), "");
    row("TextBeltpackId", QString::fromUtf8("1é2z"), "12");
    row("TextEic", QString::fromUtf8("éb"), QString::fromUtf8("éB"));
    row("TextPli", "1f", "1F");
}

void TestKeyFilters::composed() {
    QFETCH(QString, field);
    QFETCH(QString, committed);
    QFETCH(QString, text);
    keys::empty(*bench_, field);
    auto& edit = bench_->control<QLineEdit>(field);
    const auto cursorAt = [&edit] { return edit.inputMethodQuery(Qt::ImCursorRectangle).toRect().x(); };
    const int before = cursorAt();
    QInputMethodEvent composing("xx", {{QInputMethodEvent::Cursor, 2, 1, {}}});
    QCoreApplication::sendEvent(&edit, &composing);
    QVERIFY(cursorAt() > before);  // seen, but not yet typed
    QCOMPARE(edit.text(), "");
    QInputMethodEvent done;
    done.setCommitString(committed);
    QCoreApplication::sendEvent(&edit, &done);
    QCOMPARE(edit.text(), text);
}

void TestKeyFilters::composedInPlaceOfAnother() {
    keys::empty(*bench_, "TextEic");
    keys::type("12ab");
    auto& edit = bench_->control<QLineEdit>("TextEic");
    QInputMethodEvent correction;
    correction.setCommitString("cd", -2, 1);
    QCoreApplication::sendEvent(&edit, &correction);
    QCOMPARE(edit.text(), "12CDB");
}

void TestKeyFilters::status_data() {
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("after");
    for (const char* field : {"TextBeltpackId", "TextEic", "TextFpn", "TextFps", "TextParkB", "TextRfCarrs"})
        QTest::newRow(field) << field << kCleared;
    QTest::newRow("TextPli") << "TextPli" << kReadDone;
}

void TestKeyFilters::status() {
    QFETCH(QString, field);
    QFETCH(QString, after);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->status(), kReadDone);
    hand::click(bench_->control(field));
    QCOMPARE(bench_->status(), kReadDone);  // the mouse is no key
    keys::typeOne('1');
    QCOMPARE(bench_->status(), after);
}

void TestKeyFilters::clearedByEveryKey() {
    QFETCH(QString, field);
    for (const QChar key : {QChar('a'), QChar(' '), QChar('-'), QChar('9'), QChar(u'é')}) {
        bench_->click("CommandRdSettingsBp");
        hand::click(bench_->control(field));
        keys::typeOne(key);
        QCOMPARE(bench_->status(), field == "TextPli" ? kReadDone : kCleared);
    }
    bench_->click("CommandRdSettingsBp");
    hand::click(bench_->control(field));
    keys::press(Qt::Key_Backspace);
    QCOMPARE(bench_->status(), field == "TextPli" ? kReadDone : kCleared);
}

void TestKeyFilters::swallowedKeyClearsToo() {
    bench_->click("CommandRdSettingsBp");
    const QString before = bench_->text("TextBeltpackId");
    hand::click(bench_->control("TextBeltpackId"));
    keys::typeOne('x');
    QCOMPARE(bench_->text("TextBeltpackId"), before);
    QCOMPARE(bench_->status(), kCleared);
}

void TestKeyFilters::pasteByMouseLeavesTheStatus() {
    bench_->click("CommandRdSettingsBp");
    QApplication::clipboard()->setText("abc");
    auto& field = bench_->control<QLineEdit>("TextRfCarrs");
    field.selectAll();
    field.paste();
    QCOMPARE(bench_->text("TextRfCarrs"), "abc");
    QCOMPARE(bench_->status(), kReadDone);
}

// A key held down repeats its press and, from some keyboards, a release before each: they count for nothing.
void TestKeyFilters::heldKeyIsReleasedOnce() {
    keys::empty(*bench_, "TextParkB");
    QWidget& field = bench_->control("TextParkB");
    QTest::keyPress(keys::activeWindow(), '1');
    for (int i = 0; i < 11; ++i) {
        for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent again(type, Qt::Key_1, Qt::NoModifier, "1", true);
            QApplication::sendEvent(&field, &again);
        }
    }
    QTest::keyRelease(keys::activeWindow(), '1');
    QCOMPARE(bench_->text("TextParkB"), QString(12, '1'));
    QCOMPARE(bench_->text("TextEic"), "");  // it was ten characters only in between
}

void TestKeyFilters::parkBSplitsOnRelease() {
    keys::empty(*bench_, "TextParkB");
    keys::type("3fedcba92");
    QCOMPARE(bench_->text("TextEic"), "");
    QTest::keyPress(keys::activeWindow(), '7');
    QCOMPARE(bench_->text("TextEic"), "");
    QTest::keyRelease(keys::activeWindow(), '7');
    QCOMPARE(bench_->text("TextEic"), "FEDC");
    QCOMPARE(bench_->text("TextFpn"), "*B*A");
    QCOMPARE(bench_->text("TextFps"), "9");
    QCOMPARE(bench_->text("TextParkB"), "3FEDCBA927");
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestKeyFilters, QApplication)
#include "test_key_filters.moc"
