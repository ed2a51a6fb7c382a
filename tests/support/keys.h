#pragma once

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QWindow>

#include "tests/support/bench.h"

namespace quorvex::keys {

// Keys at whatever has the focus: in the dialog that is open, else in the main window.

inline QWindow* activeWindow() {
    QWidget* top = QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!top && window->objectName() == "FrmMain" && window->isVisible())
            top = window;
    }
    // A window below a dialog does not become active by itself when the dialog has gone.
    top->activateWindow();
    if (!QTest::qWaitForWindowActive(top))
        qFatal("cannot be made active: %s", qPrintable(top->objectName()));
    return top->windowHandle();
}

inline void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(activeWindow(), key, modifiers);
}

/// A letter with the Ctrl key, which comes with the letter's control character from a real keyboard.
inline void control(char letter) {
    QTest::sendKeyEvent(QTest::Click, activeWindow(), static_cast<Qt::Key>(letter),
                        QString(QChar(letter - 'A' + 1)), Qt::ControlModifier);
}

/// One typed character, whatever key it has.
inline void typeOne(QChar c) {
    if (c.unicode() < 128)
        QTest::keyClick(activeWindow(), c.toLatin1());
    else
        QTest::sendKeyEvent(QTest::Click, activeWindow(), Qt::Key_unknown, QString(c), Qt::NoModifier);
}

inline void type(const QString& text) {
    for (const QChar c : text)
        typeOne(c);
}

/// Clicks into a field and takes out what it holds.
inline void empty(Bench& bench, const QString& field) {
    hand::click(bench.control(field));
    control('A');
    press(Qt::Key_Delete);
}

}  // namespace quorvex::keys
