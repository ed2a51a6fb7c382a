#pragma once

#include <QComboBox>

#include "tests/support/bench.h"

namespace quorvex {

// What a person does with the port, by the menu.

/// Chooses COM`number` in the port dialog.
inline void choosePort(Bench& bench, int number) {
    bench.person.plan([number](QDialog& dialog) {
        auto& ports = *dialog.findChild<QComboBox*>("ComboCom");
        ports.setFocus();
        QTest::keyClick(&ports, Qt::Key_Home);
        for (int i = 1; i < number; ++i)
            QTest::keyClick(&ports, Qt::Key_Down);
        QCOMPARE(ports.currentText(), "COM" + QString::number(number));
        hand::click(*dialog.findChild<QWidget*>("CmdOK"));
    });
    bench.clickMenu("mnuComPort");
}

/// Chooses the preselected port, which cannot be opened any more, and leaves the dialog.
inline void chooseAPortThatFails(Bench& bench) {
    bench.wire.refuse(1);
    bench.person.plan([](QDialog& dialog) {
        hand::click(*dialog.findChild<QWidget*>("CmdOK"));
        hand::click(*dialog.findChild<QWidget*>("CmdCancel"));
    });
    bench.clickMenu("mnuComPort");
}

/// Does `deed` in the first wait in which `lines` lines have been sent.
inline void afterLines(Bench& bench, qsizetype lines, std::function<void()> deed) {
    bench.loop.inNextWait([&bench, lines, deed = std::move(deed)] {
        if (bench.wire.lines().size() < lines)
            afterLines(bench, lines, deed);
        else
            deed();
    });
}

/// How the port of an operation goes away: "another", "again", "fails", "lost".
inline QStringList losePort(Bench& bench, const QString& way) {
    const QString dialog = dialogEntry("ComSelect", "Select Serial Port");
    if (way == "lost") {
        bench.wire.pullCable();
        return {};
    }
    if (way == "fails") {
        chooseAPortThatFails(bench);
        return {dialog, "close", "cannot open 1", failureEntry("Could not open COM 1")};
    }
    const QString number = way == "another" ? "2" : "1";
    choosePort(bench, number.toInt());
    return {dialog, "close", "open " + number, "store ComPort=" + number};
}

}  // namespace quorvex
