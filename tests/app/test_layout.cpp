#include <QAbstractButton>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QStyleOptionFrame>
#include <QTabWidget>
#include <algorithm>

#include "form/frame.h"
#include "tests/support/bench.h"
#include "tests/support/registry.h"

namespace quorvex {

namespace {

const QStringList kPages{"BeltPack", "Active Antenna", "R-Screen"};

// What only a Kirk has: three frequency values a target, and the threshold.
const QStringList kKirkOnly{
    "TextFreqAccrTx", "TextFreqAccrRx", "LabelRx",        "LabelTx",      "LabelMid",   "TextFreqAdjTxA",
    "TextFreqAdjRxA", "TextFreqAdjTxB", "TextFreqAdjRxB", "LabelTxA",     "LabelRxA",   "LabelMidA",
    "LabelTxB",       "LabelMidB",      "LabelRxB",       "LabelRssiThr", "TextRssiThr"};

constexpr int kDefaultPoints = 9;

void setFontSize(int points) {
    QFont face = QApplication::font();
    face.setPointSize(points);
    QApplication::setFont(face);
}

QString nameOf(const QWidget& widget) {
    if (!widget.objectName().isEmpty())
        return widget.objectName();
    const QVariant text = widget.property("text");
    return text.isValid() ? text.toString() : QString::fromLatin1(widget.metaObject()->className());
}

bool hasLabel(const QWidget& control) {
    const auto labels = control.window()->findChildren<QLabel*>();
    return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
        return label->buddy() == &control && label->isVisible() && !label->text().isEmpty();
    });
}

QList<QWidget*> visibleChildren(const QWidget& parent) {
    QList<QWidget*> found;
    for (QWidget* child : parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->isVisible())
            found << child;
    }
    return found;
}

}  // namespace

/// Where the controls lie, for each radio module.
class TestLayout : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(bench_); }
    void cleanup();
    void modulePositions_data();
    void modulePositions();
    void moduleCaptions_data();
    void moduleCaptions();
    void moduleControls_data();
    void moduleControls();
    void fitsTheScreen_data() { pagesAndModules(); }
    void fitsTheScreen();
    void captionsAreWhole_data() { pagesModulesAndFonts(); }
    void captionsAreWhole();
    void nothingOverlaps_data() { pagesModulesAndFonts(); }
    void nothingOverlaps();
    void fieldsHoldTheirText_data();
    void fieldsHoldTheirText();
    void hexadecimalIsFixedPitch_data();
    void hexadecimalIsFixedPitch();
    void hexadecimalFieldsGoByTheirDigits();
    void buttonsBesideFieldsAreAlike();
    void columnsBeginTogether();
    void controlsSayWhatTheyAre_data() { pagesAndModules(); }
    void controlsSayWhatTheyAre();
    void columnsEndOnOneLine_data() { modules(); }
    void columnsEndOnOneLine();
    void fieldsAreOfOneHeight_data() { pagesModulesAndFonts(); }
    void fieldsAreOfOneHeight();
    void facesAreOfOneSize_data() { pagesModulesAndFonts(); }
    void facesAreOfOneSize();
    void calibrationButtonFollowsTheValues_data();
    void calibrationButtonFollowsTheValues();
    void enlargedWindowKeepsItTogether_data() { pagesAndModules(); }
    void enlargedWindowKeepsItTogether();
    void titlesHaveRoom();
    void longStatusDoesNotWidenTheWindow();

private:
    static void modules();
    /// The rectangle of a control in the window.
    QRect inWindow(const QString& name) {
        const QWidget& control = bench_->control(name);
        return {control.mapTo(&bench_->window(), QPoint()), control.size()};
    }
    void pagesAndModules() { rowsFor({9}); }
    void pagesModulesAndFonts() { rowsFor({9, 11, 14, 18}); }
    static void rowsFor(const QList<int>& fontPoints);
    void startAsRow();

    std::unique_ptr<Bench> bench_;
};

void TestLayout::modulePositions_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("leftTwips");  // -1: not moved by the layout
    QTest::addColumn<int>("topTwips");
    for (const char* type : {"0", "5"}) {
        for (const char* field : {"TextFreqAccr", "TextFreqAdjA", "TextFreqAdjB"})
            QTest::addRow("%s, type %s", field, type) << type << field << 1920 << 960;
        QTest::addRow("LabelFreqAccr, type %s", type) << type << "LabelFreqAccr" << -1 << 1000;
    }
    for (const char* field : {"TextFreqAccr", "TextFreqAdjA", "TextFreqAdjB"})
        QTest::addRow("%s, type 1", field) << "1" << field << 1080 << 1320;
    QTest::newRow("LabelFreqAccr, type 1") << "1"
                                           << "LabelFreqAccr" << -1 << 1020;
}

