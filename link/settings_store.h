#pragma once

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
};

inline constexpr std::string_view kComPortKey = "ComPort";
inline constexpr std::string_view kRfModuleKey = "RfModule";

}  // namespace quorvex
