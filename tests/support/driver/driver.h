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
///     {"do":"shown","name":N}                         what a person reads of
///     a control: text, "on" or "off", the item of a one-item list
///     {"do":"isOpen","name":N}                        whether a drop-down list
///     is open
///     {"do":"has","name":N,"colour":C}                whether a control shows
///     anything in that colour
///     {"do":"picture","name":N,"file":F}              a picture of a window,
///     with the menu or drop-down list that is open
///     {"do":"click","name":N}                         a click on the middle of
///     a control
///     {"do":"clickText","name":N,"text":T}            a click on a page's tab,
///     or on an item of an open drop-down list
///     {"do":"clickItem","name":N}                     a click on a menu, or on
///     an item of an open menu
///     {"do":"clickOk"}                                a click on OK of the box
///     in front
///     {"do":"key","name":N,"key":K}                   a key for the window of
///     the control
///     {"do":"type","name":N,"text":T}                 keys that replace what
///     the field with the focus holds
///     {"do":"activate","name":N}                      gives the window of the
///     control the keyboard; whether it has it
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
    /// What a control tells; undefined if the command asks for a deed.
    QJsonValue tell(const QString& deed, QWidget& control, const QJsonObject& command);
    bool handle(const QString& deed, QWidget& control, const QJsonObject& command);
    bool clickAt(const QWidget& widget, QPoint place);
    bool clickText(QWidget& control, const QString& text);
    QJsonObject clickItem(const QString& name);
    QJsonObject clickOk();
    void later(std::function<void()> deed);

    QSocketNotifier input_;
    QByteArray pending_;
};

}  // namespace quorvex
