#pragma once

#include <QStringList>
#include <QTemporaryDir>

namespace quorvex {

/// A settings file in a folder of its own, with none of the values that a simulated Beltpack has at first.
class OtherFile {
public:
    OtherFile();

    QString path() const { return folder_.filePath("other.bpc"); }
    /// Record by record, without blanks.
    static const QStringList& values();

private:
    QTemporaryDir folder_;
};

}  // namespace quorvex
