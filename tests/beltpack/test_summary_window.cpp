#include <QClipboard>
#include <QFontInfo>
#include <QScreen>
#include <QScrollBar>
#include <QTextBlock>

#include "tests/support/image_view.h"
#include "tests/support/keys.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

constexpr int kLines = 23;
const QString kEntry = dialogEntry("FormCfgSummary", "Registration Configuration Summary");

}  // namespace

/// The dialog of the summary.
class TestSummaryWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void text();
    void allLinesAreSeen();
    void columnsStandInLine();
    void face_data();
    void face();
    void fitsTheScreen();
    void copiedByKeys();
    void copiedByMouse();
    void cannotBeEdited();
    void closes_data();
    void closes();
    void madeAfresh();

private:
    /// Opens the dialog, looks at it and closes it.
    void look(const std::function<void(QDialog&, QTextEdit&)>& at);

    std::unique_ptr<Bench> bench_;
};

void TestSummaryWindow::init() {
    renew(bench_);
    sim::Beltpack& unit = bench_->startWith(kRm5);
    QVERIFY(unit.setValue(0x0E, "WWWWWWWWWW") || unit.setValue(0x0E, "DDDDDDDDDD"));
    unit.setAvailable(0x0D, false);
    bench_->click("CommandRdSettingsBp");
    QCOMPARE(bench_->journal.take(), QStringList());
    bench_->wire.forgetLines();
}

void TestSummaryWindow::look(const std::function<void(QDialog&, QTextEdit&)>& at) {
    bool seen = false;
    bench_->person.plan([&](QDialog& dialog) {
        seen = true;
        at(dialog, *dialog.findChild<QTextEdit*>("TextSummary"));
        hand::click(*dialog.findChild<QWidget*>("CommandOK"));
    });
    bench_->click("CommandSummary");
    QVERIFY(seen);
    QCOMPARE(bench_->journal.take(), QStringList{kEntry});
}

void TestSummaryWindow::text() {
    look([](QDialog& dialog, QTextEdit& edit) {
        const QStringList lines = edit.toPlainText().split('\n');
        QCOMPARE(lines.size(), kLines + 1);
        QCOMPARE(lines[0], "Param  Description              Data");
        QCOMPARE(lines[1], QString(44, '-'));
        QCOMPARE(lines[2], "01     Beltpack PSN/ID          0044303039");
        QCOMPARE(lines[14], "0D     PTT Switch               N/A       ");
        QCOMPARE(lines[20], "13     Mic Noise Gate Enabl     " + lines[20].mid(32));
        QVERIFY(lines[22].startsWith("15     Feature Map              "));
        QCOMPARE(lines[23], "");
        for (int i = 2; i < kLines; ++i)
            QCOMPARE(lines[i].size(), 42);
        const auto* ok = dialog.findChild<QPushButton*>("CommandOK");
        QCOMPARE(ok->text(), "&OK");
    });
    QCOMPARE(bench_->wire.lines(), QStringList());
    QCOMPARE(bench_->status(), "green: Settings read from Beltpack successfully.");
}

void TestSummaryWindow::allLinesAreSeen() {
    look([](QDialog& dialog, QTextEdit& edit) {
        QCOMPARE(edit.verticalScrollBar()->maximum(), 0);
        QCOMPARE(edit.horizontalScrollBar()->maximum(), 0);
        QVERIFY(!edit.verticalScrollBar()->isVisible());
        QVERIFY(!edit.horizontalScrollBar()->isVisible());
        const QRect view = edit.viewport()->rect();
        for (int i = 0; i < kLines; ++i) {
            QTextCursor cursor(edit.document()->findBlockByNumber(i));
            QVERIFY2(view.contains(edit.cursorRect(cursor)), qPrintable(QString::number(i)));
            cursor.movePosition(QTextCursor::EndOfBlock);
            QVERIFY2(view.contains(edit.cursorRect(cursor)), qPrintable(QString::number(i)));
        }
        QVERIFY(dialog.rect().contains(edit.geometry()));
    });
}

