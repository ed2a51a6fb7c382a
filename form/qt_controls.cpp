#include "form/qt_controls.h"

#include "link/qt_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

std::string LineEditField::text() const {
    return holds_ == Holds::fileName ? edit_->text().toStdString() : toLatin1(edit_->text());
}

void LineEditField::setText(std::string_view text) {
    const QString shown = holds_ == Holds::fileName ? fromUtf8(text) : fromLatin1(text);
    if (edit_->text() == shown)
        return;  // cursor and selection stay where somebody is typing
    const int cursor = edit_->hasFocus() ? edit_->cursorPosition() : 0;
    edit_->setText(shown);
    edit_->setCursorPosition(cursor);
}

int CheckBoxField::value() const {
    switch (box_->checkState()) {
        case Qt::Unchecked:
            return 0;
        case Qt::Checked:
            return 1;
        case Qt::PartiallyChecked:
            break;
    }
    return 2;
}

void CheckBoxField::setValue(int value) {
    switch (value) {
        case 0:
            box_->setCheckState(Qt::Unchecked);
            break;
        case 1:
            box_->setCheckState(Qt::Checked);
            break;
        case 2:
            box_->setCheckState(Qt::PartiallyChecked);
            break;
        default:
            throw RuntimeFault::invalidPropertyValue();
    }
}

void RadioGroup::select(int index) {
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->setChecked(static_cast<int>(i) == index);
}

}  // namespace quorvex
