#pragma once

#include <QAbstractButton>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>
#include <vector>

#include "form/field_edit.h"

namespace quorvex {

// Making the controls of a frame, each with its name, caption and hover text.

/// Any control that is made with its caption.
template <typename Control>
Control* makeCaptioned(QWidget* parent, const char* name, const char* caption) {
    auto* control = new Control(QString::fromUtf8(caption), parent);
    control->setObjectName(QString::fromLatin1(name));
    return control;
}

QPushButton* makeButton(QWidget* parent, const char* name, const char* caption, const char* hover = "");

/// A field as wide as `characters` of what it holds; a hexadecimal one stands in a fixed-pitch face.
FieldEdit* makeField(QWidget* parent, const char* name, int characters, const char* hover = "");
FieldEdit* makeHexField(QWidget* parent, const char* name, int characters, const char* hover = "");

/// A label, the buddy of the field it names.
QLabel* makeLabel(QWidget* parent, const char* name, const char* caption, QWidget* buddy = nullptr);

/// The line "Line1" above the buttons of a dialog, and the buttons at the right of their row.
QFrame* makeLine(QWidget* parent);
QHBoxLayout* makeButtonRow(const std::vector<QPushButton*>& buttons);

/// One below the other, from the top.
QVBoxLayout* makeColumn(const std::vector<QWidget*>& frames);

/// Runs `handler`, guarded, for each click.
void onClick(QAbstractButton* button, std::function<void()> handler);

/// Lets the Tab key go from each control to the next.
void setTabChain(const std::vector<QWidget*>& controls);

}  // namespace quorvex
