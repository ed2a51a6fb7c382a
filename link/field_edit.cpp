#include "link/field_edit.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include "link/guard.h"
#include "link/key_filter.h"

namespace quorvex {

namespace {

/// The character that a key press types, 0 for none.
char16_t typedCharacter(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return event.isAutoRepeat() ? u'\0' : kEnter;  // a key held down runs an update once
    // Delete comes with a character of its own, and is none.
    return event.text().size() == 1 && event.key() != Qt::Key_Delete ? event.text().front().unicode() : u'\0';
}

}  // namespace

void FieldEdit::keyPressEvent(QKeyEvent* event) {
    const char16_t typed = typedCharacter(*event);
    if (typed == 0) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    const bool isShortcut = event->modifiers() & Qt::ControlModifier && typed != kEnter;
    const char16_t passed = isShortcut ? typed : pass(typed);
    if (isShortcut && keyPress_)
        guarded([this] { keyPress_(0); });
    if (passed == typed) {
        QLineEdit::keyPressEvent(event);
    } else if (passed != 0) {
        QKeyEvent changed(event->type(), event->key(), event->modifiers(), QString(QChar(passed)),
                          event->isAutoRepeat());
        QLineEdit::keyPressEvent(&changed);
    }
}

char16_t FieldEdit::pass(char16_t typed) {
    const char16_t passed = filter_ ? filter_(typed) : typed;
    if (keyPress_)
        guarded([this, passed] { keyPress_(passed); });
    return passed;
}

void FieldEdit::inputMethodEvent(QInputMethodEvent* event) {
    // Characters composed of several keys are typed too.
    QString text;
    for (const QChar typed : event->commitString()) {
        if (const char16_t passed = pass(typed.unicode()))
            text += QChar(passed);
    }
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(text, event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&filtered);
}

void FieldEdit::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    if (keyUp_)
        guarded(keyUp_);
}

}  // namespace quorvex
