#include "tests/support/driver/driver.h"

#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <array>
#include <cstdio>

namespace quorvex {

namespace {

QJsonObject value(const QJsonValue& content) {
    return {{"value", content}};
}

QJsonObject error(const QString& sentence) {
    return {{"error", sentence}};
}

template <typename Kind>
Kind* find(const QString& name) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    Kind* hidden = nullptr;
    for (QWidget* window : windows) {
        if constexpr (std::is_base_of_v<QWidget, Kind>) {
            if (window->objectName() == name && window->isVisible())
                return qobject_cast<Kind*>(window);
        }
        if (Kind* found = window->findChild<Kind*>(name)) {
            if (window->isVisible())
                return found;
            hidden = found;
        }
    }
    return hidden;
}

QString iconName(QMessageBox::Icon icon) {
    constexpr std::array<const char*, 5> kNames{"none", "information", "warning", "critical", "question"};
    return QString::fromLatin1(kNames.at(static_cast<std::size_t>(icon)));
}

QJsonObject describe(const QWidget& window) {
    QJsonObject told{{"name", window.objectName()},
                     {"class", QString::fromLatin1(window.metaObject()->className())},
                     {"title", window.windowTitle()},
                     {"modal", window.isModal()}};
    if (const auto* box = qobject_cast<const QMessageBox*>(&window)) {
        QJsonArray buttons;
        for (const QAbstractButton* button : box->buttons())
            buttons.append(button->text().remove(QLatin1Char('&')));
        told["text"] = box->text();
        told["icon"] = iconName(box->icon());
        told["buttons"] = buttons;
    }
    return told;
}

QJsonArray visibleWindows() {
    QJsonArray windows;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            windows.append(describe(*window));
    }
    return windows;
}

QJsonValue propertyOf(const QString& name, const QString& property) {
    const QObject* object = find<QWidget>(name);
    if (!object)
        object = find<QAction>(name);
    if (!object)
        return QJsonValue::Undefined;
    return QJsonValue::fromVariant(object->property(property.toLatin1()));
}

QString shownBy(QWidget& control) {
    if (const auto* list = qobject_cast<QListWidget*>(&control)) {
        const QListWidgetItem* item = list->itemAt(list->viewport()->rect().center());
        return item ? item->text() : QString();
    }
    const auto* button = qobject_cast<QAbstractButton*>(&control);
    if (button && button->isCheckable())
        return QString(button->isChecked() ? "on" : "off");
    return control.property("text").toString();
}

bool hasColour(QWidget& control, const QColor& colour) {
    const QImage picture = control.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto* first = reinterpret_cast<const QRgb*>(picture.constBits());
    const QRgb* end = first + picture.sizeInBytes() / qsizetype{sizeof(QRgb)};
    return std::find(first, end, colour.rgb()) != end;
}

QRect placeOf(const QWidget& window) {
    return {window.mapToGlobal(QPoint()), window.size()};
}

/// Moves the pointer to where nothing answers to it.
void leaveWindows() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            QTest::mouseMove(window->windowHandle(), QPoint(window->width() - 1, window->height() - 1));
    }
}

bool takePicture(QWidget& window, const QString& file) {
    QApplication::setCursorFlashTime(0);
    QWidget* popup = QApplication::activePopupWidget();
    if (!popup)
        leaveWindows();
    QCoreApplication::processEvents();
    const QRect place = popup ? placeOf(window).united(placeOf(*popup)) : placeOf(window);
    QPixmap picture(place.size() * window.devicePixelRatio());
    picture.setDevicePixelRatio(window.devicePixelRatio());
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.drawPixmap(placeOf(window).topLeft() - place.topLeft(), window.grab());
    if (popup)
        painter.drawPixmap(placeOf(*popup).topLeft() - place.topLeft(), popup->grab());
    painter.end();
    return picture.save(file);
}

}  // namespace

Driver::Driver() : input_(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&input_, &QSocketNotifier::activated, this, [this] { readInput(); });
}

void Driver::readInput() {
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (count <= 0) {
        input_.setEnabled(false);
        return;
    }
    pending_.append(buffer.data(), static_cast<qsizetype>(count));
    for (qsizetype end = pending_.indexOf('\n'); end >= 0; end = pending_.indexOf('\n')) {
        const QByteArray line = pending_.left(end);
        pending_.remove(0, end + 1);
        const QByteArray reply =
            QJsonDocument(answer(QJsonDocument::fromJson(line).object())).toJson(QJsonDocument::Compact);
        std::printf("%s\n", reply.constData());
        std::fflush(stdout);
    }
}

