#pragma once

#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <map>
#include <vector>

#include "app/frm_main.h"
#include "tests/support/chance.h"

namespace quorvex {

/// Somebody who clicks, types, scrolls and answers whatever is in front, without thinking, wherever the
/// program lets its window run. "&Exit" and the main window's own closing are left alone.
class StormHand : public QObject {
public:
    /// `folder`: where files may be saved.
    StormHand(FrmMain& window, Chance chance, QString folder);

    /// What happens besides, done one time in fifteen.
    std::vector<std::function<void()>> others;
    /// Between two deeds, of the machine's own time.
    int everyMs = 0;
    /// Called before each deed.
    std::function<void()> timePasses = [] {};
    /// The window's timers fire when this hand lets them, so that a seed repeats all.
    void holdTimers() { holdsTimers_ = true; }
    /// Called when the deeds are done: no unit may say anything any more, for a reader waits as long as one
    /// streams.
    std::function<void()> silence = [] {};
    /// Called where nothing but a capture without an end is under way.
    std::function<void()> endCapture = [] {};

    /// Does so many deeds, and returns when what they began on top of each other has ended, each dialog left.
    void storm(int deeds);
    /// What the last deeds were, the last one last.
    const QStringList& lastDeeds() const { return lastDeeds_; }
    int deepest() const { return deepest_; }
    /// How many deeds were done where: by the name of the window, or its class.
    const std::map<QString, int>& places() const { return places_; }

private:
    bool isQuiet() const;
    void soon();
    void turn();
    void deed();
    void leave();
    QList<QPointer<QTimer>> timers() const;
    void holdNewTimers();
    void tickTimers();
    void shortenNumbers();
    void inWindow(QWidget& front);
    void inMenu(QMenu& menu);
    void answer(const QMessageBox& box);
    void inFileDialog(QFileDialog& dialog);
    void escape(QWidget& popup);
    void clickSomewhere(QWidget& front);
    void pressKey(QWidget& front);
    void turnWheel(QWidget& front);
    void openMenu();
    void note(const QString& what, const QWidget& where);
    QWidget* somethingIn(QWidget& front);

    FrmMain& window_;
    Chance chance_;
    QString folder_;
    bool holdsTimers_ = false, isStorming_ = false;
    int left_ = 0, depth_ = 0, deepest_ = 0;
    int pause_ = 1;
    QStringList lastDeeds_;
    std::map<QString, int> places_;
    QList<QLineEdit*> numbers_;  ///< of calibrations
};

}  // namespace quorvex
