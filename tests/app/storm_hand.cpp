#include "tests/app/storm_hand.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimerEvent>
#include <algorithm>
#include <limits>
#include <utility>

#include "link/held.h"
#include "tests/support/hand.h"

namespace quorvex {

namespace {

constexpr qsizetype kDeedsKept = 40;
constexpr int kLongestPause = 10;  ///< of turns in an operation, so that some come to their end
constexpr int kLongestNumber = 4;
constexpr int kNeverMs = std::numeric_limits<int>::max();

constexpr Qt::Key kKeys[] = {
    Qt::Key_Tab,    Qt::Key_Backtab,   Qt::Key_Return, Qt::Key_Space, Qt::Key_Up,     Qt::Key_Down,
    Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Home,   Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown,
    Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Escape, Qt::Key_F10,   Qt::Key_Insert};
constexpr char kTyped[] = "0123456789ABCDEFabcdefxyz*- ";

QWidget* frontOf(QWidget& window) {
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return &window;
}

bool isExit(const QAction* action) {
    return action && action->objectName() == "mnuExit";
}

}  // namespace

StormHand::StormHand(FrmMain& window, Chance chance, QString folder)
    : window_(window),
      chance_(chance),
      folder_(std::move(folder)),
      numbers_(window.findChildren<QLineEdit*>(QRegularExpression("^TextF(M|m|req).*"))) {}

void StormHand::storm(int deeds) {
    const Held storming(isStorming_, true);
    left_ = deeds;
    pause_ = 1 + chance_.upTo(kLongestPause - 1);
    soon();
    while (left_ > 0)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    while (!isQuiet())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// A button that was pressed by its access key is clicked later.
bool StormHand::isQuiet() const {
    const auto buttons = window_.findChildren<QAbstractButton*>();
    return frontOf(window_) == &window_ && !window_.link().isBusy() &&
           std::none_of(buttons.begin(), buttons.end(), [](const auto* button) { return button->isDown(); });
}

/// A timer of its own each time: one does not fire inside its own handler, and deeds must nest.
void StormHand::soon() {
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this, timer] {
        timer->deleteLater();
        turn();
    });
    timer->start(everyMs);
}

void StormHand::turn() {
    if (!isStorming_)
        return;
    soon();
    const Held deeper(depth_, depth_ + 1);
    deepest_ = std::max(deepest_, depth_);
    timePasses();
    if (holdsTimers_)
        holdNewTimers();
    if (left_ == 0)
        leave();
    else if (!window_.link().isBusy() || chance_.oneIn(pause_))
        deed();
}

void StormHand::deed() {
    --left_;
    shortenNumbers();
    QWidget* front = frontOf(window_);
    const QString name = front->objectName();
    ++places_[name.isEmpty() ? front->metaObject()->className() : name];
    if (front == &window_ && !window_.isActiveWindow())
        window_.activateWindow();  // it does not become active by itself when a dialog has gone
    const int which = chance_.upTo(14);
    if (which == 0 && !others.empty())
        chance_.oneOf(others)();
    else if (which == 1 && holdsTimers_)
        tickTimers();
    else if (auto* menu = qobject_cast<QMenu*>(front))
        inMenu(*menu);
    else if (auto* dialog = qobject_cast<QFileDialog*>(front))
        inFileDialog(*dialog);
    else if (front->windowType() == Qt::Popup && chance_.oneIn(3))
        escape(*front);
    else if (auto* box = qobject_cast<QMessageBox*>(front); box && chance_.oneIn(2))
        answer(*box);
    else
        inWindow(*front);
}

/// One beyond 16 bits ends the program when a calibration begins, as intended.
void StormHand::shortenNumbers() {
    for (QLineEdit* number : numbers_) {
        if (number->text().size() > kLongestNumber)
            number->setText(number->text().left(kLongestNumber));
    }
}

/// Out of whatever is in front.
void StormHand::leave() {
    QWidget* front = frontOf(window_);
    silence();
    if (holdsTimers_)
        tickTimers();
    if (auto* box = qobject_cast<QMessageBox*>(front))
        box->reject();
    else if (auto* dialog = qobject_cast<QDialog*>(front))
        dialog->reject();
    else if (front != &window_)
        escape(*front);
    else if (!window_.link().isBusy())
        endCapture();
}

/// Those of the window that go by the machine's clock.
QList<QPointer<QTimer>> StormHand::timers() const {
    QList<QPointer<QTimer>> all;
    for (const char* name : {"Timer1", "RScreenTimer"}) {
        for (QTimer* timer : window_.findChildren<QTimer*>(name)) {
            if (timer->isActive())
                all << timer;
        }
    }
    return all;
}

void StormHand::holdNewTimers() {
    for (const auto& timer : timers()) {
        if (timer->interval() != kNeverMs)
            timer->setInterval(kNeverMs);
    }
}

void StormHand::tickTimers() {
    for (const auto& timer : timers()) {
        if (!timer)
            continue;  // what another one did has closed its dialog
        QTimerEvent event(timer->timerId());
        QCoreApplication::sendEvent(timer, &event);
    }
}

