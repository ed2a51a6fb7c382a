#pragma once

#include <QString>
#include <functional>

#include "link/settings_store.h"

namespace quorvex {

/// The settings in the user's configuration folder: QuorvexCfg.conf, section [Settings]. On Windows the
/// user's branch of the registry.
class QtSettingsStore : public SettingsStore {
public:
    std::string get(std::string_view key, std::string_view byDefault) const override;
    void save(std::string_view key, std::string_view text) override;
    std::string place() const override { return location().toStdString(); }

    /// The file, or the registry branch.
    static QString location();

    /// Called with what the operator must know when something could not be saved, what was stored before
    /// stays then, or, once, when nothing can be read.
    void onFailure(std::function<void(const std::string&)> handler) { tell_ = std::move(handler); }

private:
    void tellUnreadable(const std::string& why) const;

    std::function<void(const std::string&)> tell_ = [](const std::string&) {};
    mutable bool unreadableTold_ = false;
};

}  // namespace quorvex
