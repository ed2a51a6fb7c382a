#include "tour/visitor.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>
#include <QTest>
#include <QWindow>
#include <thread>
#include <utility>

namespace quorvex::tour {

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{10};

/// Leaves `act` to the window's thread, which does it at whatever it is then; in the order posted.
template <typename Act>
void post(Act act) {
    QMetaObject::invokeMethod(qApp, std::move(act), Qt::QueuedConnection);
}

/// What a message box in sight says; empty if there is none.
std::string messageInSight() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return box ? box->text().toStdString() : std::string();
}

std::string textOf(QWidget* widget) {
    if (const auto* edit = qobject_cast<QLineEdit*>(widget))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<QLabel*>(widget))
        return label->text().toStdString();
    if (const auto* button = qobject_cast<QAbstractButton*>(widget))
        return button->isChecked() ? "on" : "off";
    if (const auto* list = qobject_cast<QListWidget*>(widget)) {
        const QListWidgetItem* item = list->itemAt(list->viewport()->rect().center());
        return item ? item->text().toStdString() : std::string();
    }
    throw TourFailure(widget->objectName().toStdString() + " is no control that shows a value.");
}

void mouse(QTest::MouseAction action, QWidget* widget, QPoint at) {
    QWidget* top = widget->window();
    QTest::mouseEvent(action, top->windowHandle(), Qt::LeftButton, {}, widget->mapTo(top, at));
}

/// Without a window manager nobody gives a new window the keyboard.
void takeKeyboard(QWidget* window) {
    if (!window->isActiveWindow())
        window->activateWindow();
}

}  // namespace

QWidget* Visitor::find(const std::string& control) const {
    const QString name = QString::fromStdString(control);
    const QWidget* dialog = QApplication::activeModalWidget();
    auto* found = dialog ? dialog->findChild<QWidget*>(name) : nullptr;
    if (!found)
        found = window_.findChild<QWidget*>(name);
    if (!found)
        throw TourFailure("There is no " + control + ".");
    return found;
}

QWidget* Visitor::findInReach(const std::string& control) const {
    QWidget* found = find(control);
    const QWidget* dialog = QApplication::activeModalWidget();
    if (dialog && found->window() != dialog)
        throw TourFailure("A dialog holds the window with " + control + ".");
    if (!found->isVisible())
        throw TourFailure(control + " is not in sight.");
    if (!found->isEnabled())
        throw TourFailure(control + " is disabled.");
    return found;
}

void Visitor::waitUntil(const std::string& what, const std::function<bool()>& holds, Limit limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    for (;;) {
        const auto [done, message] = ask([&] {
            const bool held = holds();
            return std::pair(held, held ? std::string() : messageInSight());
        });
        if (done)
            return;
        if (!message.empty())
            throw TourFailure(
                std::string("A message box came instead of ").append(what).append(": ").append(message));
        if (std::chrono::steady_clock::now() > deadline)
            throw TourFailure("In vain waited for " + what + ".");
        std::this_thread::sleep_for(kBetweenLooks);
    }
}

void Visitor::clickAt(const std::function<Target()>& place) {
    const auto target = ask([&] { return std::make_shared<Target>(place()); });
    // Not waited for: a release may start a handler that goes on for long.
    for (const auto action : {QTest::MouseMove, QTest::MousePress, QTest::MouseRelease}) {
        post([action, target] {
            if (target->widget)
                mouse(action, target->widget, target->at);
        });
    }
}

void Visitor::click(const std::string& control) {
    clickAt([&] {
        QWidget* widget = findInReach(control);
        return Target{widget, widget->rect().center()};
    });
}

void Visitor::clickTab(const std::string& caption) {
    clickAt([&] {
        QTabBar* bar = qobject_cast<QTabWidget*>(find("SSTab1"))->tabBar();
        for (int i = 0; i < bar->count(); ++i) {
            if (bar->tabText(i).toStdString() == caption)
                return Target{bar, bar->tabRect(i).center()};
        }
        throw TourFailure("There is no page " + caption + ".");
    });
    waitUntil("the page " + caption, [&] {
        const auto* tabs = qobject_cast<QTabWidget*>(find("SSTab1"));
        return tabs->tabText(tabs->currentIndex()).toStdString() == caption;
    });
}