void StormHand::inWindow(QWidget& front) {
    const int which = chance_.upTo(19);
    if (which < 10)
        clickSomewhere(front);
    else if (which < 16)
        pressKey(front);
    else if (which < 18)
        turnWheel(front);
    else if (&front == &window_)
        openMenu();
    else if (auto* dialog = qobject_cast<QDialog*>(&front); dialog && chance_.oneIn(2))
        dialog->close();
}

void StormHand::inMenu(QMenu& menu) {
    const auto actions = menu.actions();
    QAction* action =
        actions.isEmpty() ? nullptr : actions[chance_.upTo(static_cast<int>(actions.size()) - 1)];
    if (!action || isExit(action) || chance_.oneIn(3)) {
        escape(menu);
        return;
    }
    note("menu " + action->text(), menu);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
}

void StormHand::answer(const QMessageBox& box) {
    const auto buttons = box.buttons();
    QAbstractButton* button = buttons[chance_.upTo(static_cast<int>(buttons.size()) - 1)];
    note("answer " + button->text(), box);
    button->click();
}

void StormHand::inFileDialog(QFileDialog& dialog) {
    note("file", dialog);
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    const auto which =
        dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save : QDialogButtonBox::Open;
    dialog.findChild<QLineEdit*>("fileNameEdit")
        ->setText(folder_ + "/" + QString::number(chance_.upTo(5)) + ".bpc");
    if (chance_.oneIn(3))
        dialog.reject();
    else
        buttons->button(which)->click();
}

QWidget* StormHand::somethingIn(QWidget& front) {
    const bool wantsButton = chance_.oneIn(2);
    QWidgetList all;
    for (QWidget* widget : front.findChildren<QWidget*>()) {
        const bool isWorth = wantsButton ? qobject_cast<QAbstractButton*>(widget) != nullptr
                                         : widget->focusPolicy() != Qt::NoFocus || chance_.oneIn(20);
        if (isWorth && widget->isVisible() && widget->window() == &front && !qobject_cast<QMenuBar*>(widget))
            all << widget;
    }
    return all.isEmpty() ? &front : all[chance_.upTo(static_cast<int>(all.size()) - 1)];
}

/// Out of a popup; the menu bar takes keys of its own while one of its titles is lit.
void StormHand::escape(QWidget& popup) {
    note("Esc", popup);
    QTest::keyClick(popup.focusWidget() ? popup.focusWidget() : &popup, Qt::Key_Escape);
    if (window_.menuBar()->activeAction() && !QApplication::activePopupWidget())
        QTest::keyClick(window_.menuBar(), Qt::Key_Escape);
}

void StormHand::clickSomewhere(QWidget& front) {
    QWidget* aimed = somethingIn(front);
    const QPoint place(chance_.upTo(std::max(0, aimed->width() - 1)),
                       chance_.upTo(std::max(0, aimed->height() - 1)));
    const QPoint there = aimed->mapTo(&front, place);
    QPointer<QWidget> met = front.childAt(there);
    if (!met)
        return;
    note("click", *met);
    const auto button = chance_.oneIn(20) ? Qt::RightButton : Qt::LeftButton;
    const QPoint at = met->mapFrom(&front, there);
    QTest::mousePress(met, button, {}, at);
    if (met)
        QTest::mouseRelease(met, button, {}, at);
}

void StormHand::pressKey(QWidget& front) {
    QWidget* target = front.focusWidget() ? front.focusWidget() : &front;
    const int which = chance_.upTo(9);
    if (which < 5) {
        const char typed = kTyped[chance_.upTo(static_cast<int>(sizeof kTyped) - 2)];
        note(QString("type ") + typed, *target);
        QTest::keyClick(target, typed);
    } else if (which < 9) {
        const Qt::Key key = kKeys[chance_.upTo(static_cast<int>(std::size(kKeys)) - 1)];
        note(QString("key %1").arg(key, 0, 16), *target);
        QTest::keyClick(target, key, chance_.oneIn(8) ? Qt::ControlModifier : Qt::NoModifier);
    } else {
        // An access key of a button clicks it a tenth of a real second later; those of the menus work at
        // once.
        const char letter = holdsTimers_ ? "fh"[chance_.upTo(1)] : static_cast<char>('a' + chance_.upTo(25));
        note(QString("Alt+") + letter, *target);
        QTest::keyClick(target, letter, Qt::AltModifier);
    }
}

void StormHand::turnWheel(QWidget& front) {
    QWidget* target = somethingIn(front);
    note("wheel", *target);
    hand::turnWheel(*target, chance_.oneIn(2) ? 120 : -120);
}

void StormHand::openMenu() {
    const auto titles = window_.menuBar()->actions();
    QAction* title = titles[chance_.upTo(static_cast<int>(titles.size()) - 1)];
    note("open " + title->text(), window_);
    QTest::mouseClick(window_.menuBar(), Qt::LeftButton, {},
                      window_.menuBar()->actionGeometry(title).center());
}

void StormHand::note(const QString& what, const QWidget& where) {
    lastDeeds_ << QString("%1 %2 (%3)").arg(what, where.objectName(), where.metaObject()->className());
    if (lastDeeds_.size() > kDeedsKept)
        lastDeeds_.removeFirst();
}

}  // namespace quorvex