QJsonObject Driver::answer(const QJsonObject& command) {
    const QString deed = command["do"].toString();
    const QString name = command["name"].toString();
    if (deed == "windows")
        return value(visibleWindows());
    if (deed == "get") {
        const QJsonValue found = propertyOf(name, command["property"].toString());
        return found.isUndefined() ? error("no " + name) : value(found);
    }
    if (deed == "pointer")
        return value(QApplication::overrideCursor() ? "hourglass" : "normal");
    if (deed == "program")
        return value(QJsonObject{{"name", QApplication::applicationName()},
                                 {"displayName", QApplication::applicationDisplayName()}});
    if (deed == "clickOk")
        return clickOk();
    if (deed == "clickItem")
        return clickItem(name);
    auto* control = find<QWidget>(name);
    if (!control || !control->isVisible())
        return error("not to be seen: " + name);
    const QJsonValue told = tell(deed, *control, command);
    if (!told.isUndefined())
        return value(told);
    return handle(deed, *control, command) ? value(true) : error("cannot " + deed + " at " + name);
}

QJsonValue Driver::tell(const QString& deed, QWidget& control, const QJsonObject& command) {
    if (deed == "colour")
        return control.palette().color(control.foregroundRole()).name();
    if (deed == "has")
        return hasColour(control, QColor(command["colour"].toString()));
    if (deed == "shown")
        return shownBy(control);
    if (deed == "items") {
        QJsonArray items;
        const auto* list = qobject_cast<QComboBox*>(&control);
        for (int i = 0; list && i < list->count(); ++i)
            items.append(list->itemText(i));
        return items;
    }
    if (deed == "isOpen") {
        const auto* list = qobject_cast<QComboBox*>(&control);
        return list && list->view()->isVisible() &&
               QApplication::activePopupWidget() == list->view()->window();
    }
    if (deed == "activate") {
        if (!QApplication::activePopupWidget() && !control.window()->isActiveWindow())
            control.window()->activateWindow();
        return QApplication::activePopupWidget() || control.window()->isActiveWindow();
    }
    if (deed == "picture")
        return takePicture(*control.window(), command["file"].toString());
    return QJsonValue::Undefined;
}

bool Driver::handle(const QString& deed, QWidget& control, const QJsonObject& command) {
    QWindow* window = control.window()->windowHandle();
    if (deed == "click")
        return clickAt(control, control.rect().center());
    if (deed == "clickText")
        return clickText(control, command["text"].toString());
    if (deed == "key")
        later([window, key = static_cast<Qt::Key>(command["key"].toInt())] { QTest::keyClick(window, key); });
    else if (deed == "type")
        later([window, text = command["text"].toString()] {
            QTest::keyClick(window, Qt::Key_A, Qt::ControlModifier);
            for (const QChar c : text)
                QTest::keyClick(window, c.toLatin1());
        });
    else if (deed == "close")
        later([window] { window->close(); });
    else
        return false;
    return true;
}

bool Driver::clickAt(const QWidget& widget, QPoint place) {
    const QPoint there = widget.mapTo(widget.window(), place);
    later([window = widget.window()->windowHandle(), there] {
        QTest::mouseClick(window, Qt::LeftButton, {}, there);
    });
    return true;
}

bool Driver::clickText(QWidget& control, const QString& text) {
    if (const auto* tabs = qobject_cast<QTabWidget*>(&control)) {
        for (int i = 0; i < tabs->count(); ++i) {
            if (tabs->tabText(i) == text)
                return clickAt(*tabs->tabBar(), tabs->tabBar()->tabRect(i).center());
        }
    }
    if (const auto* list = qobject_cast<QComboBox*>(&control)) {
        const QModelIndex item = list->model()->index(list->findText(text), list->modelColumn());
        if (item.isValid() && list->view()->isVisible())
            return clickAt(*list->view()->viewport(), list->view()->visualRect(item).center());
    }
    return false;
}

QJsonObject Driver::clickItem(const QString& name) {
    QAction* item = find<QAction>(name);
    if (const auto* menu = find<QMenu>(name))
        item = menu->menuAction();
    if (!item)
        return error("no item " + name);
    for (QObject* holder : item->associatedObjects()) {
        auto* widget = qobject_cast<QWidget*>(holder);
        if (!widget || !widget->isVisible())
            continue;
        QRect place;
        if (const auto* bar = qobject_cast<QMenuBar*>(widget))
            place = bar->actionGeometry(item);
        else if (const auto* menu = qobject_cast<QMenu*>(widget))
            place = menu->actionGeometry(item);
        return value(clickAt(*widget, place.center()));
    }
    return error("not to be seen: " + name);
}

QJsonObject Driver::clickOk() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QAbstractButton* ok = box ? box->button(QMessageBox::Ok) : nullptr;
    if (!ok)
        return error("no box in front");
    return value(clickAt(*ok, ok->rect().center()));
}

void Driver::later(std::function<void()> deed) {
    QTimer::singleShot(0, this, std::move(deed));
}

}  // namespace quorvex
