#pragma once

#include <QStringList>

#include "beltpack/settings_image.h"
#include "tests/support/fake_console.h"
#include "tests/support/fake_controls.h"
#include "tests/support/fake_loop.h"
#include "tests/support/fake_port.h"
#include "tests/support/rows.h"

namespace quorvex {

/// A port, an operator and an image of which every value is known.
struct UpdateBench {
    UpdateBench() {
        port.holdOpen();
        for (int i = 0; i <= 20; ++i)
            image[i].value = "OLD";
    }
    UpdateBench(const UpdateBench&) = delete;
    UpdateBench& operator=(const UpdateBench&) = delete;

    /// The records that no longer hold what they held, as "13: 1F        ".
    QStringList changed() const {
        QStringList all;
        for (int i = 0; i <= 20; ++i) {
            if (image[i].value.str() != "OLD       ")
                all << QString("%1: %2").arg(i).arg(shown(image[i].value.str()));
        }
        return all;
    }

    Journal journal;
    FakeLoop loop;
    FakePort port{loop, journal};
    FakeConsole console{journal};
    CommandLink link{port, loop, console};
    SettingsImage image;
};

/// What an update shows and sends until it looks at the reply.
inline QStringList exchange(const QString& sending, const QStringList& lines) {
    QStringList entries{"hourglass up", "status black: " + sending};
    for (const QString& line : lines)
        entries << "> " + line;
    return entries << "hourglass down";
}

inline QStringList notReadBack(const QString& status) {
    return {"beep", "box critical: Value could not read back from Beltpack! []", "status black: " + status};
}

}  // namespace quorvex
