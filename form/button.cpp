#include "form/button.h"

#include <QKeyEvent>
#include <QStyleOptionButton>

#include "form/frame.h"
#include "form/lengths.h"

namespace quorvex {

void Button::standOut() {
    setFont(headingFace(font()));
    setFixedHeight(pixels(grid::kMainButton));
}

void Button::setLeading(bool leading) {
    isLeading_ = leading;
    update();
}

void Button::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QPushButton::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        click();
}

void Button::initStyleOption(QStyleOptionButton* option) const {
    QPushButton::initStyleOption(option);
    if (!isLeading_ || !isEnabled())
        return;
    constexpr int kDarker = 200;  ///< per cent: the caption has to stand off
    option->palette.setColor(QPalette::Button, option->palette.color(QPalette::Highlight).darker(kDarker));
    option->palette.setColor(QPalette::ButtonText, option->palette.color(QPalette::HighlightedText));
}

}  // namespace quorvex
