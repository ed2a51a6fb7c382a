#include "form/qt_controls.h"

#include <algorithm>
#include <iterator>

#include "link/qt_text.h"
#include "link/runtime_fault.h"

namespace quorvex {

namespace {
constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};  ///< 0, 1, 2
}

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
    return static_cast<int>(std::find(std::begin(kStates), std::end(kStates), box_->checkState()) - kStates);
}

void CheckBoxField::setValue(int value) {
    if (value < 0 || value >= std::ssize(kStates))
        throw RuntimeFault::invalidPropertyValue();
    box_->setCheckState(kStates[value]);
}

void RadioGroup::select(int index) {
    for (std::size_t i = 0; i < buttons_.size(); ++i)
        buttons_[i]->setChecked(static_cast<int>(i) == index);
}

}  // namespace quorvex
