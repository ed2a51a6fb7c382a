#pragma once

#include <QStringList>
#include <functional>
#include <utility>

#include "link/console.h"
#include "link/qt_text.h"

namespace quorvex::tool {

/// The operator's side where there is no window: collects what the boxes say.
class PlainConsole : public Console {
public:
    /// `progress` is told what goes on.
    explicit PlainConsole(std::function<void(const QString&)> progress) : progress_(std::move(progress)) {}

    void status(std::string_view text, Colour /*colour*/) override {
        status_ = fromUtf8(text);
        tell(status_);
    }
    void progress(int done, int total) override {
        if (total > 0)
            tell(QStringLiteral("%1 %2 of %3").arg(status_).arg(done).arg(total));
    }
    void messageBox(std::string_view text, Icon icon, std::string_view /*title*/) override {
        boxes_ << fromUtf8(text).simplified();
        hasFailed_ = hasFailed_ || icon == Icon::critical;
    }
    void beep() override {}
    void hourglass(bool /*up*/) override {}

    void clear() {
        boxes_.clear();
        hasFailed_ = false;
    }
    /// The texts of the boxes since then, in one line.
    QString boxes() const { return boxes_.join(QLatin1Char(' ')); }
    /// Whether one of them told of a failure.
    bool hasFailed() const { return hasFailed_; }

private:
    void tell(const QString& text) {
        if (progress_)
            progress_(text);
    }

    std::function<void(const QString&)> progress_;
    QString status_;
    QStringList boxes_;
    bool hasFailed_ = false;
};

}  // namespace quorvex::tool
