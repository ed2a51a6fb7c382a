#include "tests/support/hand.h"

#include <QApplication>
#include <QCheckBox>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace quorvex::hand {

namespace {

constexpr int kLimitMs = 5000;

/// The middle of the mark of an option button or check box; its caption may be narrower than the control.
QPoint markOf(const QAbstractButton& button, QStyle::SubElement mark) {
    QStyleOptionButton option;
    option.initFrom(&button);
    return button.style()->subElementRect(mark, &option, &button).center();
}

QPoint placeOf(const QWidget& target) {
    if (const auto* option = qobject_cast<const QRadioButton*>(&target))
        return markOf(*option, QStyle::SE_RadioButtonIndicator);
    if (const auto* check = qobject_cast<const QCheckBox*>(&target))
        return markOf(*check, QStyle::SE_CheckBoxIndicator);
    return target.rect().center();
}

}  // namespace

void clickAt(QWidget& target, QPoint place) {
    QWidget* window = target.window();
    const QPoint there = target.mapTo(window, place);
    const QWidget* met = window->childAt(there);
    QVERIFY2(
        target.isVisible() && (met == &target || (window == &target && !met) || target.isAncestorOf(met)),
        qPrintable("nothing to click at: " + target.objectName()));
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, there);
}

void click(QWidget& target) {
    clickAt(target, placeOf(target));
}

void clickMenuItem(QWidget& window, QAction& item) {
    auto& mainWindow = dynamic_cast<QMainWindow&>(window);
    for (QAction* title : mainWindow.menuBar()->actions()) {
        QMenu* menu = title->menu();
        if (!menu->actions().contains(&item))
            continue;
        clickAt(*mainWindow.menuBar(), mainWindow.menuBar()->actionGeometry(title).center());
        QTRY_VERIFY_WITH_TIMEOUT(menu->isVisible(), kLimitMs);
        QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, {}, menu->actionGeometry(&item).center());
        return;
    }
    QFAIL(qPrintable("in no menu: " + item.objectName()));
}

void clickTab(QWidget& tabControl, const QString& caption) {
    const auto& tabs = dynamic_cast<QTabWidget&>(tabControl);
    for (int i = 0; i < tabs.count(); ++i) {
        if (tabs.tabText(i) == caption) {
            clickAt(*tabs.tabBar(), tabs.tabBar()->tabRect(i).center());
            QCOMPARE(tabs.currentIndex(), i);
            return;
        }
    }
    QFAIL(qPrintable("no page " + caption));
}

void turnWheel(QWidget& target, int eighthsOfDegree) {
    const QPoint middle = target.rect().center();
    QWheelEvent event(middle, target.mapToGlobal(middle), {}, {0, eighthsOfDegree}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&target, &event);
}

}  // namespace quorvex::hand