void Visitor::openMenu(const std::string& menu) {
    clickAt([&] {
        auto* found = window_.menuBar()->findChild<QMenu*>(QString::fromStdString(menu));
        if (!found)
            throw TourFailure("There is no menu " + menu + ".");
        return Target{window_.menuBar(), window_.menuBar()->actionGeometry(found->menuAction()).center()};
    });
    waitUntil("the menu " + menu, [&] {
        const QWidget* popup = QApplication::activePopupWidget();
        return popup && popup->objectName().toStdString() == menu;
    });
}

void Visitor::openList(const std::string& control) {
    click(control);
    waitUntil("the list of " + control, [&] {
        const QWidget* list = qobject_cast<QComboBox*>(find(control))->view();
        return list->isVisible() && QApplication::activePopupWidget() == list->window();
    });
}

void Visitor::clickListItem(const std::string& text) {
    clickAt([&] {
        const QWidget* popup = QApplication::activePopupWidget();
        auto* view = popup ? popup->findChild<QAbstractItemView*>() : nullptr;
        for (int row = 0; view && row < view->model()->rowCount(); ++row) {
            const QModelIndex item = view->model()->index(row, 0);
            if (item.data().toString().toStdString() == text)
                return Target{view->viewport(), view->visualRect(item).center()};
        }
        throw TourFailure("There is no item " + text + " in an open list.");
    });
    waitUntil("the end of the list", [] { return !QApplication::activePopupWidget(); });
}

void Visitor::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    waitUntil("the keyboard", [this] {
        QWidget* dialog = QApplication::activeModalWidget();
        QWidget* front = dialog ? dialog : &window_;
        takeKeyboard(front);
        // A list that has just closed may hold the keyboard for a moment longer; one that is open passes it
        // on.
        return QApplication::activePopupWidget() ? QGuiApplication::focusWindow() != nullptr
                                                 : QGuiApplication::focusWindow() == front->windowHandle();
    });
    for (const auto action : {QTest::Press, QTest::Release}) {
        post([action, key, modifiers] {
            if (QWindow* window = QGuiApplication::focusWindow())
                QTest::keyEvent(action, window, key, modifiers);
        });
    }
}

void Visitor::waitForWindow() {
    waitUntil("the main window", [this] {
        takeKeyboard(&window_);
        return window_.isActiveWindow() && window_.windowHandle()->isExposed();
    });
}

void Visitor::waitForDialog(const std::string& dialog) {
    waitUntil("the dialog " + dialog, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || modal->objectName().toStdString() != dialog)
            return false;
        takeKeyboard(modal);
        return modal->isActiveWindow();
    });
}

void Visitor::waitForNoDialog() {
    waitUntil("the end of the dialog", [] { return !QApplication::activeModalWidget(); });
}

std::string Visitor::shows(const std::string& control) {
    std::string text = ask([&] { return textOf(find(control)); });
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void Visitor::expect(const std::string& control, const std::string& shown) {
    const std::string text = shows(control);
    if (text != shown)
        throw TourFailure(control + " shows \"" + text + "\" instead of \"" + shown + "\".");
}

void Visitor::waitToSee(const std::string& control, const std::string& shown, Limit limit) {
    waitUntil(
        "\"" + shown + "\" in " + control, [&] { return textOf(find(control)) == shown; }, limit);
}

void Visitor::waitForOther(const std::string& control, const std::string& shown) {
    waitUntil("another text than \"" + shown + "\" in " + control,
              [&] { return textOf(find(control)) != shown; });
}

void Visitor::type(const std::string& control, const std::string& text) {
    click(control);
    press(Qt::Key_A, Qt::ControlModifier);
    ask([&] {
        QTest::keyClicks(findInReach(control), QString::fromStdString(text));
        return true;
    });
}

bool Visitor::hasBlack(const std::string& control) const {
    const QImage picture = find(control)->grab().toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == Qt::black)
                return true;
        }
    }
    return false;
}

void Visitor::expectVisible(const std::string& control, bool visible) {
    if (ask([&] { return find(control)->isVisible(); }) != visible)
        throw TourFailure(control + (visible ? " is not in sight." : " is in sight."));
}

void Visitor::stepBack() {
    ask([this] {
        if (!QApplication::activePopupWidget())
            QTest::mouseMove(window_.windowHandle(), QPoint(window_.width() - 1, window_.height() - 1));
        return true;
    });
}

}  // namespace quorvex::tour
