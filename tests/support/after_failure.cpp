#include "tests/support/after_failure.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

namespace quorvex {

namespace {
constexpr int kLookEveryMs = 20;
}

ClosesAfterFailure::ClosesAfterFailure() {
    startTimer(kLookEveryMs);
}

void ClosesAfterFailure::timerEvent(QTimerEvent* /*event*/) {
    if (!QTest::currentTestFailed())
        return;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* dialog = qobject_cast<QDialog*>(window);
        if (dialog && dialog->isVisible())
            dialog->done(QDialog::Rejected);
    }
}

}  // namespace quorvex
