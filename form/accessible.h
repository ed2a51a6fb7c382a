#pragma once

#include <QAccessible>
#include <QWidget>

namespace quorvex {

/// Tells assistive tools what a widget is that the toolkit knows no role for. Its name is its accessible name
/// alone, not that of the frame around it; a decoration has
/// none. To be called before anything asks.
void setAccessibleRole(QWidget* widget, QAccessible::Role role);

}  // namespace quorvex
