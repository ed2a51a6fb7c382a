#pragma once

#include <QStringList>
#include <string>
#include <utility>

#include "link/qt_text.h"

namespace quorvex {

/// What happened to the fakes of one test, in the order in which it happened: one list for all of them, so
/// that a test can say what came before what.
class Journal {
public:
    void note(const std::string& latin1) { note(fromLatin1(latin1)); }
    void note(const QString& entry) { entries_.append(entry); }
    void note(const char* entry) { note(QString::fromUtf8(entry)); }
    const QStringList& entries() const { return entries_; }
    /// The entries that begin with `prefix`, whole.
    QStringList entriesOf(const QString& prefix) const {
        QStringList found;
        for (const QString& entry : entries_) {
            if (entry.startsWith(prefix))
                found.append(entry);
        }
        return found;
    }
    /// The entries, and an empty journal from here on.
    QStringList take() { return std::exchange(entries_, {}); }

private:
    QStringList entries_;
};

}  // namespace quorvex
