#include "link/field_edit.h"

#include "link/guard.h"

namespace quorvex {

void FieldEdit::keyReleaseEvent(QKeyEvent* event) {
    QLineEdit::keyReleaseEvent(event);
    if (keyUp_)
        guarded(keyUp_);
}

}  // namespace quorvex
