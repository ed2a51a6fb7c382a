#pragma once

#include <QPushButton>

namespace quorvex {

/// A button that Enter presses wherever it has the focus; the toolkit lets it do so in a dialog only.
class Button : public QPushButton {
public:
    using QPushButton::QPushButton;

    /// Taller than the others, its caption heavier.
    void standOut();
    /// In the colour of what is selected: what to do first.
    void setLeading(bool leading);
    bool isLeading() const { return isLeading_; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void initStyleOption(QStyleOptionButton* option) const override;

private:
    bool isLeading_ = false;
};

}  // namespace quorvex
