#pragma once

#include <QDir>
#include <functional>
#include <map>
#include <stdexcept>

#include "tests/support/program.h"
#include "tests/support/unit_process.h"
#include "tour/units.h"

namespace quorvex::tour {

/// What a visitor expected of the window and did not get, as a sentence.
class TourFailure : public std::runtime_error {
public:
    explicit TourFailure(const QString& sentence) : std::runtime_error(sentence.toStdString()) {}
};

/// How the window is to look.
struct Look {
    QString scale;       ///< of the display, "1.5" for example; empty: the display's own
    QString fontPoints;  ///< empty: the system's font
    bool dark = false;
};

/// A person at the program's main window, with mouse and keyboard, and simulated units at its ports. Controls
/// are named by their objectName. What a deed leads to comes a moment later, so every look waits for what it
/// expects. All of it throws TourFailure.
class Visitor {
public:
    /// Everything that the visitor makes goes into `folder`.
    Visitor(const QDir& folder, const Look& look);

    QString file(const QString& name) const { return folder_.filePath(name); }
    /// What the simulated unit holds: lines "NN=DIGITS".
    QString holds(const Unit& unit) const;

    /// Waits until `holds`; `what` is named if it does not happen in time.
    void waitUntil(const QString& what, const std::function<bool()>& holds);

    /// Presses and releases the left button over the middle of a control.
    void click(const QString& control) { ask({{"do", "click"}, {"name", control}}); }
    void clickTab(const QString& caption);
    void openMenu(const QString& menu);
    /// Opens a drop-down list; picks an item of it.
    void openList(const QString& control);
    void clickListItem(const QString& control, const QString& text);
    /// Presses and releases a key in a window; in an open menu an item's access key chooses it.
    void press(Qt::Key key, const QString& window);
    /// Replaces what a field holds by typing.
    void type(const QString& control, const QString& text);
    /// Confirms a dialog by its default button.
    void confirm(const QString& dialog);
    /// Waits until the window or dialog is in front and has the keyboard.
    void waitForWindow(const QString& window);
    void waitForNoDialog();

    /// A control as a person reads it: a field's or label's text without trailing blanks, "on" or "off" of
    /// a box or option, the item in sight of a list.
    QString shows(const QString& control);
    void expect(const QString& control, const QString& shown);
    void expectVisible(const QString& control, bool visible);
    /// Whether a control shows anything in pure black, as a picture does that is not blank.
    bool hasBlack(const QString& control);
    /// A picture of what is in front: the menu or drop-down list with the window it belongs to, else the
    /// dialog, else the main window. Without frames, so it looks the same under every window manager.
    void takePicture(const QString& name);

private:
    QJsonValue ask(const QJsonObject& command);

    QDir folder_;
    std::map<const Unit*, UnitProcess> units_;
    Program program_;
};

}  // namespace quorvex::tour
