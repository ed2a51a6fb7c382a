#pragma once

#include <QString>
#include <QStringList>
#include <map>
#include <string>
#include <utility>

#include "link/settings_store.h"

namespace quorvex {

/// What happened on the bench, in the order in which it happened.
class Journal {
public:
    void note(const QString& entry) { entries_ << entry; }
    /// The entries, and an empty journal from here on.
    QStringList take() { return std::exchange(entries_, {}); }

private:
    QStringList entries_;
};

/// Settings in memory. What the program saves is noted: "store ComPort=3".
class MemoryStore : public SettingsStore {
public:
    explicit MemoryStore(Journal& journal) : journal_(journal) {}

    std::string get(std::string_view key, std::string_view byDefault) const override {
        const auto found = values_.find(key);
        return std::string(found == values_.end() ? byDefault : found->second);
    }
    void save(std::string_view key, std::string_view text) override {
        put(key, text);
        journal_.note(
            QStringLiteral("store %1=%2")
                .arg(QString::fromStdString(std::string(key)), QString::fromStdString(std::string(text))));
    }
    /// Stores as another program would: without a note.
    void put(std::string_view key, std::string_view text) { values_[std::string(key)] = std::string(text); }

private:
    Journal& journal_;
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace quorvex