void TestLayout::modulePositions() {
    QFETCH(QString, type);
    QFETCH(QString, control);
    QFETCH(int, leftTwips);
    QFETCH(int, topTwips);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    const auto& moved = bench_->control(control);
    QVERIFY(qobject_cast<QGroupBox*>(moved.parentWidget()));
    constexpr double kTwipsPerPixel = 15;
    QCOMPARE(moved.y(), qRound(topTwips / kTwipsPerPixel));
    if (leftTwips >= 0)
        QCOMPARE(moved.x(), qRound(leftTwips / kTwipsPerPixel));
}

void TestLayout::moduleCaptions_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("module");
    QTest::newRow("0") << "0"
                       << "RM5";
    QTest::newRow("1") << "1"
                       << "Kirk";
    QTest::newRow("5") << "5"
                       << "RM5";
    QTest::newRow("-1") << "-1"
                        << "RM5";
}

void TestLayout::moduleCaptions() {
    QFETCH(QString, type);
    QFETCH(QString, module);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    QCOMPARE(bench_->text("CommandCalibBp"), "Calibrate " + module + " Module");
    QCOMPARE(bench_->text("CommandCalibAAA"), "Calibrate " + module + " Module A");
    QCOMPARE(bench_->text("CommandCalibAAB"), "Calibrate " + module + " Module B");
}

void TestLayout::moduleControls_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("kirk");
    QTest::newRow("0") << "0" << false;
    QTest::newRow("1") << "1" << true;
    QTest::newRow("5") << "5" << false;
}

void TestLayout::moduleControls() {
    QFETCH(QString, type);
    QFETCH(bool, kirk);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    QStringList shown;
    for (const char* frame : {"TextFMDev", "TextFmDevA", "TextFmDevB"}) {
        for (const QWidget* control : bench_->control(frame).parentWidget()->findChildren<QWidget*>(
                 QString(), Qt::FindDirectChildrenOnly)) {
            if (!control->isHidden() && kKirkOnly.contains(control->objectName()))
                shown << control->objectName();
            else if (!kKirkOnly.contains(control->objectName()))
                QVERIFY2(!control->isHidden(), qPrintable(nameOf(*control)));
        }
    }
    shown.sort();
    QStringList expected = kirk ? kKirkOnly : QStringList();
    expected.sort();
    QCOMPARE(shown, expected);
}

void TestLayout::rowsFor(const QList<int>& fontPoints) {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("points");
    for (const int points : fontPoints) {
        for (const QString& page : kPages) {
            QTest::addRow("%s, RM5, %d", qPrintable(page), points) << page << "0" << points;
            QTest::addRow("%s, Kirk, %d", qPrintable(page), points) << page << "1" << points;
        }
    }
}

void TestLayout::startAsRow() {
    QFETCH(QString, page);
    QFETCH(QString, type);
    QFETCH(int, points);
    setFontSize(points);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    bench_->clickTab(page);
    QCoreApplication::processEvents();
}

void TestLayout::cleanup() {
    bench_.reset();
    setFontSize(kDefaultPoints);
}

void TestLayout::fitsTheScreen() {
    startAsRow();
    constexpr QSize kScreen{800, 600};
    constexpr int kTitleBar = 40;  // of a generous window manager
    const FrmMain& window = bench_->window();
    const QString size = QStringLiteral("%1 x %2").arg(window.width()).arg(window.height());
    QVERIFY2(window.width() <= kScreen.width() && window.height() + kTitleBar <= kScreen.height(),
             qPrintable(size));
    // Nothing of a page lies outside of it.
    const QWidget& page = *bench_->control<QTabWidget>("SSTab1").currentWidget();
    for (const QWidget* control : page.findChildren<QWidget*>()) {
        if (!control->isVisible() || control->parentWidget()->inherits("QAbstractScrollArea"))
            continue;
        const QRect parentRect = control->parentWidget()->rect();
        QVERIFY2(parentRect.contains(control->geometry()), qPrintable(nameOf(*control)));
    }
}

