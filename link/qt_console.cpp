#include "link/qt_console.h"

#include <QApplication>

#include "link/message_box.h"

namespace quorvex {

void QtConsole::status(std::string_view text, Colour colour) {
    statusLine_.show(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), colour);
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
