#pragma once

#include <QComboBox>
#include <QTest>

#include "tests/support/hand.h"

namespace quorvex {

// What one does in the port dialog.

inline void press(QDialog& dialog, const char* button) {
    hand::click(*dialog.findChild<QWidget*>(button));
}

/// Picks by the keyboard, as the drop-down lets one.
inline void pick(QDialog& dialog, int number) {
    auto* ports = dialog.findChild<QComboBox*>("ComboCom");
    ports->setFocus();
    QTest::keyClick(ports, Qt::Key_Home);
    for (int i = 1; i < number; ++i)
        QTest::keyClick(ports, Qt::Key_Down);
    QCOMPARE(ports->currentText(), "COM" + QString::number(number));
}

}  // namespace quorvex
