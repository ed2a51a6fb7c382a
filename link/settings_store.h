#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvex {

/// The user's settings, text by key, kept from one start of the program to the next.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// What is stored under `key` now, `byDefault` when there is no such key. Never cached.
    virtual std::string get(std::string_view key, std::string_view byDefault) const = 0;
    /// Stores `text` under `key`. A store that cannot be written tells the operator by itself.
    virtual void save(std::string_view key, std::string_view text) = 0;
    /// Where the settings are kept, for the operator; UTF-8.
    virtual std::string place() const = 0;

    /// The number stored under `key`, which must lie between `lowest` and `highest`. Throws a fault that
    /// names what is stored and where: "Type mismatch" for text that is no number, "Overflow" for one that
    /// does not fit 16 bits, "Invalid property value" for any other.
    std::int16_t number(std::string_view key, std::string_view byDefault, std::int16_t lowest = INT16_MIN,
                        std::int16_t highest = INT16_MAX) const;
};

inline constexpr std::string_view kComPortKey = "ComPort";
inline constexpr std::string_view kRfModuleKey = "RfModule";

}  // namespace quorvex