void TestSummaryWindow::columnsStandInLine() {
    look([](QDialog&, QTextEdit& edit) {
        for (const int column : {7, 32}) {
            QSet<int> places;
            for (int i = 0; i < kLines; ++i) {
                if (i == 1)
                    continue;
                QTextCursor cursor(edit.document()->findBlockByNumber(i));
                cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, column);
                places << edit.cursorRect(cursor).x();
            }
            QCOMPARE(places.size(), 1);
        }
    });
}

void TestSummaryWindow::face_data() {
    QTest::addColumn<int>("windowPoints");
    QTest::addColumn<double>("points");
    QTest::newRow("default") << 9 << 9.75;
    QTest::newRow("larger") << 14 << 14.0;
}

void TestSummaryWindow::face() {
    QFETCH(int, windowPoints);
    QFETCH(double, points);
    const QFont before = QApplication::font();
    const auto restore = qScopeGuard([before] { QApplication::setFont(before); });
    QFont larger = before;
    larger.setPointSize(windowPoints);
    QApplication::setFont(larger);
    look([&](QDialog&, QTextEdit& edit) {
        QCOMPARE(edit.font().family(), "Courier");
        QCOMPARE(edit.font().pointSizeF(), points);
        QVERIFY(QFontInfo(edit.font()).fixedPitch());
    });
}

void TestSummaryWindow::fitsTheScreen() {
    look([](QDialog& dialog, QTextEdit&) {
        const QSize size = dialog.frameGeometry().size();
        QVERIFY2(size.width() <= 1024 && size.height() <= 768,
                 qPrintable(QString("%1 x %2").arg(size.width()).arg(size.height())));
    });
}

void TestSummaryWindow::copiedByKeys() {
    look([](QDialog&, QTextEdit& edit) {
        QApplication::clipboard()->setText("before");
        hand::click(*edit.viewport());
        keys::control('A');
        keys::control('C');
        QCOMPARE(QApplication::clipboard()->text(), edit.toPlainText());
        QVERIFY(QApplication::clipboard()->text().contains("0044303039"));
    });
}

void TestSummaryWindow::copiedByMouse() {
    look([](QDialog& dialog, QTextEdit& edit) {
        QTextCursor from(edit.document()->findBlockByNumber(2));
        QTextCursor to = from;
        from.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 32);
        to.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 42);
        QWidget* view = edit.viewport();
        const QPoint start = view->mapTo(&dialog, edit.cursorRect(from).center());
        const QPoint end = view->mapTo(&dialog, edit.cursorRect(to).center());
        QTest::mousePress(dialog.windowHandle(), Qt::LeftButton, {}, start);
        QTest::mouseMove(dialog.windowHandle(), (start + end) / 2);
        QTest::mouseMove(dialog.windowHandle(), end);
        QTest::mouseRelease(dialog.windowHandle(), Qt::LeftButton, {}, end);
        QCOMPARE(edit.textCursor().selectedText(), "0044303039");
        keys::control('C');
        QCOMPARE(QApplication::clipboard()->text(), "0044303039");
    });
}

void TestSummaryWindow::cannotBeEdited() {
    look([](QDialog&, QTextEdit& edit) {
        const QString before = edit.toPlainText();
        hand::click(*edit.viewport());
        keys::type("xyz");
        keys::press(Qt::Key_Delete);
        keys::control('V');
        QCOMPARE(edit.toPlainText(), before);
    });
}

void TestSummaryWindow::closes_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void TestSummaryWindow::closes() {
    QFETCH(int, key);
    bench_->person.plan([&](QDialog& dialog) {
        QVERIFY(dialog.isModal());
        keys::press(static_cast<Qt::Key>(key));
        QVERIFY(!dialog.isVisible());
    });
    bench_->click("CommandSummary");
    QCOMPARE(bench_->journal.take(), QStringList{kEntry});
    QVERIFY(bench_->window().isVisible());
}

void TestSummaryWindow::madeAfresh() {
    bench_->click("optionMICElectret");
    QCOMPARE(imageOf(*bench_)["07"], "02        ");
    bench_->click("optionMICBal");
    QCOMPARE(imageOf(*bench_)["07"], "00        ");
    QVERIFY(bench_->window().findChildren<QDialog*>().isEmpty());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSummaryWindow, QApplication)
#include "test_summary_window.moc"
