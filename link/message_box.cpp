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

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
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
    box.setWindowTitle(fromUtf8(title.empty() ? kProgramTitle : title));
    box.setTextFormat(Qt::PlainText);
    box.setText(fromUtf8(text));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
}

}  // namespace quorvex
