#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>
#include <functional>
#include <vector>

#include "form/field_edit.h"

namespace quorvex {

// Making the controls of a frame, each with its name, caption and hover text.

QPushButton* makeButton(QWidget* parent, const char* name, const char* caption, const char* hover = "");

/// A field as wide as `characters` of what it holds; a hexadecimal one stands in a fixed-pitch face.
FieldEdit* makeField(QWidget* parent, const char* name, int characters, const char* hover = "");
FieldEdit* makeHexField(QWidget* parent, const char* name, int characters, const char* hover = "");

/// A label, the buddy of the field it names.
QLabel* makeLabel(QWidget* parent, const char* name, const char* caption, QWidget* buddy = nullptr);

/// Runs `handler`, guarded, for each click.
void onClick(QAbstractButton* button, std::function<void()> handler);

/// Lets the Tab key go from each control to the next.
void setTabChain(const std::vector<QWidget*>& controls);

}  // namespace quorvex
