#pragma once

#include <QByteArray>
#include <QString>

namespace quorvex {

/// Puts `bytes` into the file `name`, which is replaced whole or not at all. Empty on success, else what went
/// wrong, in which the bytes are called `what`.
QString replaceFile(const QString& name, const QByteArray& bytes, const QString& what);

}  // namespace quorvex
