#pragma once

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

#include "tests/support/image_view.h"
#include "tests/support/other_file.h"

namespace quorvex {

// What a person does with settings files, by the window.

/// Names the file in the dialog that is open, and presses its button.
inline void takeFile(QDialog& dialog, const QString& path, QDialogButtonBox::StandardButton button) {
    dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
    hand::click(*dialog.findChild<QDialogButtonBox*>("buttonBox")->button(button));
}

inline void loadFile(Bench& bench, const QString& path) {
    bench.person.plan([path](QDialog& dialog) { takeFile(dialog, path, QDialogButtonBox::Open); });
    bench.click("CommandRead");
}

/// The image and the fields for it are those of an OtherFile, whole.
inline void verifyIsOtherFile(Bench& bench) {
    const auto image = imageOf(bench);
    const QStringList& values = OtherFile::values();
    for (qsizetype i = 0; i < values.size(); ++i) {
        const QString number = QString("%1").arg(i + 1, 2, 16, QChar('0')).toUpper();
        QCOMPARE(image.at(number), values[i].leftJustified(10));
    }
    QCOMPARE(bench.text("TextBeltpackId"), QString::number(0x55555));
    QCOMPARE(bench.text("TextParkB"), values[2]);
    QCOMPARE(bench.text("TextRfCarrs"), values[13]);
}

}  // namespace quorvex
