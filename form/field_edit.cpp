#include "form/field_edit.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QValidator>
#include <algorithm>

#include "form/guard.h"
#include "link/controls.h"

namespace quorvex {

namespace {

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// What a key press types, empty for nothing.
QString typedText(const QKeyEvent& event) {
    if (isEnter(event)) {
        if (event.isAutoRepeat())
            return {};  // held down, it runs an update once
        return QChar(event.modifiers() & Qt::ControlModifier ? kLineFeed : kEnter);
    }
    // Delete comes with a character of its own, and is none.
    return event.key() == Qt::Key_Delete ? QString() : event.text();
}

/// Control with Alt is how some keyboards type further characters.
bool isShortcut(const QKeyEvent& event) {
    return event.modifiers() & Qt::ControlModifier && !(event.modifiers() & Qt::AltModifier) &&
           !isEnter(event);
}

/// Pasted text often brings the end of its line along, which must stay out of a field of one line.
class OneLine : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override {
        const auto isBreak = [](QChar c) { return c == QLatin1Char('\r') || c == QLatin1Char('\n'); };
        cursor -= static_cast<int>(std::count_if(text.cbegin(), text.cbegin() + cursor, isBreak));
        text.removeIf(isBreak);
        return Acceptable;
    }
};

}  // namespace

FieldEdit::FieldEdit(QWidget* parent) : QLineEdit(parent) {
    setValidator(new OneLine(this));
}

void FieldEdit::keyPressEvent(QKeyEvent* event) {
    const QString typed = typedText(*event);
    if (isShortcut(*event)) {
        if (keyPress_ && !typed.isEmpty())
            guarded([this] { keyPress_(0); });
        QLineEdit::keyPressEvent(event);
        return;
    }
    const QString passed = filteredText(typed);
    if (passed == typed) {
        QLineEdit::keyPressEvent(event);
    } else if (!passed.isEmpty()) {
        QKeyEvent changed(event->type(), event->key(), event->modifiers(), passed, event->isAutoRepeat());
        QLineEdit::keyPressEvent(&changed);
    }
}

QString FieldEdit::filteredText(const QString& typed) {
    QString passed;
    for (const QChar character : typed) {
        if (const char16_t left = filteredCharacter(character.unicode()))
            passed += QChar(left);
    }
    return passed;
}

char16_t FieldEdit::filteredCharacter(char16_t typed) {
    const char16_t passed = filter_ ? filter_(typed) : typed;
    if (keyPress_)
        guarded([this, passed] { keyPress_(passed); });
    return passed;
}

void FieldEdit::inputMethodEvent(QInputMethodEvent* event) {
    // Characters composed of several keys are typed too.
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(filteredText(event->commitString()), event->replacementStart(),
                             event->replacementLength());
    QLineEdit::inputMethodEvent(&filtered);
}

void FieldEdit::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    // A key that is held down repeats its press; the releases in between are the toolkit's own.
    if (keyUp_ && !event->isAutoRepeat())
        guarded(keyUp_);
}

}  // namespace quorvex
