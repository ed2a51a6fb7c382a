#pragma once

#include <QTextEdit>

#include "tests/support/bench.h"

namespace quorvex {

/// The value fields that the window holds, as its summary shows them: "01" to "15", each with its ten
/// characters. Leaves no trace in the journal.
inline std::map<QString, QString> imageOf(Bench& bench) {
    std::map<QString, QString> values;
    QString text;
    bench.person.plan([&text](QDialog& summary) {
        text = summary.findChild<QTextEdit*>("TextSummary")->toPlainText();
        hand::click(*summary.findChild<QWidget*>("CommandOK"));
    });
    const QStringList before = bench.journal.take();
    bench.click("CommandSummary");
    for (const QString& line : text.split('\n')) {
        if (line.size() == 42)
            values[line.left(2)] = line.mid(32);
    }
    bench.journal.take();
    for (const QString& entry : before)
        bench.journal.note(entry);
    return values;
}

}  // namespace quorvex
