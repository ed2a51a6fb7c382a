#include "form/qt_console.h"

#include <QApplication>

#include "form/message_box.h"
#include "link/qt_text.h"

namespace quorvex {

void QtConsole::status(std::string_view text, Colour colour) {
    statusLine_.tell(fromUtf8(text), colour);
}

void QtConsole::messageBox(std::string_view text, Icon icon, std::string_view title) {
    showMessageBox(text, icon, title);
}

void QtConsole::beep() {
    QApplication::beep();
}

void QtConsole::hourglass(bool up) {
    const bool isUp = QApplication::overrideCursor() != nullptr;
    if (up && !isUp)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else if (!up && isUp)
        QApplication::restoreOverrideCursor();
}

}  // namespace quorvex
