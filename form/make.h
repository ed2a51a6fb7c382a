#pragma once

#include <QAbstractButton>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <functional>
#include <vector>

#include "form/button.h"
#include "form/field_edit.h"
#include "form/frame.h"

namespace quorvex {

// Making the controls of a frame, each with its name, caption and hover text.

/// Any control that is made with its caption.
template <typename Control>
Control* makeCaptioned(QWidget* parent, const char* name, const char* caption) {
    auto* control = new Control(QString::fromUtf8(caption), parent);
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

Button* makeButton(QWidget* parent, const char* name, const char* caption, const char* hover = "");

/// A field as wide as `characters` of what it holds; a hexadecimal one stands in a fixed-pitch face.
FieldEdit* makeField(QWidget* parent, const char* name, int characters, const char* hover = "");
FieldEdit* makeHexField(QWidget* parent, const char* name, int characters, const char* hover = "");

/// A label, the buddy of the field it names.
QLabel* makeLabel(QWidget* parent, const char* name, const char* caption, QWidget* buddy = nullptr);

/// The line "Line1" above the buttons of a dialog, and the buttons at the right of their row.
QFrame* makeLine(QWidget* parent);
QHBoxLayout* makeButtonRow(const std::vector<QPushButton*>& buttons);

/// The layout of a frame: on the grid, and below the frame's heading.
QGridLayout* makeGrid(Frame* frame);
/// A label and the control below it.
QVBoxLayout* makeLabelled(QWidget* label, QWidget* control);
/// A field and, at the right end of its row, the button that sends or asks for what it holds.
QHBoxLayout* makeRow(QWidget* field, QPushButton* button);

/// One below the other; the first at the top of the page, the last at its end.
QVBoxLayout* makeColumn(const std::vector<QWidget*>& frames);
/// Places the columns beside each other. They end on one line and stay together however large the page is.
void placeColumns(QWidget* page, const std::vector<QLayout*>& columns);

/// Runs `handler`, guarded, for each click.
void onClick(QAbstractButton* button, std::function<void()> handler);

/// Lets the Tab key go from each control to the next.
void setTabChain(const std::vector<QWidget*>& controls);

}  // namespace quorvex