void TestLayout::captionsAreWhole() {
    startAsRow();
    for (const QWidget* control : bench_->window().findChildren<QWidget*>()) {
        const bool captioned =
            qobject_cast<const QLabel*>(control) || qobject_cast<const QAbstractButton*>(control);
        if (!captioned || !control->isVisible() || control->property("text").toString().isEmpty() ||
            control->objectName() == "LblStatus")
            continue;
        const QSize needed = control->sizeHint();
        const QString sizes = QStringLiteral("%1 needs %2 x %3, has %4 x %5")
                                  .arg(nameOf(*control))
                                  .arg(needed.width())
                                  .arg(needed.height())
                                  .arg(control->width())
                                  .arg(control->height());
        QVERIFY2(control->width() >= needed.width() && control->height() >= needed.height(),
                 qPrintable(sizes));
    }
    for (const QGroupBox* frame : bench_->window().findChildren<QGroupBox*>()) {
        if (!frame->isVisible())
            continue;
        const QFontMetrics heading(headingFace(frame->font()));
        QVERIFY2(heading.horizontalAdvance(frame->title()) <= frame->contentsRect().width() &&
                     heading.height() <= frame->contentsRect().top(),
                 qPrintable(frame->title()));
    }
}

void TestLayout::nothingOverlaps() {
    startAsRow();
    QList<const QWidget*> parents{bench_->control<QTabWidget>("SSTab1").currentWidget()};
    for (const QWidget* control : parents.first()->findChildren<QWidget*>()) {
        if (control->isVisible() && !control->inherits("QAbstractScrollArea") &&
            !control->parentWidget()->inherits("QAbstractScrollArea"))
            parents << control;
    }
    parents << bench_->control("LblStatus").parentWidget();
    int compared = 0;
    for (const QWidget* parent : parents) {
        const QList<QWidget*> children = visibleChildren(*parent);
        for (int i = 0; i < children.size(); ++i) {
            for (int j = i + 1; j < children.size(); ++j, ++compared) {
                const QString pair = nameOf(*children[i]) + " and " + nameOf(*children[j]);
                QVERIFY2(!children[i]->geometry().intersects(children[j]->geometry()), qPrintable(pair));
            }
        }
        // The title of a frame is above everything in it.
        const auto* frame = qobject_cast<const QGroupBox*>(parent);
        for (const QWidget* child : frame ? children : QList<QWidget*>()) {
            const QString named = frame->title() + ": " + nameOf(*child);
            QVERIFY2(child->y() >= frame->fontMetrics().height(), qPrintable(named));
        }
    }
    QVERIFY(compared > 0);
}

void TestLayout::fieldsHoldTheirText_data() {
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    const auto row = [](int page, const char* field, const char* text) {
        for (const int points : {9, 11, 14, 18})
            QTest::addRow("%s, %d", field, points)
                << points << kPages[page] << QString(field) << QString(text);
    };
    row(0, "TextBeltpackId", "1048575");
    row(0, "TextEic", "DDDD");
    row(0, "TextFpn", "*D*D");
    row(0, "TextFps", "D");
    row(0, "TextParkB", "DDDDDDDDDD");
    row(0, "TextPli", "1F        ");
    row(0, "TextRfCarrs", "DDDDDDDDDD");
    row(0, "TextDectVerBP", "Unavailable");
    row(0, "TextFMDev", "255");
    row(0, "TextFreqAccr", "255");
    row(0, "TextFreqAccrRx", "255");
    row(0, "TextFreqAccrTx", "255");
    row(0, "TextRssiThr", "255");
    row(1, "TextFmDevA", "255");
    row(1, "TextFreqAdjA", "255");
    row(1, "TextFreqAdjTxB", "255");
    row(1, "TextDectVer", "Unavailable");
    row(2, "ScreenDumpFName", "Grab1");
    row(2, "autoIncValText", "255");
}

void TestLayout::fieldsHoldTheirText() {
    QFETCH(QString, page);
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(int, points);
    setFontSize(points);
    bench_->store.put("RfModule", "1");
    bench_->start();
    bench_->clickTab(page);
    const auto& edit = bench_->control<QLineEdit>(field);
    QVERIFY(edit.isVisible());
    QStyleOptionFrame option;
    option.initFrom(&edit);
    option.lineWidth = edit.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &edit);
    constexpr int kTextMargins = 2 * 2;
    const int room =
        edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit).width() - kTextMargins;
    const int needed = edit.fontMetrics().horizontalAdvance(text);
    QVERIFY2(needed <= room, qPrintable(QStringLiteral("needs %1, has %2").arg(needed).arg(room)));
    QVERIFY(edit.fontMetrics().height() <= edit.height() - 2 * option.lineWidth);
}

