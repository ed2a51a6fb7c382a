#include "form/message_box.h"

#include <QApplication>
#include <QMessageBox>

#include "link/qt_text.h"

namespace quorvex {

namespace {

QMessageBox::Icon iconOf(Icon icon) {
    return icon == Icon::information ? QMessageBox::Information
           : icon == Icon::critical  ? QMessageBox::Critical
                                     : QMessageBox::NoIcon;
}

QWidget* windowInUse() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget* active = QApplication::activeWindow())
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->isWindow())
            return window;
    }
    return nullptr;
}

}  // namespace

void showMessageBox(std::string_view text, Icon icon, std::string_view title) {
    QMessageBox box(windowInUse());
    box.setIcon(iconOf(icon));
    box.setWindowTitle(fromUtf8(title.empty() ? kProgramTitle : title));
    box.setTextFormat(Qt::PlainText);
    box.setText(fromUtf8(text));
    // Text that can be selected breaks its lines at a lone carriage return too, whatever the style.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse);
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

}  // namespace quorvex
