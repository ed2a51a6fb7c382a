#include "tour/visitor.h"

#include <QDeadlineTimer>
#include <QThread>

namespace quorvex::tour {

namespace {

constexpr const char* kMainWindow = "FrmMain";
constexpr const char* kPages = "SSTab1";

std::map<const Unit*, UnitProcess> unitsAt(const QString& ports) {
    std::map<const Unit*, UnitProcess> units;
    for (const Unit* unit :
         {&rm5Beltpack(), &kirkBeltpack(), &rm5Antenna(), &kirkAntenna(), &displayBeltpack()}) {
        if (!units.try_emplace(unit, unit->arguments(ports)).first->second.isReady())
            throw TourFailure(QStringLiteral("The simulated unit at %1 did not start.").arg(unit->port));
    }
    return units;
}

/// What the program finds; an empty one it does not.
QMap<QString, QString> surroundings(const QString& ports, const QString& config, const Look& look) {
    return {{"QUORVEX_PORTS", ports},
            {"XDG_CONFIG_HOME", config},
            {"QT_QPA_PLATFORM", qEnvironmentVariable("QT_QPA_PLATFORM")},
            {"QT_SCALE_FACTOR", look.scale},
            {"QUORVEX_FONT_POINTS", look.fontPoints},
            {"QUORVEX_DARK", look.dark ? "1" : ""}};
}

}  // namespace

Visitor::Visitor(const QDir& folder, const Look& look)
    : folder_(folder),
      units_(unitsAt(file("ports"))),
      program_(surroundings(file("ports"), file("config"), look)) {}

QString Visitor::holds(const Unit& unit) const {
    return QString::fromLatin1(units_.at(&unit).holds(unit.dump(file("ports"))));
}

QJsonValue Visitor::ask(const QJsonObject& command) {
    QJsonValue answer = program_.ask(command);
    if (!program_.refusal().isEmpty())
        throw TourFailure("The window does not do it: " + program_.refusal());
    return answer;
}

void Visitor::waitUntil(const QString& what, const std::function<bool()>& holds) {
    const QDeadlineTimer limit(10'000);
    while (!holds()) {
        if (!program_.isRunning())
            throw TourFailure("The program ended: " + program_.end());
        if (const QString box = program_.box(); !box.isEmpty())
            throw TourFailure("A message box came instead of " + what + ": " + box);
        if (limit.hasExpired())
            throw TourFailure("In vain waited for " + what + ".");
        QThread::msleep(10);
    }
}

void Visitor::clickTab(const QString& caption) {
    ask({{"do", "clickText"}, {"name", kPages}, {"text", caption}});
}

void Visitor::openMenu(const QString& menu) {
    ask({{"do", "clickItem"}, {"name", menu}});
    waitUntil("the menu " + menu, [&] { return program_.get(menu, "visible").toBool(); });
}

void Visitor::openList(const QString& control) {
    click(control);
    waitUntil("the list of " + control, [&] { return ask({{"do", "isOpen"}, {"name", control}}).toBool(); });
}

void Visitor::clickListItem(const QString& control, const QString& text) {
    ask({{"do", "clickText"}, {"name", control}, {"text", text}});
    waitUntil("the end of the list", [&] { return !ask({{"do", "isOpen"}, {"name", control}}).toBool(); });
}

void Visitor::press(Qt::Key key, const QString& window) {
    waitForWindow(window);
    ask({{"do", "key"}, {"name", window}, {"key", int(key)}});
}

void Visitor::type(const QString& control, const QString& text) {
    click(control);
    ask({{"do", "type"}, {"name", control}, {"text", text}});
    expect(control, text);
}

void Visitor::confirm(const QString& dialog) {
    press(Qt::Key_Return, dialog);
    waitForNoDialog();
}

void Visitor::waitForWindow(const QString& window) {
    waitUntil(window, [&] { return program_.ask({{"do", "activate"}, {"name", window}}).toBool(); });
}

void Visitor::waitForNoDialog() {
    waitUntil("the end of the dialog", [&] { return program_.dialogs().isEmpty(); });
}

QString Visitor::shows(const QString& control) {
    QString text = program_.shown(control);
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

void Visitor::expect(const QString& control, const QString& shown) {
    waitUntil("\"" + shown + "\" in " + control, [&] { return shows(control) == shown; });
}

void Visitor::expectVisible(const QString& control, bool visible) {
    waitUntil(control + (visible ? " in sight" : " out of sight"),
              [&] { return program_.get(control, "visible").toBool() == visible; });
}

bool Visitor::hasBlack(const QString& control) {
    return ask({{"do", "has"}, {"name", control}, {"colour", "#000000"}}).toBool();
}

void Visitor::takePicture(const QString& name) {
    const QString front = program_.dialogs().value(0, kMainWindow);
    if (!ask({{"do", "picture"}, {"name", front}, {"file", file(name)}}).toBool())
        throw TourFailure("The picture " + name + " cannot be written.");
}

}  // namespace quorvex::tour
