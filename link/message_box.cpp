#include "link/message_box.h"

#include <QApplication>
#include <QMessageBox>

namespace quorvex {

namespace {

QMessageBox::Icon toQt(Icon icon) {
    switch (icon) {
        case Icon::information:
            return QMessageBox::Information;
        case Icon::critical:
            return QMessageBox::Critical;
        case Icon::none:
            break;
    }
    return QMessageBox::NoIcon;
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
    box.setIcon(toQt(icon));
    box.setWindowTitle(title.empty() ? QApplication::applicationDisplayName()
                                     : QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

}  // namespace quorvex
