#pragma once

#include <QString>
#include <functional>
#include <string_view>
#include <utility>

#include "link/console.h"
#include "tests/support/journal.h"

namespace quorvex {

/// Notes what the operator is shown: "status black: ...", "box critical: ... [title]" ("[]" is the default
/// title), "beep", "hourglass up", "hourglass down".
class FakeConsole : public Console {
public:
    explicit FakeConsole(Journal& journal) : journal_(journal) {}

    void status(std::string_view text, Colour colour) override {
        journal_.note("status " + name(colour) + ": " + fromUtf8(text));
    }
    void messageBox(std::string_view text, Icon icon, std::string_view title) override {
        journal_.note("box " + name(icon) + ": " + fromUtf8(text) + " [" + fromUtf8(title) + "]");
        if (const auto something = std::exchange(whileBoxIsShown_, {}))
            something();
    }
    void beep() override { journal_.note(QStringLiteral("beep")); }
    void hourglass(bool up) override {
        isHourglassUp_ = up;
        journal_.note(QString(up ? "hourglass up" : "hourglass down"));
    }

    void progress(int done, int total) override {
        progress_ << QStringLiteral("%1 of %2").arg(done).arg(total);
    }

    /// How far operations have told to be; not in the journal.
    const QStringList& progress() const { return progress_; }
    bool isHourglassUp() const { return isHourglassUp_; }
    /// What the operator, or the world, does while the next box is open.
    void whileBoxIsShown(std::function<void()> something) { whileBoxIsShown_ = std::move(something); }

private:
    static QString name(Colour colour) {
        switch (colour) {
            case 0x000000:
                return QStringLiteral("black");
            case 0x0000FF:
                return QStringLiteral("red");
            case 0x009600:
                return QStringLiteral("green");  // red 0, green 150, blue 0
            default:
                return "colour " + QString::number(colour);
        }
    }
    static QString name(Icon icon) {
        switch (icon) {
            case Icon::none:
                return QStringLiteral("plain");
            case Icon::information:
                return QStringLiteral("information");
            case Icon::critical:
                break;
        }
        return QStringLiteral("critical");
    }

    Journal& journal_;
    std::function<void()> whileBoxIsShown_;
    bool isHourglassUp_ = false;
    QStringList progress_;
};

}  // namespace quorvex