void TestLayout::hexadecimalIsFixedPitch_data() {
    QTest::addColumn<QString>("field");
    for (const char* field : {"TextEic", "TextFpn", "TextFps", "TextParkB", "TextPli", "TextRfCarrs"})
        QTest::newRow(field) << field;
}

void TestLayout::hexadecimalIsFixedPitch() {
    QFETCH(QString, field);
    bench_->start();
    const QFontMetrics face(bench_->control(field).font());
    QCOMPARE(face.horizontalAdvance('1'), face.horizontalAdvance('D'));
    QCOMPARE(face.horizontalAdvance('*'), face.horizontalAdvance('D'));
}

void TestLayout::hexadecimalFieldsGoByTheirDigits() {
    bench_->start();
    const auto& one = bench_->control("TextFps");
    const int digit = one.fontMetrics().horizontalAdvance('0');
    for (const auto& [field, digits] :
         {std::pair{"TextEic", 4}, {"TextFpn", 4}, {"TextParkB", 10}, {"TextPli", 10}, {"TextRfCarrs", 10}})
        QCOMPARE(bench_->control(field).width() - one.width(), (digits - 1) * digit);
    QVERIFY(one.width() < 4 * digit);
}

void TestLayout::buttonsBesideFieldsAreAlike() {
    bench_->start();
    const QWidget& first = bench_->control("CommandSetBpId");
    for (const char* button : {"CmdUpdatePli", "CmdSetRfCarrs"})
        QCOMPARE(bench_->control(button).size(), first.size());
    QCOMPARE(first.width(), first.sizeHint().width());
}

// Each page's columns at one height, and the first ones of the pages at one place.
void TestLayout::columnsBeginTogether() {
    bench_->start();
    const auto frameOf = [&](const char* field) { return bench_->control(field).parentWidget(); };
    const QWidget& read = bench_->control("CommandRdSettingsBp");
    const QWidget& readAntenna = bench_->control("CommandRdSettingsAA");
    QWidget& window = bench_->window();
    const auto placeOf = [&](const QWidget& control) { return control.mapTo(&window, QPoint(0, 0)); };
    QCOMPARE(placeOf(*frameOf("TextBeltpackId")).y(), placeOf(read).y());
    QCOMPARE(placeOf(*frameOf("TextRfCarrs")).y(), placeOf(read).y());
    QCOMPARE(placeOf(bench_->control("optionMICBal")).x(), placeOf(read).x());
    bench_->clickTab("Active Antenna");
    QCOMPARE(placeOf(*frameOf("TextFmDevA")).y(), placeOf(readAntenna).y());
    QCOMPARE(placeOf(*frameOf("TextFmDevB")).y(), placeOf(readAntenna).y());
    QCOMPARE(placeOf(readAntenna), placeOf(read));
}

// What a screen reader is told: the field's label, the label's own text, the button's caption.
void TestLayout::controlsSayWhatTheyAre() {
    startAsRow();
    const QWidget& page = *bench_->control<QTabWidget>("SSTab1").currentWidget();
    int asked = 0;
    for (QWidget* control : page.findChildren<QWidget*>()) {
        if (!control->isVisible())
            continue;
        const bool works = qobject_cast<QLineEdit*>(control) || qobject_cast<QListWidget*>(control) ||
                           qobject_cast<QAbstractButton*>(control);
        const auto* label = qobject_cast<QLabel*>(control);
        if (!works && !label)
            continue;
        const QString name = QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
        ++asked;
        if (label)
            QCOMPARE(name, label->text());
        QVERIFY2(!name.isEmpty() || hasLabel(*control), qPrintable(nameOf(*control)));
    }
    QVERIFY(asked > 0);
}

void TestLayout::modules() {
    QTest::addColumn<QString>("type");
    QTest::newRow("RM5") << "0";
    QTest::newRow("Kirk") << "1";
}

void TestLayout::columnsEndOnOneLine() {
    QFETCH(QString, type);
    bench_->store.put("RfModule", type.toStdString());
    bench_->start();
    QCoreApplication::processEvents();
    const int end = inWindow("buttonSetProdSettiings").bottom();
    QCOMPARE(inWindow("CommandDectPPVerReq").bottom(), end);
    QCOMPARE(inWindow("CommandCalibBp").bottom(), end);
}

