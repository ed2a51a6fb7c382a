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
#include <QTest>
#include <QTimer>
#include <QWindow>
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
    if (deed == "click")
        return click(name);
    if (deed == "colour")
        return value(control->palette().color(control->foregroundRole()).name());
    if (deed == "items") {
        QJsonArray items;
        const auto* list = qobject_cast<QComboBox*>(control);
        for (int i = 0; list && i < list->count(); ++i)
            items.append(list->itemText(i));
        return value(items);
    }
    if (deed == "shown") {
        const auto* list = qobject_cast<QListWidget*>(control);
        const QListWidgetItem* item = list ? list->itemAt(list->viewport()->rect().center()) : nullptr;
        return value(item ? item->text() : QString());
    }
    QWindow* window = control->window()->windowHandle();
    if (deed == "key") {
        const auto key = static_cast<Qt::Key>(command["key"].toInt());
        later([window, key] { QTest::keyClick(window, key); });
        return value(true);
    }
    if (deed == "close") {
        later([window] { window->close(); });
        return value(true);
    }
    return error("cannot " + deed);
}

QJsonObject Driver::click(const QString& name) {
    const auto* control = find<QWidget>(name);
    QWindow* window = control->window()->windowHandle();
    const QPoint place = control->mapTo(control->window(), control->rect().center());
    later([window, place] { QTest::mouseClick(window, Qt::LeftButton, {}, place); });
    return value(true);
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
        QWindow* window = widget->window()->windowHandle();
        const QPoint middle = widget->mapTo(widget->window(), place.center());
        later([window, middle] { QTest::mouseClick(window, Qt::LeftButton, {}, middle); });
        return value(true);
    }
    return error("not to be seen: " + name);
}

QJsonObject Driver::clickOk() {
    const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QAbstractButton* ok = box ? box->button(QMessageBox::Ok) : nullptr;
    if (!ok)
        return error("no box in front");
    QWindow* window = box->windowHandle();
    const QPoint place = ok->mapTo(box, ok->rect().center());
    later([window, place] { QTest::mouseClick(window, Qt::LeftButton, {}, place); });
    return value(true);
}

void Driver::later(std::function<void()> deed) {
    QTimer::singleShot(0, this, std::move(deed));
}

}  // namespace quorvex
