#pragma once

#include <string>

#include "link/radio_module.h"
#include "tests/support/journal.h"

namespace quorvex {

/// The radio module type that the window holds. What an operation changes is noted.
class FakeRadioModule : public RadioModule {
public:
    explicit FakeRadioModule(Journal& journal, std::int16_t type = 0) : journal_(journal), type_(type) {}

    std::int16_t type() const override { return type_; }
    void change(std::int16_t type) override {
        type_ = type;
        journal_.note("module type becomes " + std::to_string(type));
    }
    /// As if changed by hand: without a note.
    void hold(int type) { type_ = static_cast<std::int16_t>(type); }

private:
    Journal& journal_;
    std::int16_t type_;
};

}  // namespace quorvex
