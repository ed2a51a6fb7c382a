#pragma once

#include <QFile>
#include <QString>

namespace quorvex {

/// A text file, whole; empty when it cannot be read.
inline QString fileText(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace quorvex
