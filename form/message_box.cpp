#include "form/message_box.h"

#include <QApplication>
#include <QGridLayout>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

#include "form/lengths.h"
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

/// A window that has only just been shown has no place on the screen yet; a box over it would lie elsewhere.
void awaitPlace(const QWidget* window) {
    constexpr int kLimitMs = 1000;
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(kLimitMs);
    const QWindow* shown = window ? window->windowHandle() : nullptr;
    while (shown && !window->isMinimized() && !shown->isExposed() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

}  // namespace

void showMessageBox(std::string_view text, Icon icon, std::string_view title) {
    QWidget* window = windowInUse();
    awaitPlace(window);
    QMessageBox box(window);
    box.setIcon(iconOf(icon));
    box.setWindowTitle(fromUtf8(title.empty() ? kProgramTitle : title));
    box.setTextFormat(Qt::PlainText);
    box.setText(fromUtf8(text));
    // Text that can be selected breaks its lines at a lone carriage return too, whatever the style.
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse);
    box.setStandardButtons(QMessageBox::Ok);
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(widthForTitle(box.windowTitle()), 0), grid->rowCount(), 0, 1,
                      grid->columnCount());
    box.exec();
}

}  // namespace quorvex