void TestLayout::fieldsAreOfOneHeight() {
    startAsRow();
    const int height = inWindow("TextBeltpackId").height();
    int compared = 0;
    for (const QLineEdit* field :
         bench_->control<QTabWidget>("SSTab1").currentWidget()->findChildren<QLineEdit*>()) {
        if (!field->isVisible())
            continue;
        QCOMPARE(field->objectName() + QString::number(field->height()),
                 field->objectName() + QString::number(height));
        ++compared;
    }
    QVERIFY(compared > 2);
}

void TestLayout::facesAreOfOneSize() {
    startAsRow();
    QFETCH(int, points);
    for (const QWidget* control : bench_->control("SSTab1").findChildren<QWidget*>()) {
        const QString size = nameOf(*control) + ": %1";
        QCOMPARE(size.arg(control->font().pointSizeF()), size.arg(points));
    }
}

void TestLayout::calibrationButtonFollowsTheValues_data() {
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("points");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("last");  // the lowest control above it
    for (const char* letter : {"A", "B"}) {
        const QString button = QStringLiteral("CommandCalibAA") + letter;
        QTest::addRow("RM5 %s", letter)
            << kPages[1] << "0" << kDefaultPoints << button << QStringLiteral("TextFreqAdj") + letter;
        QTest::addRow("Kirk %s", letter)
            << kPages[1] << "1" << kDefaultPoints << button << QStringLiteral("LabelMid") + letter;
    }
    QTest::newRow("RM5 Beltpack") << kPages[0] << "0" << kDefaultPoints << "CommandCalibBp"
                                  << "TextFreqAccr";
    QTest::newRow("Kirk Beltpack") << kPages[0] << "1" << kDefaultPoints << "CommandCalibBp"
                                   << "TextRssiThr";
}

void TestLayout::calibrationButtonFollowsTheValues() {
    startAsRow();
    QFETCH(QString, button);
    QFETCH(QString, last);
    constexpr int kGap = 8;
    constexpr int kMargin = 3;
    const QRect place = bench_->control(button).geometry();
    const QWidget& frame = *bench_->control(button).parentWidget();
    QCOMPARE(place.top(), bench_->control(last).geometry().bottom() + 1 + kGap);
    QCOMPARE(place.left(), kMargin);
    QCOMPARE(frame.width() - 1 - place.right(), kMargin);
    QCOMPARE(frame.height() - 1 - place.bottom(), kMargin);
}

void TestLayout::enlargedWindowKeepsItTogether() {
    startAsRow();
    const auto placesOfControls = [this] {
        QMap<QString, QRect> places;
        for (const QWidget* control :
             bench_->control<QTabWidget>("SSTab1").currentWidget()->findChildren<QWidget*>()) {
            if (control->isVisible() && !control->objectName().isEmpty())
                places[control->objectName()] = inWindow(control->objectName());
        }
        return places;
    };
    const QMap<QString, QRect> before = placesOfControls();
    QVERIFY(!before.isEmpty());
    bench_->window().resize(bench_->window().size() + QSize(400, 300));
    QCoreApplication::processEvents();
    QCOMPARE(placesOfControls(), before);
}

// A window manager puts its buttons beside the title, which is often bold.
void TestLayout::titlesHaveRoom() {
    constexpr int kButtons = 100;
    bench_->startWith(kRm5);
    int looked = 0;
    const auto look = [&looked](QDialog& dialog) {
        QFont bold = QApplication::font();
        bold.setBold(true);
        const int needed = QFontMetrics(bold).horizontalAdvance(dialog.windowTitle()) + kButtons;
        QVERIFY2(dialog.width() >= needed, qPrintable(dialog.windowTitle()));
        ++looked;
    };
    for (const char* item : {"mnuComPort", "mnuRfModule"}) {
        bench_->person.plan([&](QDialog& dialog) {
            look(dialog);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        bench_->clickMenu(item);
    }
    bench_->person.beforeOk(look);
    bench_->clickMenu("mnuAbout");
    bench_->window().link().console().messageBox("Rd Error", Icon::none);
    QCOMPARE(looked, 4);
}

void TestLayout::longStatusDoesNotWidenTheWindow() {
    bench_->startWith(kRm5);
    const QSize before = bench_->window().size();
    bench_->control<QLabel>("LblStatus").setText(QString(500, 'W'));
    QCoreApplication::processEvents();
    QCOMPARE(bench_->window().size(), before);
    QVERIFY(bench_->window().minimumSizeHint().width() <= before.width());
}

}  // namespace quorvex

QUORVEX_TEST(quorvex::TestLayout, QApplication)
#include "test_layout.moc"
