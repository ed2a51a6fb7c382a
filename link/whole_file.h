#pragma once

#include <QByteArray>
#include <QString>

namespace quorvex {

/// Puts `bytes` into the file `name`, which is replaced whole or not at all. Empty on success, else what went
/// wrong, in which the bytes are called `what`.
QString replaceFile(const QString& name, const QByteArray& bytes, const QString& what);

/// Adds `line` to the end of a text file, whole or not at all; a file that is new begins with `header`. Both
/// end with a line feed. Result as above. Nobody else may add to it meanwhile.
QString appendLine(const QString& name, const QByteArray& header, const QByteArray& line,
                   const QString& what);

}  // namespace quorvex
