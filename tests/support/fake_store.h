#pragma once

#include <map>
#include <string>

#include "link/settings_store.h"
#include "tests/support/journal.h"

namespace quorvex {

/// Settings in memory. Saving is noted: "store ComPort=3".
class FakeStore : public SettingsStore {
public:
    explicit FakeStore(Journal& journal) : journal_(journal) {}

    std::string get(std::string_view key, std::string_view byDefault) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::string(byDefault) : found->second;
    }
    void save(std::string_view key, std::string_view text) override {
        journal_.note("store " + std::string(key) + "=" + std::string(text));
        put(key, text);
    }

    std::string place() const override { return "the settings folder"; }

    /// Stores as if by another program: without a note.
    void put(std::string_view key, std::string_view text) { values_[std::string(key)] = std::string(text); }

private:
    Journal& journal_;
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace quorvex
