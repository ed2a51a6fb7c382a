#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

#include "rscreen/screen_bezel.h"
#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

/// What the page shows of saving: where a picture will go, and that it went there. And the bezel that tells
/// it.
class TestSavedSign : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nothingAtFirst();
    void saved();
    void savedElsewhere();
    void longPath();
    void failed();
    void placeholder();
    void bezel_data();
    void bezel();

private:
    ScreenBezel& bezelOnPage() { return dynamic_cast<ScreenBezel&>(*page_->picture().parentWidget()); }
    /// As paths are shown.
    static QString shown(const QString& path) { return QDir::toNativeSeparators(path); }
    /// The line below the controls, which has no name; null while there is none in sight.
    QLabel* line() {
        for (auto* label : bezelOnPage().parentWidget()->findChildren<QLabel*>(QString())) {
            if (label->objectName().isEmpty() && label->isVisible())
                return label;
        }
        return nullptr;
    }

    QString before_;  ///< folder of the process
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<ScreenPage> page_;
};

void TestSavedSign::init() {
    before_ = QDir::currentPath();
    folder_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(folder_->path()));
    page_ = std::make_unique<ScreenPage>();
    page_->toFront();
}

void TestSavedSign::cleanup() {
    QCOMPARE(page_->bench.journal.take(), QStringList());
    page_.reset();
    QVERIFY(QDir::setCurrent(before_));
}

void TestSavedSign::nothingAtFirst() {
    QVERIFY(!line());
    QVERIFY(!bezelOnPage().isLit());
}

void TestSavedSign::saved() {
    const QString status = page_->bench.status();
    const QColor dark = bezelOnPage().grab().toImage().pixelColor(20, 20);
    page_->type("screenDump", folder_->path() + '/');
    page_->bench.click("CommandScreenDump");
    QVERIFY(bezelOnPage().isLit());
    QVERIFY(bezelOnPage().grab().toImage().pixelColor(20, 20) != dark);
    QCOMPARE(page_->picture().grab().toImage().convertToFormat(QImage::Format_RGB32), ScreenPage::drawn({}));
    QVERIFY(line());
    QCOMPARE(line()->toolTip(), shown(folder_->filePath("Grab1.bmp")));
    QTRY_VERIFY(!bezelOnPage().isLit());
    QCOMPARE(bezelOnPage().grab().toImage().pixelColor(20, 20), dark);
    QVERIFY(line());
    QCOMPARE(page_->bench.status(), status);
    QCOMPARE(page_->bench.control("CommandScreenDump").toolTip(), "");
}

void TestSavedSign::savedElsewhere() {
    page_->type("screenDump", "b");
    page_->bench.click("CommandScreenDump");
    QVERIFY(QFile::exists("bGrab1.bmp"));
    QCOMPARE(line()->toolTip(), shown(QDir::current().filePath("bGrab1.bmp")));
    QVERIFY(line()->text().startsWith("Saved as " + shown(QDir::rootPath())));
    page_->bench.click("AutoIncrementOption");
    page_->bench.click("CommandScreenDump");
    QCOMPARE(line()->toolTip(), shown(QDir::current().filePath("bGrab10.bmp")));
}

void TestSavedSign::longPath() {
    const QString deep = folder_->path() + "/" + QString(100, 'W') + "/" + QString(100, 'M') + "/";
    QVERIFY(QDir().mkpath(deep));
    const QSize before = page_->bench.window().size();
    page_->bench.control<QLineEdit>("screenDump").setText(deep);
    page_->bench.click("CommandScreenDump");
    QCoreApplication::processEvents();
    QCOMPARE(line()->toolTip(), shown(deep + "Grab1.bmp"));
    QVERIFY(line()->text().endsWith("Grab1.bmp"));
    QVERIFY(line()->sizeHint().width() <= line()->width());
    QCOMPARE(page_->bench.window().size(), before);
}

void TestSavedSign::failed() {
    page_->bench.click("CommandScreenDump");
    QVERIFY(line());
    QTRY_VERIFY(!bezelOnPage().isLit());
    page_->type("screenDump", folder_->filePath("none/"));
    page_->bench.click("CommandScreenDump");
    QCOMPARE(page_->bench.journal.take().size(), 1);  // its box
    QVERIFY(!line());
    QVERIFY(!bezelOnPage().isLit());
}

// It tells the truth: that is where the picture goes.
void TestSavedSign::placeholder() {
    const auto& root = page_->bench.control<QLineEdit>("screenDump");
    QCOMPARE(root.text(), "");
    QCOMPARE(root.placeholderText(), shown(QDir::currentPath() + '/'));
    page_->bench.click("CommandScreenDump");
    QVERIFY(QFile::exists(root.placeholderText() + "Grab1.bmp"));
}

void TestSavedSign::bezel_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestSavedSign::bezel() {
    QFETCH(bool, dark);
    const QPalette before = QApplication::palette();
    if (dark)
        QApplication::setPalette(QPalette(QColor(50, 50, 50)));
    const QRect around = bezelOnPage().rect();
    const QRect picture = page_->picture().geometry();
    constexpr int kLeastMargin = 16;
    QVERIFY(around.adjusted(kLeastMargin, kLeastMargin, -kLeastMargin, -kLeastMargin).contains(picture));
    QVERIFY(qAbs(picture.center().x() - around.center().x()) <= 1);
    QVERIFY(qAbs(picture.center().y() - around.center().y()) <= 1);
    const QImage seen = bezelOnPage().grab().toImage();
    for (const QPoint place : {QPoint(20, 8), picture.topLeft() - QPoint(3, 3)})
        QVERIFY(qGray(seen.pixel(place)) < 40);
    // The controls are not wider than what they save.
    const QWidget& frame = *bezelOnPage().parentWidget();
    for (const char* name : {"screenDump", "CommandScreenDump"})
        QVERIFY(page_->bench.control(name).mapTo(&frame, QPoint(page_->bench.control(name).width(), 0)).x() <=
                bezelOnPage().geometry().right() + 1);
    QApplication::setPalette(before);
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestSavedSign, QApplication)
#include "test_saved_sign.moc"
