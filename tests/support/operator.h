#pragma once

#include <QDialog>
#include <QMessageBox>
#include <QObject>
#include <deque>
#include <functional>

#include "tests/support/journal.h"

namespace quorvex {

/// The person at the window where a modal window opens. A message box is noted, whole, and closed by a
/// click on its OK; a dialog is noted and handled as planned. What nobody planned is noted too and sent
/// away, so that the test goes on and fails at its journal.
class Operator : public QObject {
public:
    explicit Operator(Journal& journal);
    ~Operator() override;

    /// What is done with the next dialog that opens, by its controls. One that is still open afterwards is
    /// noted and sent away.
    void plan(std::function<void(QDialog&)> handling) { plans_.push_back(std::move(handling)); }
    /// What is planned is not done any more.
    void forgetPlans() { plans_.clear(); }
    /// While it rests, what opens is left to somebody else.
    void rest(bool rests) { rests_ = rests; }
    /// Dialogs that were planned and never opened.
    std::size_t plansLeft() const { return plans_.size(); }
    /// Called for each message box before its OK is clicked, which it may do itself.
    void beforeOk(std::function<void(QMessageBox&)> look) { look_ = std::move(look); }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void handle(QDialog& dialog);
    void handleBox(QMessageBox& box);

    Journal& journal_;
    bool rests_ = false;
    std::deque<std::function<void(QDialog&)>> plans_;
    std::function<void(QMessageBox&)> look_;
};

/// The journal's entry for a message box with one OK button: `icon` is "critical" or "information".
QString boxEntry(const QString& icon, const QString& title, const QString& text);
/// The same with the critical icon and the program's own title.
QString failureEntry(const QString& text);
/// The report of a setting that cannot be used: the fault, what is stored and where.
inline QString settingFault(const QString& fault, const QString& key, const QString& stored) {
    return "Run-time error '" + fault + "\r\n\r\nThe setting \"" + key + "\" holds \"" + stored +
           "\".\r\nIt is kept in the settings folder.";
}

/// The journal's entry for a dialog.
QString dialogEntry(const QString& name, const QString& caption);

}  // namespace quorvex
