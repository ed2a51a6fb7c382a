#pragma once

#include <QAction>
#include <QPoint>
#include <QWidget>

namespace quorvex::hand {

// The hand at the mouse. Every click is an event of the window system for a place in a window, so it meets
// what is really there: a covered, hidden or blocked control is not reached. A click that cannot reach its
// target fails the test.

/// A click on a control: on its mark where it has one (option button, check box), else on its middle.
void click(QWidget& target);
void clickAt(QWidget& target, QPoint place);

/// The pull-down menu of the menu bar that holds `item`, then `item`.
void clickMenuItem(QWidget& window, QAction& item);

/// A page of a tab control, by its caption.
void clickTab(QWidget& tabControl, const QString& caption);

/// One notch of the wheel over a control, or a part of one; positive turns it away from the user.
void turnWheel(QWidget& target, int eighthsOfDegree);

}  // namespace quorvex::hand
