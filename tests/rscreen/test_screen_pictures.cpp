#include <QDir>
#include <QTemporaryDir>

#include "rscreen/screen_bezel.h"
#include "simulator/menu_picture.h"
#include "tests/rscreen/screen_page.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

/// The page after three pictures of the display were saved in `folder`.
QImage pictureOfSaving(const QString& folder) {
    ScreenPage page;
    page.toFront();
    constexpr int kVolume = 16;
    page.show(QByteArray::fromStdString(sim::drawMenu(0, kVolume).bytes()));
    page.bench.control<QLineEdit>("screenDump").setText(folder + '/');
    page.bench.control<QLineEdit>("ScreenDumpFName").setText("Screen");
    page.bench.click("AutoIncrementOption");
    for (const char* next : {"1", "2", "3"}) {
        page.bench.click("CommandScreenDump");
        if (page.bench.text("autoIncValText") != next)
            return {};
    }
    const auto& bezel = dynamic_cast<ScreenBezel&>(*page.picture().parentWidget());
    if (!QTest::qWaitFor([&] { return !bezel.isLit(); }))
        return {};
    page.bench.journal.take();
    return page.bench.window().grab().toImage();
}

}  // namespace

/// The page of the remote screen as the manual shows it, with a display that stands still. With
/// QUORVEX_WRITE_PICTURES the picture is written into that folder.
class TestScreenPictures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void saving();
};

void TestScreenPictures::saving() {
    const QTemporaryDir temporary;
    const QString folder = qEnvironmentVariable("QUORVEX_WRITE_PICTURES", temporary.path());
    const QImage picture = pictureOfSaving(folder);
    QVERIFY(!picture.isNull());
    QCOMPARE(pictureOfSaving(folder), picture);
    if (folder != temporary.path())
        QVERIFY(picture.save(QDir(folder).filePath("screen-saved.png")));
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestScreenPictures, QApplication)
#include "test_screen_pictures.moc"
