#pragma once

#include <QAction>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QWidget>
#include <functional>

namespace quorvex {

/// Works the program's window from outside. Each line on standard input is one
/// command, a JSON object; each is answered by one line on standard output,
/// {"value": ...} or {"error": "..."}:
///
///     {"do":"windows"}                                every visible window:
///     name, class, title, modal, and
///                                                     for a message box text,
///                                                     icon and buttons
///     {"do":"get","name":N,"property":P}              a property of the
///     control or menu item
///     {"do":"items","name":N}                         texts of a drop-down
///     list
///     {"do":"shown","name":N}                         text of the item that a
///     one-item list shows
///     {"do":"click","name":N}                         a click on the middle of
///     a control
///     {"do":"clickItem","name":N}                     a click on a menu, or on
///     an item of an open menu
///     {"do":"clickOk"}                                a click on OK of the box
///     in front
///     {"do":"key","name":N,"key":K}                   a key for the window of
///     the control
///     {"do":"close","name":N}                         the close button of a
///     window's frame
///     {"do":"pointer"}                                "normal" or "hourglass"
///     {"do":"program"}                                names of the program
///
/// What a person does (clicks, keys, close) is events of the window system, and
/// it happens after the answer: it may end in a dialog, or in the end of the
/// program.
class Driver : public QObject {
public:
    Driver();

private:
    void readInput();
    QJsonObject answer(const QJsonObject& command);
    QJsonObject click(const QString& name);
    QJsonObject clickItem(const QString& name);
    QJsonObject clickOk();
    void later(std::function<void()> deed);

    QSocketNotifier input_;
    QByteArray pending_;
};

}  // namespace quorvex
