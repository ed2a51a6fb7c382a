#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <vector>

#include "link/controls.h"

namespace quorvex {

/// A QLineEdit as operations see it: Latin-1, or UTF-8 where the field holds part of a file's name.
class LineEditField : public TextField {
public:
    enum class Holds { wireText, fileName };

    explicit LineEditField(QLineEdit* edit, Holds holds = Holds::wireText) : edit_(edit), holds_(holds) {}
    std::string text() const override;
    void setText(std::string_view text) override;

private:
    QLineEdit* edit_;
    Holds holds_;
};

/// A QCheckBox as operations see it.
class CheckBoxField : public CheckField {
public:
    explicit CheckBoxField(QCheckBox* box) : box_(box) {}
    int value() const override;
    void setValue(int value) override;

private:
    QCheckBox* box_;
};

/// Radio buttons as operations see them.
class RadioGroup : public OptionGroup {
public:
    explicit RadioGroup(std::vector<QRadioButton*> buttons) : buttons_(std::move(buttons)) {}
    void select(int index) override;

private:
    std::vector<QRadioButton*> buttons_;
};

}  // namespace quorvex
