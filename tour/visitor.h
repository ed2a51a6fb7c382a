#pragma once

#include <QApplication>
#include <QMainWindow>
#include <QPoint>
#include <QPointer>
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>

namespace quorvex::tour {

/// What a visitor expected of the window and did not get, as a sentence.
class TourFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The window did not even answer; nothing more can be asked of it.
class WindowHangs : public TourFailure {
public:
    using TourFailure::TourFailure;
};

/// What stands on the visitor's bench besides the window.
struct Bench {
    std::string folder;  ///< for the files that the visitor makes; full path
    /// What the simulated unit on a port ("COM1") holds: lines "NN=DIGITS". Throws std::runtime_error.
    std::function<std::string(const std::string& port)> unitHolds;
};

/// A person at the main window, with mouse and keyboard. Lives in a thread of its own, as a person does
/// beside a program: so a modal dialog or an exchange with a unit holds up the window's handler, but not the
/// visitor, who then sees and presses what a person would. Controls are named by their objectName; while a
/// modal dialog is up they are looked for there first. All of it throws TourFailure.
class Visitor {
public:
    using Limit = std::chrono::milliseconds;
    static constexpr Limit kLimit{10'000};

    Visitor(QMainWindow& window, Bench bench) : window_(window), bench_(std::move(bench)) {}

    const Bench& bench() const { return bench_; }

    /// Waits until `holds` (asked in the window's thread); `what` is named if it does not happen in time.
    void waitUntil(const std::string& what, const std::function<bool()>& holds, Limit limit = kLimit);

    /// Presses and releases the left button over the middle of a control.
    void click(const std::string& control);
    void clickTab(const std::string& caption);
    /// Opens a drop-down list; picks an item of the one that is open.
    void openList(const std::string& control);
    void clickListItem(const std::string& text);
    /// Opens a menu of the menu bar.
    void openMenu(const std::string& menu);
    /// Presses and releases a key; in an open menu an item's access key chooses it.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Replaces what a field holds by typing.
    void type(const std::string& control, const std::string& text);
    /// Waits until the main window is on the screen.
    void waitForWindow();
    void waitForDialog(const std::string& dialog);
    void waitForNoDialog();

    /// A control as a person reads it: a field's or label's text without trailing blanks, "on" or "off" of
    /// a box or option, the item in sight of a list.
    std::string shows(const std::string& control);
    void expect(const std::string& control, const std::string& shown);
    /// Waits until the control shows it.
    void waitToSee(const std::string& control, const std::string& shown, Limit limit = kLimit);
    /// Waits until the control shows something else than `shown`.
    void waitForOther(const std::string& control, const std::string& shown);
    /// Whether a control shows anything in pure black, as a picture does that is not blank.
    bool hasBlack(const std::string& control) const;
    void expectVisible(const std::string& control, bool visible);

    /// Moves the pointer to where nothing answers to it.
    void stepBack();

    /// Runs `look` in the window's thread, at whatever it does there, and gives its result.
    template <typename Look>
    auto ask(Look look) {
        using Answer = decltype(look());
        const auto task = std::make_shared<std::packaged_task<Answer()>>(std::move(look));
        std::future<Answer> answer = task->get_future();
        QMetaObject::invokeMethod(
            qApp, [task] { (*task)(); }, Qt::QueuedConnection);
        if (answer.wait_for(kLimit) != std::future_status::ready)
            throw WindowHangs("The window hangs.");
        return answer.get();
    }

private:
    /// Where the pointer goes; the widget may be gone before it gets there.
    struct Target {
        QPointer<QWidget> widget;
        QPoint at;
    };

    QWidget* find(const std::string& control) const;
    QWidget* findInReach(const std::string& control) const;
    void clickAt(const std::function<Target()>& place);

    QMainWindow& window_;
    Bench bench_;
};

}  // namespace quorvex::tour
